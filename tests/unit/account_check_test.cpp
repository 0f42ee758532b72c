// What no account number or bank code is, and what stands between them, is
// the business of the fuzz target account_check.
#include "account/account_check.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "tests/unit/test_files.h"

namespace {

uint8_t code_of(const std::string& text) { return static_cast<uint8_t>(std::stoul(text, nullptr, 16)); }

// Numbers with known results, of which the path column tells what is special
// about them. A row without a bank code goes through both entry points.
TEST(AccountCheck, Vectors) {
    const std::set<size_t> without_slot = {0x12, 0x52, 0x53, 0xB6, 0xC0};
    std::set<size_t> methods;
    for (const csv_row& row : csv_rows(TEST_DATA "/check_vectors.csv", "method,account,bank_code,result,path")) {
        SCOPED_TRACE(row[0] + "," + row[1] + "," + row[2] + "," + row[4]);
        uint8_t code = code_of(row[0]);
        int expected = std::stoi(row[3]);
        if (row[2].empty()) {
            EXPECT_EQ(account_check(row[1].c_str(), code), expected);
        }
        EXPECT_EQ(account_check_bank(row[1].c_str(), row[2].empty() ? "37040044" : row[2].c_str(), code), expected);
        methods.insert(code);
        EXPECT_EQ(account_check(nullptr, code), -1);
        EXPECT_EQ(account_check_bank(nullptr, "37040044", code), -1);
        EXPECT_EQ(account_check_bank(row[1].c_str(), nullptr, code), -1);
    }
    for (size_t code = 0; code < 256; ++code)
        EXPECT_EQ(method_table[code] != nullptr, methods.count(code) && !without_slot.count(code)) << code;
}

// Results of each method on numbers of all lengths, with the banks of some for
// those that ask. The digests were taken when a second implementation, written
// apart in another language, gave the same results.
TEST(AccountCheck, Digests) {
    std::mt19937 random(1);
    auto number_of = [&random](size_t length) {
        std::string number(length, '0');
        for (char& c : number) c = static_cast<char>('0' + random() % 10);
        return number;
    };
    for (const csv_row& row : csv_rows(TEST_DATA "/check_digests.csv", "method,digest")) {
        uint8_t code = code_of(row[0]);
        random.seed(code);
        std::string results;
        for (size_t i = 0; i < 20000; ++i) {
            std::string number = number_of(1 + i % 10), bank = number_of(8);
            results += static_cast<char>('1' + account_check_bank(number.c_str(), bank.c_str(), code));
        }
        EXPECT_EQ(std::to_string(fnv1a(results)), row[1]) << row[0];
    }
}

TEST(AccountCheck, SolvedDigit) {
    for (int check_digit = 0; check_digit < 10; ++check_digit)
        EXPECT_EQ(solve_check("004410345", 9, check_digit), check_digit == 8 ? 1 : -1) << check_digit;
}

// The weights are given from position 10 to position 1.
TEST(AccountCheck, CrossSumPrimitive) {
    EXPECT_EQ(check_cross_sum("1234567897", 10, 10, 0, 2, 1, 2, 1, 2, 1, 2, 1, 2), 1);
    EXPECT_EQ(check_cross_sum("6007000000", 10, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2), 1);
    EXPECT_EQ(check_cross_sum("0000000054", 7, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), -1);
    EXPECT_EQ(check_cross_sum("0000000056", 7, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), 1);
}

}  // namespace
