#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <set>
#include <string>

#include "account/account_check.h"
#include "iban/iban.h"
#include "iban/rules/account_tables.h"
#include "iban/rules/branch_ranges.h"
#include "iban/rules/conversion_tables.h"
#include "iban/rules/replacement_tables.h"
#include "iban/rules/rule5_tables.h"
#include "tests/unit/csv_rows.h"

namespace {

constexpr uint8_t method_without_verdict = 0x09;

iban_work_t work_of(const std::string& bank, const std::string& account, uint8_t method, int check) {
    iban_work_t work = {};
    memcpy(work.account, account.c_str(), 11);
    memcpy(work.account_in, account.c_str(), 11);
    memcpy(work.bank, bank.c_str(), 9);
    work.method = method;
    work.check = static_cast<int8_t>(check);
    return work;
}

struct outcome {
    int result;
    iban_work_t work;
    std::string iban;
};

outcome run(int rule, const std::string& bank, const std::string& account, uint8_t method, int check) {
    char iban_buf[IBAN_BUFFER_SIZE] = {};
    outcome o{0, work_of(bank, account, method, check), ""};
    o.result = iban_rules[rule](iban_buf, &o.work);
    o.iban = iban_buf;
    return o;
}

int number(const std::string& text) { return static_cast<int>(strtol(text.c_str(), nullptr, 10)); }
uint8_t method_code(const std::string& text) { return static_cast<uint8_t>(strtoul(text.c_str(), nullptr, 16)); }

const std::vector<csv_row>& rows() {
    static const std::vector<csv_row> rows =
        csv_rows(TEST_DATA "/iban_rules.csv",
                 "rule,bank,account,method,check,result,new_bank,new_account,new_check,status,iban_bank,what");
    return rows;
}

// An empty column of the outcome means that nothing changes.
TEST(Rules, Rows) {
    std::set<int> seen;
    for (const csv_row& row : rows()) {
        SCOPED_TRACE(row[0] + "," + row[1] + "," + row[2] + "," + row[3] + "," + row[4]);
        std::string bank = row[6].empty() ? row[1] : row[6];
        std::string account = row[7].empty() ? row[2] : row[7];
        outcome o = run(number(row[0]), row[1], row[2], method_code(row[3]), number(row[4]));
        EXPECT_EQ(o.result, number(row[5]));
        EXPECT_EQ(o.work.bank, bank);
        EXPECT_EQ(o.work.account, account);
        EXPECT_EQ(o.work.check, number(row[8].empty() ? row[4] : row[8]));
        EXPECT_EQ(o.work.status, number(row[9]));
        EXPECT_EQ(o.iban, o.result == 1 ? "DE00" + (row[10].empty() ? bank : row[10]) + account : "");
        seen.insert(number(row[0]));
    }
    EXPECT_EQ(seen.size(), IBAN_RULE_COUNT - 1U) << "a rule without a row, other than 41";
}

TEST(Rules, Rule41LeadsToOneIban) {
    for (int check : {-1, 1}) {
        outcome o = run(41, "62220000", "1234567890", 0x09, check);
        EXPECT_EQ(o.result, 1);
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
void expect_replaced(int rule, const account_pair_t (&list)[N], bool lenient) {
    std::set<std::string> listed;
    for (const auto& row : list) listed.insert(row.old_account);
    for (const auto& row : list) {
        SCOPED_TRACE("rule " + std::to_string(rule) + " " + row.old_account);
        for (uint8_t method : std::initializer_list<uint8_t>{0x00, 0x06, 0x09}) {
            int checked = account_check(row.new_account, method);
            outcome o = run(rule, "70020270", row.old_account, method, lenient ? -1 : 2);
            std::string account = row.new_account;
            EXPECT_EQ(o.work.account, account);
            EXPECT_EQ(o.work.check, lenient && checked == -1 ? 0 : checked);
        }
        std::string beside = neighbour(row.old_account);
        if (listed.count(beside)) continue;
        outcome o = run(rule, "70020270", beside, method_without_verdict, 1);
        EXPECT_EQ(o.work.account, beside);
        EXPECT_EQ(o.work.check, 1);
    }
}

TEST(RuleTables, ReplacedAccounts) {
    expect_replaced(4, rule4_accounts, false);
    expect_replaced(6, rule6_accounts, false);
    expect_replaced(7, rule7_accounts, false);
    expect_replaced(15, rule15_accounts, false);
    expect_replaced(16, rule16_accounts, false);
    expect_replaced(17, rule17_accounts, false);
    expect_replaced(18, rule18_accounts, false);
    expect_replaced(22, rule22_accounts, false);
    expect_replaced(23, rule23_accounts, false);
    expect_replaced(24, rule24_accounts, false);
    expect_replaced(33, rule33_accounts, false);
    expect_replaced(34, rule34_accounts, false);
    expect_replaced(35, rule35_accounts, false);
    expect_replaced(44, rule44_accounts, true);
    expect_replaced(49, rule49_accounts, true);
    expect_replaced(51, rule51_accounts, true);
    expect_replaced(54, rule54_accounts, true);
}

template <size_t N>
void expect_accepted(int rule, const account_row_t (&list)[N]) {
    std::set<std::string> listed;
    for (const auto& row : list) listed.insert(row.account);
    for (const std::string& account : listed) {
        EXPECT_EQ(run(rule, "10020030", account, 0x00, -1).work.check, 1) << rule << " " << account;
        if (!listed.count(neighbour(account))) {
            EXPECT_EQ(run(rule, "10020030", neighbour(account), 0x00, -1).work.check, -1) << rule << " " << account;
        }
    }
}

TEST(RuleTables, AcceptedAccounts) {
    expect_accepted(26, rule26_accepted);
    expect_accepted(27, rule27_accepted);
    expect_accepted(30, rule30_accepted);
    expect_accepted(54, rule54_other_bank);
}

template <size_t N>
void expect_moved(int rule, const bank_account_pair_t (&list)[N], const char* new_bank) {
    for (const auto& row : list) {
        outcome o = run(rule, row.bank, row.old_account, method_without_verdict, 1);
        EXPECT_EQ(o.iban, "DE00" + std::string(new_bank ? new_bank : row.bank) + row.new_account)
            << rule << " " << row.bank << " " << row.old_account;
        o = run(rule, neighbour(row.bank), row.old_account, method_without_verdict, 1);
        EXPECT_STREQ(o.work.account, row.old_account) << rule << " " << row.bank;
    }
}

TEST(RuleTables, AccountsOfOneBank) {
    expect_moved(5, rule5_accounts, nullptr);
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
        const std::string text = std::to_string(1000 + branch).substr(1);
        std::string bank = "10020030";
        for (const auto& list : branch_lists)
            if (strstr(list.branches, text.c_str())) bank = list.bank;
        for (const char* rest : {"0000000", "9999999"}) {
            std::string account = text + rest;
            if (branch >= 80 && branch <= 89) continue;  // closed
            EXPECT_EQ(run(32, "10020030", account, 0x09, 0).iban, "DE00" + bank + account);
        }
    }
    EXPECT_EQ(branch_ranges[0].low, 1000000000U);
    EXPECT_EQ(branch_ranges[branch_range_count - 1].high, 7989999999U);
}

// What each rule changes in the working record: account, bank, check, method,
// status.
const char* const changes[IBAN_RULE_COUNT] = {
    "",   "s",  "",   "",    "ac",  "acs", "ac",  "ac", "b",  "ab", "abc", "ac", "b", "b",    "b",   //
    "ac", "ac", "ac", "ac",  "b",   "acs", "b",   "ac", "ac", "ac", "b",   "c",  "c", "b",    "a",   //
    "c",  "b",  "bs", "abc", "abc", "abc", "abs", "b",  "b",  "b",  "b",   "",   "",  "bcms", "ac",  //
    "",   "b",  "a",  "b",   "ac",  "b",   "ac",  "ab", "ab", "ac", "b",   "ac", "b",
};

class FieldChanges : public testing::TestWithParam<int> {};

// All accounts and banks of all rows go through the rule; together they must
// show exactly the changes that the rule may make.
TEST_P(FieldChanges, AreThoseOfTheRule) {
    const int rule = GetParam();
    const uint8_t methods[] = {0x00, 0x09, 0x13, 0x63, 0x76, 0xC7};
    std::set<char> seen;
    for (const csv_row& row : rows())
        for (const char* bank : {row[1].c_str(), "10020030"})
            for (uint8_t method : methods)
                for (int check : {-1, 0, 1})
                    for (int8_t status : {IBAN_STATUS_NONE, IBAN_STATUS_SUCCESSOR}) {
                        char iban_buf[IBAN_BUFFER_SIZE + 1] = {};
                        memset(iban_buf, '#', IBAN_BUFFER_SIZE);
                        iban_work_t before = work_of(bank, row[2], method, check);
                        before.status = status;
                        iban_work_t after = before;
                        int result = iban_rules[rule](iban_buf, &after);

                        if (memcmp(before.account, after.account, 11) != 0) seen.insert('a');
                        if (memcmp(before.bank, after.bank, 9) != 0) seen.insert('b');
                        if (before.check != after.check) seen.insert('c');
                        if (before.method != after.method) seen.insert('m');
                        if (before.status != after.status) {
                            seen.insert('s');
                            ASSERT_TRUE(after.status == IBAN_STATUS_FORBIDDEN ||
                                        after.status == IBAN_STATUS_ACCOUNT_REFUSED);
                        }
                        ASSERT_EQ(memcmp(before.account_in, after.account_in, 11), 0);
                        ASSERT_EQ(after.account[10], 0);
                        ASSERT_EQ(strspn(after.bank, "0123456789"), 8U);
                        ASSERT_TRUE(result == 1 || result == -1);
                        size_t written = strspn(iban_buf, "DE0123456789ABCDEFGH:");
                        ASSERT_EQ(written, result == 1 ? 22U : 0U) << row[1] << " " << row[2];
                        ASSERT_EQ(strspn(iban_buf + written, "#"), IBAN_BUFFER_SIZE - written);
                    }
    EXPECT_EQ(std::string(seen.begin(), seen.end()), changes[rule]);
}

INSTANTIATE_TEST_SUITE_P(AllRules, FieldChanges, testing::Range(0, IBAN_RULE_COUNT));

}  // namespace
