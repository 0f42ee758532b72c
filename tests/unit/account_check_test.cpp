// What no account number or bank code is, and what stands between them, is
// the business of the fuzz target account_check.
#include "account/account_check.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <sstream>

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

// A method that is one weighted sum, as published: the weights go left from
// the position of the first one.
struct sum_method {
    std::string kind;
    size_t check_position, first_weight;
    std::vector<int> weights;
};

// Whether the check digit fills the sum up to a multiple of the modulus.
bool passes(const sum_method& method, const std::string& number) {
    std::string form = std::string(10 - number.size(), '0') + number;
    int sum = 0;
    for (size_t i = 0; i < method.weights.size(); ++i) {
        int product = (form[method.first_weight - 1 - i] - '0') * method.weights[i];
        sum += method.kind == "cross sums" ? product / 10 + product % 10 : product;
    }
    int check_digit = form[method.check_position - 1] - '0';
    if (method.kind == "cross sums" || method.kind == "plain10") return (sum + check_digit) % 10 == 0;
    bool asks_for_ten = (sum + 10) % 11 == 0;
    if (method.kind == "ten as zero" && asks_for_ten) return check_digit == 0;
    return (sum + check_digit) % 11 == 0;
}

TEST(AccountCheck, WeightedSums) {
    std::mt19937 random(1);
    for (const csv_row& row :
         csv_rows(TEST_DATA "/weighted_sums.csv", "method,kind,check_position,first_weight,weights")) {
        sum_method method{row[1], std::stoul(row[2]), std::stoul(row[3]), {}};
        std::istringstream weights(row[4]);
        for (int weight; weights >> weight;) method.weights.push_back(weight);
        for (size_t round = 0; round < 1000; ++round) {
            std::string number(1 + round % 10, '0');
            for (char& c : number) c = static_cast<char>('0' + random() % 10);
            size_t from_right = 10 - method.check_position;
            if (from_right >= number.size()) continue;
            for (char check_digit = '0'; check_digit <= '9'; ++check_digit) {
                number[number.size() - 1 - from_right] = check_digit;
                ASSERT_EQ(account_check(number.c_str(), code_of(row[0])), passes(method, number) ? 1 : -1)
                    << "method " << row[0] << ", account " << number;
            }
        }
    }
}

// The weights are given from position 10 to position 1.
TEST(AccountCheck, CrossSumPrimitive) {
    EXPECT_EQ(check_cross_sum("1234567897", 10, 10, 0, 2, 1, 2, 1, 2, 1, 2, 1, 2), 1);
    EXPECT_EQ(check_cross_sum("6007000000", 10, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2), 1);
    EXPECT_EQ(check_cross_sum("0000000054", 7, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), -1);
    EXPECT_EQ(check_cross_sum("0000000056", 7, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), 1);
}

}  // namespace
