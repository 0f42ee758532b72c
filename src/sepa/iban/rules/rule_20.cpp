#include "sepa/account/account_check.h"
#include "sepa/iban/rules/rule_frame.h"
#include "sepa/iban/rules/rules.h"

namespace sepa_internal {

// Takes the account with its sub-account 00 written out, if that passes.
static bool accept_shifted(iban_work_t* work) {
    account_text_t shifted = shifted_form(work);
    if (!method_13_passes(shifted.text)) return false;
    accept_account(work, shifted.text);
    return true;
}

// Whether the account, possibly moved two places to the left, is good as far
// as method 63 goes.
static bool settle_method_63(iban_work_t* work) {
    if (!digits_zero(work->account, 1, 2)) return work->check >= 0;
    if (digits_zero(work->account, 3, 6)) return false;
    if (digits_zero(work->account, 3, 5)) return method_13_passes(work->account) || accept_shifted(work);
    if (digit(work->account, 3) == 0) return accept_shifted(work) || work->check == 1;
    return work->check >= 0;
}

static int by_method_63(char* iban_buf, iban_work_t* work) {
    if (!settle_method_63(work)) return -1;
    if (digit(work->account, 1) != 0 || digits_zero(work->account, 2, 4)) return -1;
    return compose(iban_buf, work);
}

static bool first_reading(iban_work_t* work) {
    if (digit(work->account, 1) != 0) return false;
    return method_13_passes(work->account) || (digits_zero(work->account, 2, 3) && accept_shifted(work));
}

static bool second_reading(const iban_work_t* work) {
    return account_value(work) != no_value && method_06(work->account) == 1;
}

static int by_method_C7(char* iban_buf, iban_work_t* work) {
    bool first = first_reading(work);
    bool second = !first && second_reading(work);
    bool second_forbidden = bank_is(work, "76026000");
    work->check = first || (second && !second_forbidden) ? 1 : -1;
    if (work->check == 1) return compose(iban_buf, work);
    if (second) work->status = IBAN_STATUS_FORBIDDEN;
    return -1;
}

int rule_20(char* iban_buf, iban_work_t* work) {
    if (bank_is(work, "50070010") && account_is(work, "0000009999")) set_account(work, "0092777202");
    switch (work->method) {
        case 0x63: return by_method_63(iban_buf, work);
        case 0xC7: return by_method_C7(iban_buf, work);
        default: return compose(iban_buf, work);
    }
}

}  // namespace sepa_internal
