// The branch table, expanded into account ranges.
#pragma once

#include <array>

#include "sepa/iban/rules/branch_table.h"
#include "sepa/iban/rules/rule_list.h"

namespace sepa_internal {

// The accounts that begin with one branch number, and their bank.
struct branch_range_t {
    uint32_t branch;  // 100 to 798; 0 ends the table
    uint64_t low, high;
    char bank[9];
};

constexpr uint32_t first_branch = 100, last_branch = 798;
constexpr uint64_t accounts_per_branch = 10000000;
constexpr size_t branch_range_count = 459;

// Calls `use` with each branch number of a published row.
template <typename Use>
constexpr void each_branch(const branch_list_t& list, Use use) {
    for (const char* at = list.branches;; at += 5) {
        use(static_cast<uint32_t>(digits_value(at, 3)));
        if (at[3] == 0) return;
    }
}

// Position of each branch's first row: rows of lower branches come before it.
constexpr std::array<size_t, last_branch + 2> count_rows_before() {
    std::array<size_t, last_branch + 2> before{};
    for (const branch_list_t& list : branch_lists)
        each_branch(list, [&before](uint32_t branch) { ++before[branch + 1]; });
    for (size_t i = 1; i < before.size(); ++i) before[i] += before[i - 1];
    return before;
}

// All rows in ascending order of `branch`, and the row that ends the table.
constexpr std::array<branch_range_t, branch_range_count + 1> expand_branches() {
    std::array<branch_range_t, branch_range_count + 1> ranges{};
    auto next = count_rows_before();
    for (const branch_list_t& list : branch_lists) {
        each_branch(list, [&](uint32_t branch) {
            branch_range_t& range = ranges[next[branch]++];
            range.branch = branch;
            range.low = branch * accounts_per_branch;
            range.high = range.low + accounts_per_branch - 1;
            for (size_t i = 0; i < 8; ++i) range.bank[i] = list.bank[i];
        });
    }
    return ranges;
}

inline constexpr auto branch_ranges = expand_branches();

}  // namespace sepa_internal
