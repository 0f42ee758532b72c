#include <cstdlib>
#include <initializer_list>

#include "message/transaction.h"

using namespace sepa_internal;

static int take_key(const tx_draft_t& draft, cti_tx_t* record, const char* key, const char* value) {
    switch (take_shared_key(draft, key, value)) {
        case KEY_STORED: return 1;
        case KEY_REFUSED: return 0;
        case KEY_UNKNOWN: break;
    }
    if (!same_key(key, "purp")) return 1;  // a credit transfer ignores keys that it does not know
    return take_exact(draft.handle, 4, "Invalid purpose (must be 4 characters)", value, &record->purp) == KEY_STORED;
}

int cti_add(sepa_t* handle, const kv_pair_t* list) {
    if (handle->msgtype != SEPA_MSGTYPE_CTI) return fail(handle, "No CTI message");
    if (!list) return fail(handle, "No key-value list submitted");
    auto record = static_cast<cti_tx_t*>(calloc(1, sizeof(cti_tx_t)));
    if (!record) return fail(handle, out_of_memory);
    tx_draft_t draft = {handle,          rulebook_in_force(), record,      "creditor name",
                        &record->amount, &record->date,       &record->ref};
    return add_record(
        handle, list, record, cti_free,
        [&](const char* key, const char* value) { return take_key(draft, record, key, value); },
        [&] { return check_party_complete(draft) && check_amount_given(draft); });
}

void cti_free(cti_tx_t* record) {
    wipe_party(record);
    for (char** text : {&record->ref, &record->purp, &record->date}) wipe_text(text);
    wipe_record(record, sizeof *record);
}
