// Rules that compose, refuse, change the bank, or look the account up in one
// list.
#include "sepa/iban/rules/account_tables.h"
#include "sepa/iban/rules/replacement_tables.h"
#include "sepa/iban/rules/rule_frame.h"
#include "sepa/iban/rules/rules.h"

namespace sepa_internal {

static constexpr auto list_4 = sorted(rule4_accounts);
static constexpr auto list_6 = sorted(rule6_accounts);
static constexpr auto list_7 = sorted(rule7_accounts);
static constexpr auto list_15 = sorted(rule15_accounts);
static constexpr auto list_16 = sorted(rule16_accounts);
static constexpr auto list_17 = sorted(rule17_accounts);
static constexpr auto list_18 = sorted(rule18_accounts);
static constexpr auto list_22 = sorted(rule22_accounts);
static constexpr auto list_23 = sorted(rule23_accounts);
static constexpr auto list_24 = sorted(rule24_accounts);
static constexpr auto list_26 = sorted(rule26_accepted);
static constexpr auto list_27 = sorted(rule27_accepted);
static constexpr auto list_30 = sorted(rule30_accepted);
static constexpr auto list_44 = sorted(rule44_accounts);
static constexpr auto list_51 = sorted(rule51_accounts);

int rule_00(char* iban_buf, iban_work_t* work) { return compose(iban_buf, work); }

int rule_01(char*, iban_work_t* work) {
    work->status = IBAN_STATUS_FORBIDDEN;
    return -1;
}

// The sub-account numbers 6xx and 86x take no IBAN.
int rule_02(char* iban_buf, iban_work_t* work) {
    int eighth = digit(work->account, 8), ninth = digit(work->account, 9);
    if (eighth == 6 || (eighth == 8 && ninth == 6)) return -1;
    return compose(iban_buf, work);
}

int rule_03(char* iban_buf, iban_work_t* work) { return account_is(work, "6161604670") ? -1 : compose(iban_buf, work); }

int rule_04(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_4)); }
int rule_06(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_6)); }
int rule_07(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_7)); }
int rule_08(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "50020200")); }
int rule_12(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "50050000")); }
int rule_13(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "30050000")); }
int rule_14(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "30060601")); }
int rule_15(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_15)); }
int rule_16(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_16)); }
int rule_17(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_17)); }
int rule_18(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_18)); }
int rule_19(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "50120383")); }
int rule_22(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_22)); }
int rule_23(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_23)); }
int rule_24(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_by_list(work, list_24)); }
int rule_25(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "60050101")); }
int rule_26(char* iban_buf, iban_work_t* work) { return compose(iban_buf, accept_listed(work, list_26)); }
int rule_27(char* iban_buf, iban_work_t* work) { return compose(iban_buf, accept_listed(work, list_27)); }
int rule_28(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "25050180")); }
int rule_30(char* iban_buf, iban_work_t* work) { return compose(iban_buf, accept_listed(work, list_30)); }
int rule_37(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "30010700")); }
int rule_38(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "28590075")); }
int rule_39(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "28020050")); }
int rule_40(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "68052328")); }
int rule_44(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_lenient(work, list_44)); }
int rule_46(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "31010833")); }
int rule_48(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "36010200")); }
int rule_50(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "28550000")); }
int rule_51(char* iban_buf, iban_work_t* work) { return compose(iban_buf, replace_lenient(work, list_51)); }
int rule_55(char* iban_buf, iban_work_t* work) { return compose(iban_buf, change_bank(work, "25410200")); }

int rule_57(char* iban_buf, iban_work_t* work) {
    return compose(iban_buf, bank_is(work, "50810900") ? change_bank(work, "66010200") : work);
}

}  // namespace sepa_internal
