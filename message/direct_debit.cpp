#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "message/transaction.h"

using namespace sepa_internal;

static constexpr text_rule_t mref_rule = {1, 35, "Invalid mandate reference (must be 1-35 characters)", CHARSET_STRICT,
                                          "mandate reference"};
static constexpr text_rule_t old_mref_rule = {1, 35, "Invalid old mandate reference (must be 1-35 characters)",
                                              CHARSET_STRICT, "old mandate reference"};

static const struct {
    const char* text;
    sepa_seq seq;
} sequences[] = {{"frst", SEQ_FRST}, {"rcur", SEQ_RCUR}, {"ooff", SEQ_OOFF}, {"fnal", SEQ_FNAL}};

static int take_sequence(sepa_t* handle, ddi_tx_t* record, const char* value) {
    for (const auto& sequence : sequences) {
        if (!value || !same_key(value, sequence.text)) continue;
        record->seq = sequence.seq;
        return 1;
    }
    return fail(handle, "Invalid/unknown sequence type");
}

static int take_smnda(sepa_t* handle, ddi_tx_t* record, const char* value) {
    if (!value || strcmp(value, "1") != 0)
        return fail_with(handle, "Invalid value '%s' for SMNDA flag", value ? value : "(null)");
    record->smnda = 1;
    return 1;
}

static int take_mref(const tx_draft_t& draft, ddi_tx_t* record, const char* value) {
    text_rule_t rule = mref_rule;
    rule.level = draft.rulebook.mref_level;
    return take_text(draft, rule, value, &record->mref) == KEY_STORED;
}

static int take_key(const tx_draft_t& draft, ddi_tx_t* record, const char* key, const char* value) {
    switch (take_shared_key(draft, key, value)) {
        case KEY_STORED: return 1;
        case KEY_REFUSED: return 0;
        case KEY_UNKNOWN: break;
    }
    sepa_t* handle = draft.handle;
    if (same_key(key, "addrDept"))
        return fail(handle, "selected SEPA rulebook does not support structured address data");
    if (same_key(key, "seq")) return take_sequence(handle, record, value);
    if (same_key(key, "mref")) return take_mref(draft, record, value);
    if (same_key(key, "mdate"))
        return take_exact(handle, date_length, "Invalid mandate signature date (format: yyyy-mm-dd)", value,
                          &record->mdate) == KEY_STORED;
    if (same_key(key, "old_mref")) return take_text(draft, old_mref_rule, value, &record->old_mref) == KEY_STORED;
    if (same_key(key, "old_iban")) return take_iban(handle, value, &record->old_iban) == KEY_STORED;
    if (same_key(key, "smnda")) return take_smnda(handle, record, value);
    return fail_with(handle, "Invalid transaction property '%s'", key);
}

int is_non_eea_bic(const char* bic) {
    // SEPA area outside the EEA: European Payments Council, EPC409-09.
    static const char countries[][3] = {"AD", "BL", "CH", "GB", "GG", "GI", "IM", "JE",
                                        "MC", "NC", "PF", "PM", "SM", "TF", "VA", "WF"};
    if (!bic || strnlen(bic, 8) < 8) return -1;
    for (const char* country : countries)
        if (ascii_upper(bic[4]) == country[0] && ascii_upper(bic[5]) == country[1]) return 1;
    return 0;
}

static int check_address(const tx_draft_t& draft) {
    const sepa_party_t* party = draft.party;
    if (!party->bic || is_non_eea_bic(party->bic) != 1) return 1;
    switch (draft.rulebook.need_outside_eea) {
        case NOTHING_NEEDED: return 1;
        case LINE_NEEDED:
            if (party->addrLine1 || party->addrLine2) return 1;
            return fail(draft.handle, "Address required for BICs outside EEA");
        case TOWN_AND_COUNTRY_NEEDED:
            if (party->addrTown && party->addrCC) return 1;
            return fail(draft.handle, "Structured address required for BICs outside EEA (at least town and country)");
    }
    return 1;
}

int ddi_add(sepa_t* handle, const kv_pair_t* list) {
    if (handle->msgtype != SEPA_MSGTYPE_DDI) return fail(handle, "No DDI message");
    if (!list) return fail(handle, "No key-value list submitted");
    auto record = static_cast<ddi_tx_t*>(calloc(1, sizeof(ddi_tx_t)));
    if (!record) return fail(handle, out_of_memory);
    tx_draft_t draft = {handle,          rulebook_in_force(), record,      "debtor name",
                        &record->amount, &record->date,       &record->ref};
    return add_record(
        handle, list, record, ddi_free,
        [&](const char* key, const char* value) { return take_key(draft, record, key, value); },
        [&] {
            if (!check_party_complete(draft) || !check_address(draft)) return 0;
            if (!record->seq) return fail(handle, "Sequence type missing");
            return check_amount_given(draft);
        });
}

void ddi_free(ddi_tx_t* record) {
    wipe_party(record);
    for (char** text :
         {&record->date, &record->mref, &record->mdate, &record->old_mref, &record->old_iban, &record->ref})
        wipe_text(text);
    wipe_record(record, sizeof *record);
}
