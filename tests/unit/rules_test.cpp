#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "account/account_check.h"
#include "iban/iban.h"
#include "iban/rules/account_tables.h"
#include "iban/rules/branch_ranges.h"
#include "iban/rules/conversion_tables.h"
#include "iban/rules/replacement_tables.h"
#include "iban/rules/rule5_tables.h"
#include "tests/unit/csv_rows.h"

namespace {

struct outcome {
    int result;
    iban_work_t work;
    std::string iban;
};

// Runs a rule and expects what no rule changes; rule 43 alone changes the method.
outcome run(int rule, const std::string& bank, const std::string& account, int method, int check) {
    outcome o = {};
    memcpy(o.work.account, account.c_str(), 11);
    memcpy(o.work.account_in, account.c_str(), 11);
    memcpy(o.work.bank, bank.c_str(), 9);
    o.work.method = static_cast<uint8_t>(method);
    o.work.check = static_cast<int8_t>(check);
    char iban_buf[IBAN_BUFFER_SIZE] = {};
    o.result = iban_rules[rule](iban_buf, &o.work);
    o.iban = iban_buf;
    EXPECT_EQ(o.work.account_in, account);
    EXPECT_TRUE(o.work.method == method || rule == 43);
    EXPECT_EQ(o.iban.size(), o.result == 1 ? 22U : 0U);
    return o;
}

// An empty column of the outcome means that nothing changes.
TEST(Rules, Rows) {
    std::set<int> seen;
    for (const csv_row& row :
         csv_rows(TEST_DATA "/iban_rules.csv",
                  "rule,bank,account,method,check,result,new_bank,new_account,new_check,status,iban_bank,what")) {
        SCOPED_TRACE(row[0] + "," + row[1] + "," + row[2] + "," + row[3] + "," + row[4]);
        std::string bank = row[6].empty() ? row[1] : row[6];
        std::string account = row[7].empty() ? row[2] : row[7];
        outcome o = run(std::stoi(row[0]), row[1], row[2], std::stoi(row[3], nullptr, 16), std::stoi(row[4]));
        EXPECT_EQ(o.result, std::stoi(row[5]));
        EXPECT_EQ(o.work.bank, bank);
        EXPECT_EQ(o.work.account, account);
        EXPECT_EQ(o.work.check, std::stoi(row[8].empty() ? row[4] : row[8]));
        EXPECT_EQ(o.work.status, std::stoi("0" + row[9]));
        EXPECT_EQ(o.iban, o.result == 1 ? "DE00" + (row[10].empty() ? bank : row[10]) + account : "");
        seen.insert(std::stoi(row[0]));
    }
    EXPECT_EQ(seen.size(), IBAN_RULE_COUNT - 1U) << "a rule without a row, other than 41";
    for (int check : {-1, 1}) {
        outcome o = run(41, "62220000", "1234567890", 0x09, check);
        EXPECT_EQ(o.iban, "DE96500604000000011404");
        EXPECT_EQ(o.work.check, check);
    }
}

// Every row of the tables is found, through the rule; so are the numbers
// beside it missed.
std::string neighbour(std::string text) {
    text.back() = text.back() == '9' ? '0' : static_cast<char>(text.back() + 1);
    return text;
}

template <size_t N>
void expect_replaced(int rule, const account_pair_t (&list)[N], bool lenient = false) {
    std::set<std::string> listed;
    for (const auto& row : list) listed.insert(row.old_account);
    for (const auto& row : list) {
        SCOPED_TRACE("rule " + std::to_string(rule) + " " + row.old_account);
        for (uint8_t method : std::initializer_list<uint8_t>{0x00, 0x06, 0x09}) {
            int checked = account_check(row.new_account, method);
            outcome o = run(rule, "70020270", row.old_account, method, lenient ? -1 : 2);
            EXPECT_STREQ(o.work.account, row.new_account);
            EXPECT_EQ(o.work.check, lenient && checked == -1 ? 0 : checked);
        }
        std::string beside = neighbour(row.old_account);
        if (listed.count(beside)) continue;
        outcome o = run(rule, "70020270", beside, 0x09, 1);
        EXPECT_EQ(o.work.account, beside);
        EXPECT_EQ(o.work.check, 1);
    }
}

template <size_t N>
void expect_accepted(int rule, const account_row_t (&list)[N]) {
    std::set<std::string> listed;
    for (const auto& row : list) listed.insert(row.account);
    for (const std::string& account : listed)
        for (const std::string& number : {account, neighbour(account)})
            EXPECT_EQ(run(rule, "10020030", number, 0x00, -1).work.check, listed.count(number) ? 1 : -1)
                << rule << " " << number;
}

template <size_t N>
void expect_moved(int rule, const bank_account_pair_t (&list)[N], const char* new_bank = nullptr) {
    for (const auto& row : list) {
        EXPECT_EQ(run(rule, row.bank, row.old_account, 0x09, 1).iban,
                  "DE00" + std::string(new_bank ? new_bank : row.bank) + row.new_account)
            << rule << " " << row.old_account;
        EXPECT_STREQ(run(rule, neighbour(row.bank), row.old_account, 0x09, 1).work.account, row.old_account) << rule;
    }
}

TEST(RuleTables, Accounts) {
    expect_replaced(4, rule4_accounts);
    expect_replaced(6, rule6_accounts);
    expect_replaced(7, rule7_accounts);
    expect_replaced(15, rule15_accounts);
    expect_replaced(16, rule16_accounts);
    expect_replaced(17, rule17_accounts);
    expect_replaced(18, rule18_accounts);
    expect_replaced(22, rule22_accounts);
    expect_replaced(23, rule23_accounts);
    expect_replaced(24, rule24_accounts);
    expect_replaced(33, rule33_accounts);
    expect_replaced(34, rule34_accounts);
    expect_replaced(35, rule35_accounts);
    expect_replaced(44, rule44_accounts, true);
    expect_replaced(49, rule49_accounts, true);
    expect_replaced(51, rule51_accounts, true);
    expect_replaced(54, rule54_accounts, true);
    expect_accepted(26, rule26_accepted);
    expect_accepted(27, rule27_accepted);
    expect_accepted(30, rule30_accepted);
    expect_accepted(54, rule54_other_bank);
    expect_moved(5, rule5_accounts);
    expect_moved(52, rule52_accounts, "60050101");
    expect_moved(53, rule53_accounts, "60050101");
    for (const auto& row : rule56_accounts)
        EXPECT_EQ(run(56, "10010111", row.old_account, 0x00, -1).iban,
                  "DE00" + std::string(row.bank) + row.new_account);
    for (const auto& row : rule5_closed_banks)
        EXPECT_EQ(run(5, row.bank, "0998765432", 0x09, 0).work.status, IBAN_STATUS_ACCOUNT_REFUSED) << row.bank;
}

// Both ends of every branch number, against the published lists.
TEST(RuleTables, Branches) {
    for (int branch = 0; branch < 1000; ++branch) {
        if (branch >= 80 && branch <= 89) continue;  // closed
        const std::string text = std::to_string(1000 + branch).substr(1);
        std::string bank = "10020030";
        for (const auto& list : branch_lists)
            if (strstr(list.branches, text.c_str())) bank = list.bank;
        for (const char* rest : {"0000000", "9999999"})
            EXPECT_EQ(run(32, "10020030", text + rest, 0x09, 0).iban, "DE00" + bank + text + rest);
    }
    EXPECT_EQ(branch_ranges[0].low, 1000000000U);
    EXPECT_EQ(branch_ranges[branch_range_count - 1].high, 7989999999U);
}

}  // namespace
