#include "sepa/iban/rules/rule_frame.h"

#include <cstring>

#include "sepa/account/account_check.h"

namespace sepa_internal {

bool account_is(const iban_work_t* work, const char (&account)[11]) { return memcmp(work->account, account, 10) == 0; }

bool bank_is(const iban_work_t* work, const char (&bank)[9]) { return memcmp(work->bank, bank, 8) == 0; }

uint64_t account_value(const iban_work_t* work) {
    return is_account_form(work->account) ? value(work->account) : no_value;
}

uint64_t bank_account_value(const iban_work_t* work) {
    uint64_t account = account_value(work);
    return account == no_value ? no_value : bank_account_key(word_value(load_word(work->bank)), account);
}

account_text_t shifted_form(const iban_work_t* work) {
    account_text_t shifted;
    memcpy(shifted.text, work->account + 2, 8);
    memcpy(shifted.text + 8, "00", 3);
    return shifted;
}

bool method_13_passes(const char* account) {
    if (!is_account_form(account)) return false;
    return check_cross_sum(account, 10, 8, 0, 0, 0, 2, 1, 2, 1, 2, 1, 0) == 1;
}

static int write_iban(char* iban_buf, const char* bank, const char* account) {
    memcpy(iban_buf, "DE00", 4);
    memcpy(iban_buf + 4, bank, 8);
    memcpy(iban_buf + 12, account, 2);
    memcpy(iban_buf + 14, account + 2, 8);  // as it will be read
    return 1;
}

int compose(char* iban_buf, const iban_work_t* work) { return write_iban(iban_buf, work->bank, work->account); }

int compose_at(char* iban_buf, const char (&bank)[9], const iban_work_t* work) {
    return write_iban(iban_buf, bank, work->account);
}

iban_work_t* set_account(iban_work_t* work, const char (&account)[11]) {
    memcpy(work->account, account, sizeof work->account);
    return work;
}

iban_work_t* accept_account(iban_work_t* work, const char (&account)[11]) {
    work->check = 1;
    return set_account(work, account);
}

iban_work_t* check_again(iban_work_t* work) {
    work->check = static_cast<int8_t>(account_check(work->account, work->method));
    return work;
}

iban_work_t* change_bank(iban_work_t* work, const char (&bank)[9]) {
    memcpy(work->bank, bank, sizeof work->bank);
    return work;
}

iban_work_t* replace_by_list(iban_work_t* work, rule_list_t<account_pair_t> list) {
    const account_pair_t* row = list.find(account_value(work));
    return row ? check_again(set_account(work, row->new_account)) : work;
}

iban_work_t* replace_lenient(iban_work_t* work, rule_list_t<account_pair_t> list) {
    const account_pair_t* row = list.find(account_value(work));
    if (!row) return work;
    check_again(set_account(work, row->new_account));
    if (work->check != 1) work->check = 0;
    return work;
}

iban_work_t* accept_listed(iban_work_t* work, rule_list_t<account_row_t> list) {
    if (list.find(account_value(work))) work->check = 1;
    return work;
}

}  // namespace sepa_internal
