#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>

#include "account/account_check.h"
#include "directory/bank_directory.h"
#include "iban/iban.h"
#include "tests/unit/csv_rows.h"
#include "tests/unit/fixed_clock.h"

// Runs on the lists of tests/data/rule_banks: bank code 900000nn has rule nn.

namespace {

// The number that an IBAN stands for, modulo 97, by schoolbook division.
int remainder_of(const std::string& iban) {
    std::string number;
    for (char c : iban.substr(4) + iban.substr(0, 4))
        number += c >= 'A' ? std::to_string(c - 'A' + 10) : std::string(1, c);
    int remainder = 0;
    for (char c : number) remainder = (remainder * 10 + (c - '0')) % 97;
    return remainder;
}

struct conversion {
    int result;
    int status;
    std::string iban;
};

// Converts and expects what holds for every conversion.
conversion convert(const std::string& account, const std::string& bank) {
    SCOPED_TRACE(account + " " + bank);
    char iban[IBAN_BUFFER_SIZE + 1];
    memset(iban, '#', sizeof iban);
    int8_t status = -99;
    int result = IBAN_convert("DE", account.c_str(), bank.c_str(), iban, &status);
    conversion c{result, status, std::string(iban, strnlen(iban, sizeof iban))};
    EXPECT_EQ(iban[IBAN_BUFFER_SIZE], '#');

    static const std::map<int, std::set<int>> status_of = {
        {1, {0, 1, 13, 15}}, {0, {0, 1, 11, 13, 15}}, {-1, {0, 1, 11, 12, 13, 15, 50}}, {-3, {10}}};
    auto possible = status_of.find(result);
    if (possible == status_of.end() || !possible->second.count(status)) {
        ADD_FAILURE() << "result " << result << " with status " << c.status;
        return c;
    }
    if (result != 1) {
        EXPECT_EQ(c.iban, "");
        return c;
    }
    EXPECT_EQ(c.iban.size(), 22U);
    EXPECT_EQ(c.iban.substr(0, 2), "DE");
    EXPECT_EQ(c.iban.find_first_not_of("0123456789", 2), std::string::npos);
    EXPECT_EQ(remainder_of(c.iban), 1);
    for (size_t i = c.iban.size(); i < IBAN_BUFFER_SIZE; ++i) EXPECT_EQ(iban[i], 0) << i;

    std::string padded = std::string(10 - account.size(), '0') + account;
    bank_record_t record;
    bool known = bank_lookup("DE", bank.c_str(), &record) == 1;
    bool accepted = known && account_check_bank(account.c_str(), bank.c_str(), record.method) != -1;
    // An IBAN of the given numbers is valid unless the rule accepted what the method does not.
    if (c.iban.substr(4) == bank + padded) {
        EXPECT_EQ(IBAN_check(iban, nullptr), accepted ? 1 : 0);
    }
    return c;
}

TEST(Convert, Rows) {
    for (const csv_row& row : csv_rows(TEST_DATA "/conversions.csv", "account,bank,result,status,iban")) {
        conversion c = convert(row[0], row[1]);
        EXPECT_EQ(std::to_string(c.result), row[2]) << row[0] << " " << row[1];
        EXPECT_EQ(std::to_string(c.status), row[3]) << row[0] << " " << row[1];
        EXPECT_EQ(c.iban, row[4]) << row[0] << " " << row[1];
    }
}

struct wrong_arguments {
    const char* country;
    const char* account;
    const char* bank;
    int result;
};

TEST(Convert, WrongArguments) {
    const std::string huge(1 << 20, '1');
    const wrong_arguments rows[] = {
        {nullptr, "67", "90000000", -1},
        {nullptr, nullptr, nullptr, -1},
        {"AT", nullptr, nullptr, 0},
        {"de", "67", "90000000", 0},
        {"DE ", "67", "90000000", 0},
        {"D", "67", "90000000", 0},
        {"", "67", "90000000", 0},
        {huge.c_str(), "67", "90000000", 0},
        {"DE", nullptr, "90000000", -1},
        {"DE", "67", nullptr, -1},
        {"DE", "", "90000000", -1},
        {"DE", "00000000067", "90000000", -1},
        {"DE", huge.c_str(), "90000000", -1},
        {"DE", "67", "", -1},
        {"DE", "67", "9000000", -1},
        {"DE", "67", "900000000", -1},
        {"DE", "67", huge.c_str(), -1},
    };
    for (const auto& row : rows) {
        char iban[IBAN_BUFFER_SIZE] = "before";
        int8_t status = 99;
        EXPECT_EQ(IBAN_convert(row.country, row.account, row.bank, iban, &status), row.result);
        EXPECT_STREQ(iban, "");
        EXPECT_EQ(status, IBAN_STATUS_NONE);
    }
}

TEST(Convert, OutputsAreOptional) {
    int8_t status = 99;
    EXPECT_EQ(IBAN_convert("DE", "67", "90000008", nullptr, &status), 1);
    EXPECT_EQ(status, IBAN_STATUS_BANK_CHANGED);
    char iban[IBAN_BUFFER_SIZE];
    EXPECT_EQ(IBAN_convert("DE", "67", "90000000", iban, nullptr), 1);
    EXPECT_EQ(std::string(iban).substr(4), "900000000000000067");
    EXPECT_EQ(IBAN_convert("DE", "67", "12345678", nullptr, nullptr), -3);
}

// The record of the period in force decides on method and rule.
TEST(Convert, FollowsTheClock) {
    const time_t start = fixed_now;
    fixed_now = 1740956399;
    EXPECT_EQ(convert("68", "92000001").status, IBAN_STATUS_CHECK_FAILED);
    fixed_now = 1740956400;
    EXPECT_EQ(convert("68", "92000001").iban.substr(4), "500202000000000068");
    fixed_now = start;
}

std::string bank_of_rule(int rule) { return std::to_string(90000000 + rule); }

TEST(Convert, EveryRuleOnManyAccounts) {
    std::mt19937 random(5);
    auto digit = [&random] { return static_cast<char>('0' + random() % 10); };
    std::vector<std::string> accounts;
    for (const csv_row& row :
         csv_rows(TEST_DATA "/iban_rules.csv",
                  "rule,bank,account,method,check,result,new_bank,new_account,new_check,status,iban_bank,what"))
        accounts.push_back(row[2]);
    for (int i = 0; i < 2000; ++i) {
        std::string account(1 + random() % 10, ' ');
        for (char& c : account) c = digit();
        accounts.push_back(account);
    }
    for (int rule = 0; rule < IBAN_RULE_COUNT; ++rule) {
        int made = 0;
        for (const std::string& account : accounts) made += convert(account, bank_of_rule(rule)).result == 1;
        EXPECT_EQ(made > 0, rule != 1 && rule != 52) << "rule " << rule;
    }
}

// No other character gets into an IBAN, at no place, by no rule.
TEST(Convert, AccountsAreDigits) {
    for (int rule = 0; rule < IBAN_RULE_COUNT; ++rule)
        for (const char* base : {"0000000067", "0034873949", "0761250090", "0007693740", "1000000000", "1116123454"})
            for (size_t place = 0; place < 10; ++place)
                for (int c = 1; c < 256; ++c) {
                    if (c >= '0' && c <= '9') continue;
                    std::string account = base;
                    account[place] = static_cast<char>(c);
                    char iban[IBAN_BUFFER_SIZE];
                    ASSERT_EQ(IBAN_convert("DE", account.c_str(), bank_of_rule(rule).c_str(), iban, nullptr), -1)
                        << rule << " " << account;
                }
}

}  // namespace
