#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "sepa/account/account_check.h"
#include "sepa/iban/iban.h"
#include "sepa/iban/rules/branch_ranges.h"
#include "tests/unit/test_files.h"

using namespace sepa_internal;

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

// Both ends of every branch number, against the published lists.
TEST(Rules, Branches) {
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
