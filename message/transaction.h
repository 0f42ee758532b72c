// The keys that both kinds of transaction share, and the steps of an add.
#pragma once

#include "message/handle.h"
#include "message/rulebook.h"

// One add under way. The pointers name the fields of the record in hand that
// both kinds have outside sepa_party_t.
struct tx_draft_t {
    sepa_t* handle;
    const sepa_internal::rulebook_t& rulebook;  // the one in force when the add began
    sepa_party_t* party;
    const char* name_noun;  // "creditor name" or "debtor name"
    double* amount;
    char** date;
    char** ref;
};

// Results of taking one key: stored, refused with last_error set, or a key
// that the function does not know.
enum tx_key_result { KEY_STORED, KEY_REFUSED, KEY_UNKNOWN };

// Takes one of the shared keys.
tx_key_result take_shared_key(const tx_draft_t& draft, const char* key, const char* value);

// A text with limits and a character set.
struct text_rule_t {
    size_t min_bytes, max_bytes;
    const char* length_error;
    int level;         // CHARSET_...
    const char* noun;  // as in "Invalid character '?' in <noun>"
};

// Tests `value` by `rule` and stores a copy of it in `field`.
tx_key_result take_text(const tx_draft_t& draft, const text_rule_t& rule, const char* value, char** field);

// Tests an IBAN and stores it; the reason text becomes last_error.
tx_key_result take_iban(sepa_t* handle, const char* value, char** field);

// Stores a text that must be exactly `bytes` long and has no other test.
tx_key_result take_exact(sepa_t* handle, size_t bytes, const char* error, const char* value, char** field);

// The final tests that open both kinds' lists. 1, or 0 with last_error set.
int check_party_complete(const tx_draft_t& draft);

// The final test that closes them.
int check_amount_given(const tx_draft_t& draft);

// Wipes all texts of the party.
void wipe_party(sepa_party_t* party);

// The record's life in an add: `take` stores one key in it, `complete` makes
// the final tests; both return 1, or 0 with last_error set. Only a record that
// has passed both is linked in and counted; otherwise `release` frees it.
template <typename Record, typename Take, typename Complete>
int add_record(sepa_t* handle, const kv_pair_t* list, Record* record, void (*release)(Record*), Take take,
               Complete complete) {
    int good = 1;
    for (; good && list->key; ++list) good = take(list->key, list->value);
    if (!good || !complete()) {
        release(record);
        return 0;
    }
    handle->tx_count += 1;
    handle->ctrl_sum += record->amount;
    if (handle->tx_tail)
        static_cast<Record*>(handle->tx_tail)->next = record;
    else
        handle->tx_head = record;
    handle->tx_tail = record;
    return 1;
}
