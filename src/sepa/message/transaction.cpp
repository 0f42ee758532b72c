#include "sepa/message/transaction.h"

#include <cstring>
#include <new>

#include "sepa/message/failure.h"
#include "sepa/message/wipe.h"
#include "sepa/platform/record_arena.h"

using namespace sepa_internal;

template <typename Record>
static void wipe_record(Record* record) {
    wipe_texts(record);
    wipe(record, sizeof *record);
}

void cti_free(cti_tx_t* record) { wipe_record(record); }
void ddi_free(ddi_tx_t* record) { wipe_record(record); }

// The pairs of one add, however they are given.
struct pair_list_t {
    const kv_pair_t* list;
    int take(draft_t* draft) const {
        for (const kv_pair_t* pair = list; pair->key; ++pair)
            if (!take_key(draft, *pair, strlen(pair->key))) return 0;
        return 1;
    }
};
struct pair_array_t {
    const sepa_pair_t* pairs;
    size_t count;
    int take(draft_t* draft) const {
        for (const sepa_pair_t *pair = pairs, *const end = pairs + count; pair < end; ++pair)
            if (!take_key(draft, *pair, pair->key_length)) return 0;
        return 1;
    }
};

template <typename Record>
static void append(sepa_t* handle, Record* record) {
    handle->tx_count += 1;
    handle->ctrl_sum += record->amount;
    if (handle->tx_tail) {
        static_cast<Record*>(handle->tx_tail)->next = record;
    } else {
        handle->tx_head = record;
    }
    handle->tx_tail = record;
}

static void begin(draft_t* draft, cti_tx_t* record) { draft->party = draft->transfer = record; }
static void begin(draft_t* draft, ddi_tx_t* record) { draft->party = draft->debit = record; }

// Puts the record and its texts, in one block of the message's memory, into the
// message. Returns 1, or 0 with last_error.
template <typename Record>
static int keep_record(const draft_t& draft, const Record& filled) {
    void* block = arena_take(&draft.handle->records, sizeof(Record) + texts_size(draft));
    if (!block) return fail(draft.handle, SEPA_OUT_OF_MEMORY);
    auto record = new (block) Record(filled);
    copy_texts(draft, record, reinterpret_cast<char*>(record + 1));
    append(draft.handle, record);
    return 1;
}

// A record gets into the message, and is counted, only when all is well.
template <typename Record, typename Pairs>
static int add_record(sepa_t* handle, const Pairs& pairs, int (*check_complete)(const draft_t&)) {
    Record filled = {};
    draft_t draft(handle, rulebook_in_force());
    begin(&draft, &filled);
    int added = pairs.take(&draft) && check_complete(draft) && keep_record(draft, filled);
    if (*draft.bic) wipe(draft.bic, sizeof draft.bic);
    return added;
}

// The final tests that open both kinds' lists, and the one that closes them.
static int check_party(const draft_t& draft) {
    if (!draft.party->iban) return fail(draft.handle, "IBAN missing");
    if (!draft.party->bic && draft.rulebook.bic_required) return fail(draft.handle, "BIC missing");
    return 1;
}
static int check_amount(const draft_t& draft) {
    return *amount_of(draft) == 0 ? fail(draft.handle, "Amount missing") : 1;
}

static int check_transfer(const draft_t& draft) { return check_party(draft) && check_amount(draft); }

int is_non_eea_bic(const char* bic) {
    // SEPA area outside the EEA: European Payments Council, EPC409-09.
    static const char countries[][3] = {"AD", "BL", "CH", "GB", "GG", "GI", "IM", "JE",
                                        "MC", "NC", "PF", "PM", "SM", "TF", "VA", "WF"};
    if (!bic || strnlen(bic, 8) < 8) return -1;
    for (const char* country : countries)
        if (ascii_upper(bic[4]) == country[0] && ascii_upper(bic[5]) == country[1]) return 1;
    return 0;
}

static int check_address(const draft_t& draft) {
    const sepa_party_t* party = draft.party;
    if (!party->bic || is_non_eea_bic(party->bic) != 1) return 1;
    switch (draft.rulebook.need_outside_eea) {
        case nothing_needed: return 1;
        case line_needed:
            if (party->addrLine1 || party->addrLine2) return 1;
            return fail(draft.handle, "Address required for BICs outside EEA");
        case town_and_country_needed:
            if (party->addrTown && party->addrCC) return 1;
            return fail(draft.handle, "Structured address required for BICs outside EEA (at least town and country)");
    }
    return 1;
}

static int check_debit(const draft_t& draft) {
    if (!check_party(draft) || !check_address(draft)) return 0;
    if (!draft.debit->seq) return fail(draft.handle, "Sequence type missing");
    return check_amount(draft);
}

static int check_list(sepa_t* handle, const kv_pair_t* list) {
    return list ? 1 : fail(handle, "No key-value list submitted");
}

int cti_add(sepa_t* handle, const kv_pair_t* list) {
    if (handle->msgtype != SEPA_MSGTYPE_CTI) return fail(handle, "No CTI message");
    return check_list(handle, list) && add_record<cti_tx_t>(handle, pair_list_t{list}, check_transfer);
}

int ddi_add(sepa_t* handle, const kv_pair_t* list) {
    if (handle->msgtype != SEPA_MSGTYPE_DDI) return fail(handle, "No DDI message");
    return check_list(handle, list) && add_record<ddi_tx_t>(handle, pair_list_t{list}, check_debit);
}

int sepa_add_pairs(sepa_t* handle, const sepa_pair_t* pairs, size_t count) {
    pair_array_t all = {pairs, count};
    return handle->msgtype == SEPA_MSGTYPE_DDI ? add_record<ddi_tx_t>(handle, all, check_debit)
                                               : add_record<cti_tx_t>(handle, all, check_transfer);
}
