#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "account/account_check.h"

namespace {

enum rule { cross_sums, plain10, ten_as_zero, ten_rejected };

struct sum_method {
    uint8_t code;
    rule what;
    size_t check_position;
    size_t start;  // position of the first weight, the others go left from it
    std::vector<int> weights;
};

// The methods that are one weighted sum, as they are published.
const sum_method sum_methods[] = {
    {0x00, cross_sums, 10, 9, {2, 1, 2, 1, 2, 1, 2, 1, 2}},
    {0x01, plain10, 10, 9, {3, 7, 1, 3, 7, 1, 3, 7, 1}},
    {0x02, ten_rejected, 10, 9, {2, 3, 4, 5, 6, 7, 8, 9, 2}},
    {0x03, plain10, 10, 9, {2, 1, 2, 1, 2, 1, 2, 1, 2}},
    {0x04, ten_rejected, 10, 9, {2, 3, 4, 5, 6, 7, 2, 3, 4}},
    {0x05, plain10, 10, 9, {7, 3, 1, 7, 3, 1, 7, 3, 1}},
    {0x06, ten_as_zero, 10, 9, {2, 3, 4, 5, 6, 7, 2, 3, 4}},
    {0x07, ten_rejected, 10, 9, {2, 3, 4, 5, 6, 7, 8, 9, 10}},
    {0x10, ten_as_zero, 10, 9, {2, 3, 4, 5, 6, 7, 8, 9, 10}},
    {0x14, ten_rejected, 10, 9, {2, 3, 4, 5, 6, 7}},
    {0x15, ten_as_zero, 10, 9, {2, 3, 4, 5}},
    {0x18, plain10, 10, 9, {3, 9, 7, 1, 3, 9, 7, 1, 3}},
    {0x19, ten_as_zero, 10, 9, {2, 3, 4, 5, 6, 7, 8, 9, 1}},
    {0x20, ten_as_zero, 10, 9, {2, 3, 4, 5, 6, 7, 8, 9, 3}},
    {0x28, ten_as_zero, 8, 7, {2, 3, 4, 5, 6, 7, 8}},
    {0x30, plain10, 10, 9, {2, 1, 2, 1, 0, 0, 0, 0, 2}},
    {0x32, ten_as_zero, 10, 9, {2, 3, 4, 5, 6, 7}},
    {0x33, ten_as_zero, 10, 9, {2, 3, 4, 5, 6}},
    {0x34, ten_as_zero, 8, 7, {2, 4, 8, 5, 10, 9, 7}},
    {0x38, ten_as_zero, 10, 9, {2, 4, 8, 5, 10, 9}},
    {0x40, ten_as_zero, 10, 9, {2, 4, 8, 5, 10, 9, 7, 3, 6}},
    {0x42, ten_as_zero, 10, 9, {2, 3, 4, 5, 6, 7, 8, 9}},
    {0x43, plain10, 10, 9, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
    {0x44, ten_as_zero, 10, 9, {2, 4, 8, 5, 10}},
    {0x46, ten_as_zero, 8, 7, {2, 3, 4, 5, 6}},
    {0x47, ten_as_zero, 9, 8, {2, 3, 4, 5, 6}},
    {0x48, ten_as_zero, 9, 8, {2, 3, 4, 5, 6, 7}},
    {0x55, ten_as_zero, 10, 9, {2, 3, 4, 5, 6, 7, 8, 7, 8}},
    {0x58, ten_rejected, 10, 9, {2, 3, 4, 5, 6}},
    {0x60, cross_sums, 10, 9, {2, 1, 2, 1, 2, 1, 2}},
    {0x64, ten_as_zero, 7, 6, {2, 4, 8, 5, 10, 9}},
    {0x67, cross_sums, 8, 7, {2, 1, 2, 1, 2, 1, 2}},
    {0x92, plain10, 10, 9, {3, 7, 1, 3, 7, 1}},
    {0x94, cross_sums, 10, 9, {1, 2, 1, 2, 1, 2, 1, 2, 1}},
};

// Whether the number passes, without solving for its check digit: the check
// digit fills the sum up to a multiple of the modulus.
bool passes(const sum_method& method, const std::string& number) {
    std::string form = std::string(10 - number.size(), '0') + number;
    int sum = 0;
    for (size_t i = 0; i < method.weights.size(); ++i) {
        int product = (form[method.start - 1 - i] - '0') * method.weights[i];
        if (method.what == cross_sums) {
            for (char c : std::to_string(product)) sum += c - '0';
        } else {
            sum += product;
        }
    }
    int check_digit = form[method.check_position - 1] - '0';
    if (method.what == cross_sums || method.what == plain10) return (sum + check_digit) % 10 == 0;
    bool asks_for_ten = (sum + 10) % 11 == 0;
    if (method.what == ten_as_zero && asks_for_ten) return check_digit == 0;
    return (sum + check_digit) % 11 == 0;
}

TEST(AccountSums, AgreeWithPublishedWeights) {
    std::mt19937 random(1);
    for (const sum_method& method : sum_methods) {
        for (int round = 0; round < 1000; ++round) {
            std::string number(1 + static_cast<size_t>(round) % 10, '0');
            for (char& c : number) c = static_cast<char>('0' + random() % 10);
            size_t from_right = 10 - method.check_position;
            if (from_right >= number.size()) continue;
            for (char check_digit = '0'; check_digit <= '9'; ++check_digit) {
                number[number.size() - 1 - from_right] = check_digit;
                ASSERT_EQ(account_check(number.c_str(), method.code), passes(method, number) ? 1 : -1)
                    << "method " << std::hex << int{method.code} << ", account " << number;
            }
        }
    }
}

// The primitive's arguments run from position 10 to position 1, and each
// position can hold the check digit.
TEST(AccountSums, CrossSumPrimitive) {
    EXPECT_EQ(check_cross_sum("1234567897", 10, 10, 0, 2, 1, 2, 1, 2, 1, 2, 1, 2), 1);
    EXPECT_EQ(check_cross_sum("1234567898", 10, 10, 0, 2, 1, 2, 1, 2, 1, 2, 1, 2), -1);
    EXPECT_EQ(check_cross_sum("0000000067", 10, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), 1);
    EXPECT_EQ(check_cross_sum("6007000000", 10, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2), 1);
    EXPECT_EQ(check_cross_sum("0000000054", 7, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), -1);
    EXPECT_EQ(check_cross_sum("0000000056", 7, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), 1);
    EXPECT_EQ(check_cross_sum("0000000080", 7, 10, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0), 1);
}

}  // namespace
