// Rules of a group of banks that share one account number space: the first
// three digits tell the bank.
#include "sepa/iban/rules/branch_ranges.h"
#include "sepa/iban/rules/replacement_tables.h"
#include "sepa/iban/rules/rule_frame.h"
#include "sepa/iban/rules/rules.h"

namespace sepa_internal {

static constexpr auto list_33 = sorted(rule33_accounts);
static constexpr auto list_34 = sorted(rule34_accounts);
static constexpr auto list_35 = sorted(rule35_accounts);

static constexpr value_range_t closed_range = {800000000, 899999999};

static constexpr bool branches_ascend() {
    size_t doubled = 0;
    for (size_t i = 0; i < branch_range_count; ++i) {
        uint32_t branch = branch_ranges[i].branch;
        if (branch < first_branch || branch > last_branch) return false;
        if (i && branch < branch_ranges[i - 1].branch) return false;
        if (i && branch == branch_ranges[i - 1].branch) doubled = doubled * 1000 + branch;
    }
    return doubled == 167 && branch_ranges[branch_range_count].branch == 0;
}
static_assert(branches_ascend(), "branches out of order, or another than 167 stands twice");

// For each branch number its first row, or the end row, whose range is empty:
// a lookup is one step.
static constexpr auto make_first_rows() {
    std::array<uint16_t, last_branch + 1> rows{};
    for (auto& row : rows) row = branch_range_count;
    for (uint16_t i = branch_range_count; i-- > 0;) rows[branch_ranges[i].branch] = i;
    return rows;
}
static constexpr auto first_rows = make_first_rows();

// Accounts that begin with 0 belong to no branch.
static iban_work_t* change_bank_by_branch(iban_work_t* work) {
    uint64_t value = account_value(work);
    uint64_t branch = value / accounts_per_branch;
    if (branch < first_branch || branch > last_branch) return work;
    const branch_range_t& range = branch_ranges[first_rows[static_cast<size_t>(branch)]];
    return in_range(value, {range.low, range.high}) ? change_bank(work, range.bank) : work;
}

static bool in_closed_range(const iban_work_t* work) { return in_range(account_value(work), closed_range); }

int rule_31(char* iban_buf, iban_work_t* work) {
    if (digit(work->account, 1) == 0 || work->check < 0) return -1;
    return compose(iban_buf, change_bank_by_branch(work));
}

int rule_32(char* iban_buf, iban_work_t* work) {
    if (in_closed_range(work)) {
        work->status = IBAN_STATUS_ACCOUNT_REFUSED;
        return -1;
    }
    if (work->check < 0) return -1;
    return compose(iban_buf, change_bank_by_branch(work));
}

// Not the rule of 34 and 35: this one finds the bank first, and the bank
// 70020270 takes accounts of the closed range too.
int rule_33(char* iban_buf, iban_work_t* work) {
    change_bank_by_branch(work);
    if (in_closed_range(work) && !bank_is(work, "70020270")) return -1;
    return compose(iban_buf, replace_by_list(work, list_33));
}

static int by_branch_and_list(char* iban_buf, iban_work_t* work, rule_list_t<account_pair_t> list) {
    if (in_closed_range(work)) return -1;
    return compose(iban_buf, replace_by_list(change_bank_by_branch(work), list));
}

int rule_34(char* iban_buf, iban_work_t* work) { return by_branch_and_list(iban_buf, work, list_34); }
int rule_35(char* iban_buf, iban_work_t* work) { return by_branch_and_list(iban_buf, work, list_35); }

}  // namespace sepa_internal
