#include "account/account_check.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>

namespace {

// A copy with nothing behind it, so that a sanitizer sees a read too far.
class exact_text {
public:
    exact_text(const char* bytes, size_t size) : bytes_(new char[size]) { memcpy(bytes_.get(), bytes, size); }
    explicit exact_text(const char* text) : exact_text(text, strlen(text) + 1) {}
    operator const char*() const { return bytes_.get(); }

private:
    std::unique_ptr<char[]> bytes_;
};

const char filled_slots[] =
    "00 01 02 03 04 05 06 07 08 09 10 11 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 28 29 30 31 32 33 34 38 40 41 "
    "42 43 44 45 46 47 48 49 50 51 55 56 57 58 59 60 61 63 64 65 66 67 68 71 73 74 75 76 78 81 84 85 87 88 90 91 92 "
    "93 94 95 96 98 99 A1 A2 A3 A4 A5 A6 A7 A8 A9 B1 B2 B3 B5 B7 B8 B9 C1 C2 C3 C4 C5 C6 C7 C8 C9 D0 D1 D2 D3 D4 D5 "
    "D6 D7 D8 D9 E0 E1 E2 E3 E4 ";

TEST(AccountCheck, Slots) {
    std::string filled;
    char name[4];
    for (unsigned code = 0; code < 256; ++code) {
        snprintf(name, sizeof name, "%02X ", code);
        if (method_table[code]) filled += name;
    }
    EXPECT_EQ(filled, filled_slots);
}

// Unusable numbers fail whatever the method, an empty slot included.
TEST(AccountCheck, UnusableAccounts) {
    const char* const unusable[] = {"",
                                    "12345678901",
                                    "123456789012345678901234567890",
                                    "A",
                                    "12345678 0",
                                    "123456789:",
                                    "/123456789",
                                    "-1",
                                    "1.5",
                                    " 1234567897",
                                    "\xC3\xA9",
                                    "\n"};
    for (int code = 0; code < 256; ++code) {
        uint8_t method = static_cast<uint8_t>(code);
        EXPECT_EQ(account_check(nullptr, method), -1);
        EXPECT_EQ(account_check_bank(nullptr, "37040044", method), -1);
        for (const char* account : unusable) {
            EXPECT_EQ(account_check(exact_text(account), method), -1) << account << ' ' << code;
            EXPECT_EQ(account_check_bank(exact_text(account), "37040044", method), -1) << account << ' ' << code;
        }
    }
}

TEST(AccountCheck, BankCodes) {
    const char* const unusable[] = {"", "3704004", "370400440", "37040044370400443704004437040044"};
    const int bank_methods[] = {0x52, 0x53, 0xB6, 0xC0};
    for (int code : {0x00, 0x09, 0x12, 0x52, 0x53, 0xB6, 0xC0}) {
        uint8_t method = static_cast<uint8_t>(code);
        EXPECT_EQ(account_check_bank("1234567897", nullptr, method), -1);
        for (const char* bank_code : unusable)
            EXPECT_EQ(account_check_bank("1234567897", exact_text(bank_code), method), -1) << bank_code;
    }
    // The content counts only for the methods that read it, on all their ways.
    for (int code : bank_methods) {
        uint8_t method = static_cast<uint8_t>(code);
        EXPECT_EQ(account_check_bank("9234567894", "37040044", method),
                  code < 0xB6 ? 1 : account_check("9234567894", 0x20));
        EXPECT_EQ(account_check_bank("9234567894", "3704004A", method), -1);
        EXPECT_EQ(account_check_bank("87345678", "/7040044", method), -1);
        EXPECT_EQ(account_check("1234567897", method), 0);
    }
    EXPECT_EQ(account_check_bank("1234567897", "3704004A", 0x00), 1);
    EXPECT_EQ(account_check_bank("123", "3704004A", 0x12), 0);
}

// Shorter numbers stand for the same number with zeros in front.
TEST(AccountCheck, Padding) {
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        std::string number = std::to_string(1 + random() % 99999);
        std::string form = std::string(10 - number.size(), '0') + number;
        for (int code = 0; code < 256; ++code) {
            uint8_t method = static_cast<uint8_t>(code);
            EXPECT_EQ(account_check(exact_text(number.c_str()), method), account_check(form.c_str(), method));
            EXPECT_EQ(account_check_bank(number.c_str(), "37040044", method),
                      account_check_bank(form.c_str(), "37040044", method));
        }
    }
}

// The results a method can give at all.
bool possible(int result, int code) {
    if (result == 2) return code == 0x76;
    return result >= -1 && result <= 1;
}

// Any bytes, most of them digits, so that many numbers reach the methods.
TEST(AccountCheck, RandomBytes) {
    std::mt19937 random(1);
    auto random_text = [&random](size_t longest, size_t digits_in_16) {
        char bytes[16] = {};
        size_t size = random() % (longest + 1);
        for (size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<char>(random() % 16 < digits_in_16 ? '0' + random() % 10 : random());
        return exact_text(bytes, size + 1);
    };
    for (int round = 0; round < 3000; ++round) {
        size_t digits_in_16 = round % 2 ? 16 : random() % 17;
        exact_text account = random_text(12, digits_in_16), bank_code = random_text(9, digits_in_16);
        for (int code = 0; code < 256; ++code) {
            uint8_t method = static_cast<uint8_t>(code);
            EXPECT_TRUE(possible(account_check(account, method), code));
            EXPECT_TRUE(possible(account_check_bank(account, bank_code, method), code));
            EXPECT_TRUE(possible(account_check_bank(account, "37040044", method), code));
        }
    }
}

// Method 31's weights are 11 minus those of method 07, and it compares the
// remainder itself: both accept the same numbers.
TEST(AccountCheck, Method31And07Agree) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string number = std::to_string(random());
        EXPECT_EQ(account_check(number.c_str(), 0x31), account_check(number.c_str(), 0x07)) << number;
    }
}

}  // namespace
