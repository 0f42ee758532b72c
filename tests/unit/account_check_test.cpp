#include "sepa/account/account_check.h"

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
    std::set<size_t> lacking = {0x12, 0x52, 0x53, 0xB6, 0xC0};  // those without a slot that ask for the bank
    for (size_t code = 0; code < 256; ++code)
        if (method_table[code]) lacking.insert(code);
    for (const csv_row& row : csv_rows(TEST_DATA "/check_digests.csv", "method,digest")) {
        uint8_t code = code_of(row[0]);
        random.seed(code);
        std::string results;
        for (size_t i = 0; i < 20000; ++i) {
            std::string number = number_of(1 + i % 10), bank = number_of(8);
            results += static_cast<char>('1' + account_check_bank(number.c_str(), bank.c_str(), code));
        }
        EXPECT_EQ(std::to_string(fnv1a(results)), row[1]) << row[0];
        lacking.erase(code);
    }
    for (size_t code : lacking) ADD_FAILURE() << "check_digests.csv has no row for method " << std::hex << code;
}

// By name, methods can get what account_check refuses: those that look digits up
// answer -1, and no sanitizer finds fault with any.
TEST(AccountCheck, OtherCharactersThanDigits) {
    const std::set<method_fn> with_tables = {check_digit_table, method_29, method_57, method_87,
                                             method_C6,         method_D1, method_E2};
    std::set<method_fn> methods = with_tables;
    methods.insert(check_third_nine);
    for (method_fn method : method_table)
        if (method) methods.insert(method);
    const std::string bank = "3704\xFF" + std::string("044");
    for (int number = 0; number < 100; ++number)
        for (size_t at = 0; at < 10; ++at)
            for (char other : {'/', ':', 'Z', ' ', '\x01', '\x7F', '\x80', '\xFF'}) {
                std::string form = std::to_string(100 + number).substr(1, 1) + "27345678" + std::to_string(number % 10);
                form[at] = other;
                for (method_fn method : methods) {
                    int result = method(form.c_str());
                    EXPECT_TRUE(result == -1 || (!with_tables.count(method) && result >= 0 && result <= 2)) << form;
                }
                EXPECT_EQ(abs(method_52(form.c_str(), bank.c_str())), 1);
                EXPECT_EQ(abs(method_53(form.c_str(), bank.c_str())), 1);
            }
}

}  // namespace
