#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <utility>

#include "sepa/account/account_check.h"
#include "sepa/directory/bank_directory.h"
#include "sepa/iban/iban.h"
#include "sepa/text/mod97.h"
#include "tests/unit/fixed_clock.h"
#include "tests/unit/test_files.h"

// Runs on the lists of tests/data/rule_banks: bank code 900000nn has rule nn.

namespace {

struct conversion {
    int result;
    int8_t status;
    std::string iban;
};

// Converts and expects what holds for every conversion.
conversion convert(const char* country, const char* account, const char* bank) {
    char iban[IBAN_BUFFER_SIZE + 1];
    memset(iban, '#', sizeof iban);
    conversion c{0, 99, ""};
    c.result = IBAN_convert(country, account, bank, iban, &c.status);
    EXPECT_EQ(IBAN_convert(country, account, bank, nullptr, nullptr), c.result);
    c.iban = std::string(iban, strnlen(iban, sizeof iban));
    EXPECT_EQ(iban[IBAN_BUFFER_SIZE], '#');

    const std::string possible =
        " 1:0 1:1 1:13 1:15 0:0 0:1 0:11 0:13 0:15 -1:0 -1:1 -1:11 -1:12 -1:13 -1:15 -1:50 -3:10 ";
    std::string both = " " + std::to_string(c.result) + ":" + std::to_string(c.status) + " ";
    EXPECT_NE(possible.find(both), std::string::npos) << both << account << " " << bank;
    if (c.result != 1) {
        EXPECT_EQ(c.iban, "");
        return c;
    }
    EXPECT_EQ(c.iban.size(), 22U);
    EXPECT_EQ(sepa_internal::mod97_of_digits(iban, c.iban.size()), 1) << iban;
    EXPECT_EQ(std::string(iban + 22, IBAN_BUFFER_SIZE - 22), std::string(IBAN_BUFFER_SIZE - 22, '\0'));

    // An IBAN of the given numbers is valid unless the rule accepted what the method does not.
    if (c.iban.substr(4) == bank + std::string(10 - strlen(account), '0') + account) {
        bool accepted = account_check_bank(account, bank, static_cast<uint8_t>(bank_check_method(bank))) != -1;
        EXPECT_EQ(IBAN_check(iban, nullptr), accepted ? 1 : 0) << iban;
    }
    return c;
}

TEST(Convert, Rows) {
    for (const csv_row& row : csv_rows(TEST_DATA "/conversions.csv", "country,account,bank,result,status,iban")) {
        conversion c = convert(or_null(row[0]), or_null(row[1]), or_null(row[2]));
        csv_row found = {row[0], row[1], row[2], std::to_string(c.result), std::to_string(c.status), c.iban};
        EXPECT_EQ(found, row);
    }
}

// The record of the period in force decides on method and rule.
TEST(Convert, FollowsTheClock) {
    const time_t start = fixed_now;
    fixed_now = 1740956399;
    EXPECT_EQ(convert("DE", "68", "92000001").status, IBAN_STATUS_CHECK_FAILED);
    fixed_now = 1740956400;
    EXPECT_EQ(convert("DE", "68", "92000001").iban.substr(4), "500202000000000068");
    fixed_now = start;
}

TEST(Convert, EveryRuleOnManyAccounts) {
    std::mt19937 random(5);
    std::vector<std::string> accounts;
    for (const csv_row& row : csv_rows(TEST_DATA "/iban_rules.csv")) accounts.push_back(row[2]);
    for (int i = 0; i < 2000; ++i) {
        accounts.emplace_back(1 + random() % 10, ' ');
        for (char& c : accounts.back()) c = static_cast<char>('0' + random() % 10);
    }
    for (int rule = 0; rule < IBAN_RULE_COUNT; ++rule) {
        const std::string bank = std::to_string(90000000 + rule);
        int made = 0;
        for (const std::string& account : accounts) made += convert("DE", account.c_str(), bank.c_str()).result == 1;
        EXPECT_EQ(made > 0, rule != 1 && rule != 52) << "rule " << rule;
        // No other character gets into an IBAN, at no place.
        for (std::string account : {"0000000067", "0034873949", "0761250090", "1000000000", "1116123454"})
            for (char& place : account)
                for (int c = 1; c < 256; ++c) {
                    if (c >= '0' && c <= '9') continue;
                    char digit = std::exchange(place, static_cast<char>(c));
                    ASSERT_EQ(IBAN_convert("DE", account.c_str(), bank.c_str(), nullptr, nullptr), -1) << account;
                    place = digit;
                }
    }
}

}  // namespace
