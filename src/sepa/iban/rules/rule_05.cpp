#include "sepa/account/account_check.h"
#include "sepa/iban/rules/rule5_tables.h"
#include "sepa/iban/rules/rule_frame.h"
#include "sepa/iban/rules/rules.h"

namespace sepa_internal {

static constexpr auto closed_banks = sorted(rule5_closed_banks);
static constexpr auto accounts = sorted(rule5_accounts);

// Of digits 2 to 10; the first digit plays no part.
static constexpr value_range_t closed_range = {998000000, 999499999};

static bool is_closed(const iban_work_t* work) {
    uint64_t last_eight = load_word(work->account + 2);
    if (!is_digit(work->account[1]) || !word_is_digits(last_eight)) return false;
    uint64_t value = static_cast<uint64_t>(digit(work->account, 2)) * 100000000 + word_value(last_eight);
    return in_range(value, closed_range) && closed_banks.find(word_value(load_word(work->bank)));
}

// An account ends in two digits for the sub-account, which people leave out
// where it is 00. The check digit says whether that has happened, and for
// numbers of six or seven digits the completed reading goes first.
static int by_method_13(char* iban_buf, iban_work_t* work) {
    account_text_t shifted = shifted_form(work);
    bool shifted_passes = digits_zero(work->account, 1, 2) && method_13_passes(shifted.text);
    if (shifted_passes && digit(work->account, 3) == 0 && !digits_zero(work->account, 4, 5))
        return compose(iban_buf, accept_account(work, shifted.text));
    if (method_13_passes(work->account)) return compose(iban_buf, work);
    if (shifted_passes) return compose(iban_buf, accept_account(work, shifted.text));
    return -1;
}

static int by_method_76(char* iban_buf, iban_work_t* work) {
    int result = account_check(work->account, work->method);
    if (result == -1) return -1;
    return compose(iban_buf, result == 2 ? accept_account(work, shifted_form(work).text) : work);
}

int rule_05(char* iban_buf, iban_work_t* work) {
    if (bank_is(work, "50040033")) {
        work->status = IBAN_STATUS_FORBIDDEN;
        return -1;
    }
    if (is_closed(work)) {
        work->status = IBAN_STATUS_ACCOUNT_REFUSED;
        return -1;
    }
    if (const bank_account_pair_t* row = accounts.find(bank_account_value(work)))
        return compose(iban_buf, check_again(set_account(work, row->new_account)));
    switch (work->method) {
        case 0x13: return by_method_13(iban_buf, work);
        case 0x76: return by_method_76(iban_buf, work);
        default: return compose(iban_buf, work);
    }
}

}  // namespace sepa_internal
