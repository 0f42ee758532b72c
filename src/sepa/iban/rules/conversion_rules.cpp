// Rules that move single accounts to another bank.
#include "sepa/iban/rules/account_tables.h"
#include "sepa/iban/rules/conversion_tables.h"
#include "sepa/iban/rules/replacement_tables.h"
#include "sepa/iban/rules/rule_frame.h"
#include "sepa/iban/rules/rules.h"

namespace sepa_internal {

static constexpr auto accounts_52 = sorted(rule52_accounts);
static constexpr auto accounts_53 = sorted(rule53_accounts);
static constexpr auto list_54 = sorted(rule54_accounts);
static constexpr auto other_bank_54 = sorted(rule54_other_bank);
static constexpr auto accounts_56 = sorted(rule56_accounts);

// The account's new number at the bank that took these accounts over.
static bool move_to_60050101(iban_work_t* work, rule_list_t<bank_account_pair_t> list) {
    const bank_account_pair_t* row = list.find(bank_account_value(work));
    if (!row) return false;
    set_account(change_bank(work, "60050101"), row->new_account);
    return true;
}

int rule_52(char* iban_buf, iban_work_t* work) {
    return move_to_60050101(work, accounts_52) ? compose(iban_buf, work) : -1;
}

int rule_53(char* iban_buf, iban_work_t* work) {
    move_to_60050101(work, accounts_53);
    return compose(iban_buf, work);
}

int rule_54(char* iban_buf, iban_work_t* work) {
    replace_lenient(work, list_54);
    if (!other_bank_54.find(account_value(work))) return compose(iban_buf, work);
    work->check = 1;
    return compose_at(iban_buf, "21060237", work);
}

int rule_56(char* iban_buf, iban_work_t* work) {
    if (const account_pair_bank_t* row = accounts_56.find(account_value(work)))
        return compose_at(iban_buf, row->bank, accept_account(work, row->new_account));
    if (digit(work->account, 1) == 0) return -1;
    return compose(iban_buf, work);
}

}  // namespace sepa_internal
