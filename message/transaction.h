// One add under way, from the first key to the record in the message.
#pragma once

#include "message/rulebook.h"
#include "message/value.h"

namespace sepa_internal {

// A record that is being filled. Its texts are the caller's until all tests
// have passed; only then are they copied.
struct draft_t {
    sepa_t* handle;
    const rulebook_t& rulebook;  // the one in force when the add began
    sepa_party_t* party;         // the record
    cti_tx_t* transfer;          // the same by its kind; the other is null
    ddi_tx_t* debit;
    bic_text_t bic;  // the text of `bic`, in capitals
};

// The record's amount.
inline double* amount_of(const draft_t& draft) {
    return draft.transfer ? &draft.transfer->amount : &draft.debit->amount;
}

// Tests one key with its value and puts it into the record. Returns 1, or 0
// with the reason in last_error.
int take_key(draft_t* draft, const kv_pair_t& pair);

// Turns the texts of a record into copies. False without memory; then those
// that have no copy are null.
bool copy_texts(cti_tx_t* record);
bool copy_texts(ddi_tx_t* record);

// Wipes and frees the texts of a record.
void wipe_texts(cti_tx_t* record);
void wipe_texts(ddi_tx_t* record);

}  // namespace sepa_internal
