// Rules that read or rewrite the digits of the account.
#include <cstring>

#include "sepa/iban/rules/replacement_tables.h"
#include "sepa/iban/rules/rule_frame.h"
#include "sepa/iban/rules/rules.h"

namespace sepa_internal {

static constexpr auto list_49 = sorted(rule49_accounts);

int rule_09(char* iban_buf, iban_work_t* work) {
    if (memcmp(work->account, "1116", 4) == 0) memcpy(work->account, "3047", 4);
    return compose(iban_buf, change_bank(work, "68351557"));
}

int rule_10(char* iban_buf, iban_work_t* work) {
    if (bank_is(work, "50050222")) return compose(iban_buf, change_bank(work, "50050201"));
    if (bank_is(work, "50050201")) {
        if (account_is(work, "0000002000")) return compose(iban_buf, accept_account(work, "0000222000"));
        if (account_is(work, "0000800000")) return compose(iban_buf, accept_account(work, "0000180802"));
    }
    return compose(iban_buf, work);
}

int rule_11(char* iban_buf, iban_work_t* work) {
    if (account_is(work, "0000001000")) return compose(iban_buf, accept_account(work, "0008010001"));
    if (account_is(work, "0000047800")) return compose(iban_buf, accept_account(work, "0000047803"));
    return compose(iban_buf, work);
}

int rule_21(char* iban_buf, iban_work_t* work) {
    if (eight_digits(work->account)) return -1;
    if (digits_zero(work->account, 1, 5)) return -1;
    return compose(iban_buf, change_bank(work, "36020030"));
}

int rule_29(char* iban_buf, iban_work_t* work) {
    if (digit(work->account, 1) != 0 && digit(work->account, 4) == 0) {
        memmove(work->account + 1, work->account, 3);
        work->account[0] = '0';
    }
    return compose(iban_buf, work);
}

static constexpr value_range_t rule36_short = {100000, 899999};
static constexpr value_range_t rule36_ranges[] = {
    rule36_short,
    {30000000, 59999999},
    {100000000, 899999999},
    {1000000000, 1999999999},
    {3000000000, 7099999999},
    {8500000000, 8599999999},
    {9000000000, 9999999999},
};

static bool rule36_takes(uint64_t value) {
    for (value_range_t range : rule36_ranges)
        if (in_range(value, range)) return true;
    return false;
}

int rule_36(char* iban_buf, iban_work_t* work) {
    if (work->check < 0) return -1;
    uint64_t value = account_value(work);
    if (!rule36_takes(value)) {
        work->status = IBAN_STATUS_ACCOUNT_REFUSED;
        return -1;
    }
    if (in_range(value, rule36_short)) {
        memmove(work->account, work->account + 3, 7);
        memcpy(work->account + 7, "000", 3);
    }
    return compose(iban_buf, change_bank(work, "21050000"));
}

// All accounts of the bank are reached through one.
int rule_41(char* iban_buf, iban_work_t*) {
    memcpy(iban_buf, "DE96500604000000011404", 22);
    return 1;
}

static constexpr value_range_t rule42_ranges[] = {{50462000, 50463999}, {50469000, 50469999}};

int rule_42(char* iban_buf, iban_work_t* work) {
    if (digit(work->account, 1) != 0)
        return digit(work->account, 4) == 4 && digit(work->account, 5) == 4 ? compose(iban_buf, work) : -1;
    if (digit(work->account, 2) != 0 || digit(work->account, 3) == 0) return -1;
    uint64_t value = account_value(work);
    if (digit(work->account, 6) != 0 && !in_range(value, rule42_ranges[0]) && !in_range(value, rule42_ranges[1]))
        return -1;
    if (digit(work->account, 7) == 0) return -1;
    return compose(iban_buf, work);
}

int rule_43(char* iban_buf, iban_work_t* work) {
    if (bank_is(work, "60651070")) {
        work->method = 0x06;
        check_again(change_bank(work, "66650085"));
        if (work->check == -1) work->status = IBAN_STATUS_ACCOUNT_REFUSED;
    }
    return compose(iban_buf, work);
}

int rule_47(char* iban_buf, iban_work_t* work) {
    return compose(iban_buf, eight_digits(work->account) ? set_account(work, shifted_form(work).text) : work);
}

int rule_49(char* iban_buf, iban_work_t* work) {
    replace_lenient(work, list_49);
    if (digit(work->account, 5) == 9) {
        char head[4];
        memcpy(head, work->account, 4);
        memmove(work->account, work->account + 4, 6);
        memcpy(work->account + 6, head, 4);
    }
    return compose(iban_buf, work);
}

}  // namespace sepa_internal
