// One add under way, from the first key to the record in the message.
#pragma once

#include "sepa/message/record_text.h"
#include "sepa/message/rulebook.h"
#include "sepa/message/value.h"

namespace sepa_internal {

constexpr size_t max_key_rows = 32;

// A record that is being filled. Its texts are the caller's until all tests
// have passed; only then are they copied.
struct draft_t {
    draft_t(sepa_t* message, const rulebook_t& in_force) : handle(message), rulebook(in_force) { *bic = '\0'; }

    sepa_t* handle;
    const rulebook_t& rulebook;     // the one in force when the add began
    sepa_party_t* party = nullptr;  // the record
    cti_tx_t* transfer = nullptr;   // the same by its kind; the other is null
    ddi_tx_t* debit = nullptr;
    uint32_t kept = 0;           // a bit for each row of the key table that has a text
    text_t texts[max_key_rows];  // and these texts
    bic_text_t bic;              // the text of `bic` in capitals, if it is not; wiped
};

// The record's amount.
inline double* amount_of(const draft_t& draft) {
    return draft.transfer ? &draft.transfer->amount : &draft.debit->amount;
}

// Tests one key, so many bytes, with its value and puts it into the record.
// Returns 1, or 0 with the reason in last_error.
int take_key(draft_t* draft, const kv_pair_t& pair, size_t key_length);

// Bytes of the texts in a record's memory.
size_t texts_size(const draft_t& draft);

// Copies the texts to `at`, so many bytes, and lets the record point at them.
void copy_texts(const draft_t& draft, cti_tx_t* record, char* at);
void copy_texts(const draft_t& draft, ddi_tx_t* record, char* at);

// Overwrites the texts of a record.
void wipe_texts(cti_tx_t* record);
void wipe_texts(ddi_tx_t* record);

}  // namespace sepa_internal
