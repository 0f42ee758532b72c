// What the IBAN rules share: reading the account number, and the steps they
// are made of. A step that changes the working record returns it, so that a
// rule reads as compose(step(work)).
#pragma once

#include "sepa/account/account_form.h"
#include "sepa/iban/iban.h"
#include "sepa/iban/rules/rule_list.h"

namespace sepa_internal {

// An account number of 10 digits and a NUL.
struct account_text_t {
    char text[11];
};

// Compares the whole account number.
bool account_is(const iban_work_t* work, const char (&account)[11]);
bool bank_is(const iban_work_t* work, const char (&bank)[9]);

// The account as a number; no_value if it has a character other than digits.
uint64_t account_value(const iban_work_t* work);

// The key of the account at the bank in a table of both; no_value as above.
uint64_t bank_account_value(const iban_work_t* work);

struct value_range_t {
    uint64_t low, high;  // both included
};

inline bool in_range(uint64_t value, value_range_t range) { return in_range(value, range.low, range.high); }

// The account read two places further to the left: digits 3 to 10, then 00.
account_text_t shifted_form(const iban_work_t* work);

// The first attempt of check method 13. Fails for any character but digits.
bool method_13_passes(const char* account);

// Writes "DE00", bank and account, and returns 1.
int compose(char* iban_buf, const iban_work_t* work);
int compose_at(char* iban_buf, const char (&bank)[9], const iban_work_t* work);

iban_work_t* set_account(iban_work_t* work, const char (&account)[11]);

// Takes an account that the bank's method need not accept.
iban_work_t* accept_account(iban_work_t* work, const char (&account)[11]);

// Checks the account as it now is by the working record's method.
iban_work_t* check_again(iban_work_t* work);

iban_work_t* change_bank(iban_work_t* work, const char (&bank)[9]);

// Replaces a listed account; the new one must pass the method.
iban_work_t* replace_by_list(iban_work_t* work, rule_list_t<account_pair_t> list);

// Replaces a listed account by one that is good even if it fails the method.
iban_work_t* replace_lenient(iban_work_t* work, rule_list_t<account_pair_t> list);

// Accepts a listed account whatever its method said.
iban_work_t* accept_listed(iban_work_t* work, rule_list_t<account_row_t> list);

}  // namespace sepa_internal
