#include "sepa/text/amount.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstring>

#include "sepa/text/field_check.h"
#include "tests/unit/posix_pattern.h"
#include "tests/unit/test_files.h"

namespace {

// The arithmetic is one of plain double steps, so results are compared
// exactly, signs of zero included.
TEST(ParseAmount, Rows) {
    for (const csv_row& row : csv_rows(TEST_DATA "/amounts.csv", "text,value,consumed,out_of_range")) {
        SCOPED_TRACE(row[0]);
        const char* end = nullptr;
        errno = 0;
        double value = parse_amount(row[0].c_str(), &end), expected = strtod(row[1].c_str(), nullptr);
        EXPECT_EQ(errno, row[3] == "1" ? ERANGE : 0);
        EXPECT_TRUE(std::isnan(expected) ? std::isnan(value) : value == expected) << value;
        EXPECT_TRUE(std::isnan(expected) || std::signbit(value) == std::signbit(expected));
        EXPECT_EQ(std::to_string(end - row[0].c_str()), row[2]);
    }
    EXPECT_EQ(parse_amount("12.5x", nullptr), 12.5);
}

// In double arithmetic 2.675 is 267.5 cents and 1.005 is 100.49999999999999.
TEST(FormatAmount, Texts) {
    for (const char* row : {"0 0.00", "-0.0 0.00", "0.30000000000000004 0.30", "0.99 0.99", "0.994999 0.99",
                            "0.995 1.00", "1234.5 1234.50", "0.005 0.01", "-0.005 -0.01", "-0.004 0.00", "-0.5 -0.50",
                            "-12.5 -12.50", "2.675 2.68", "1.005 1.00", "999999999.99 999999999.99",
                            "1e15 1000000000000000.00", "92233720368547744 92233720368547747.84"}) {
        char text[128];
        sepa_format_amount(text, strtod(row, nullptr));
        EXPECT_STREQ(text, strchr(row, ' ') + 1);
    }
}

// Cents go in and come out: no amount up to ten million drifts by one.
TEST(FormatAmount, EveryCent) {
    for (unsigned long cents = 0; cents < 1000000000; cents += cents < 100000 ? 1 : 99991) {
        char text[128], expected[128];
        sepa_format_amount(text, static_cast<double>(cents) / 100);
        snprintf(expected, sizeof expected, "%lu.%02lu", cents / 100, cents % 100);
        ASSERT_STREQ(text, expected);
    }
}

// Each byte value at each position of a BIC, and all lengths. Positions do not
// depend on each other, in the pattern as in the function.
TEST(CheckField, BicIsWhatThePatternSays) {
    const posix_pattern pattern("^[A-Z]{6}[A-Z2-9][A-NP-Z0-9]([A-Z0-9]{3})?$");
    int matches = 0;
    auto compare = [&](const std::string& text) {
        bool expected = pattern.matches(text);
        matches += expected;
        EXPECT_EQ(sepa_check_field(FIELD_BIC, text.c_str()), expected) << testing::PrintToString(text);
    };
    for (const std::string valid : {"DEUTDEFF", "DEUTDEFF500", "AZAZAZ2N", "AZAZAZ9PAZ0"})
        for (size_t length = 0; length < 14; ++length) {
            std::string text = (valid + "AAAAAA").substr(0, length);
            compare(text);
            for (size_t at = 0; at < length; ++at)
                for (int byte = 1; byte < 256; ++byte) {
                    std::string changed = text;
                    changed[at] = static_cast<char>(byte);
                    compare(changed);
                }
        }
    EXPECT_EQ(matches, 4 * 2 + 4 * (2 * (6 * 26 + 34 + 35) + 3 * 36));
    EXPECT_EQ(sepa_check_field(FIELD_BIC, nullptr), 0);
}

TEST(CheckField, Lengths) {
    for (const auto& [kind, limit] : {std::pair{FIELD_TEXT70, 70u}, {FIELD_TEXT16, 16u}, {FIELD_TEXT35, 35u}})
        for (size_t length : {0u, 1u, limit, limit + 1})
            EXPECT_EQ(sepa_check_field(kind, std::string(length, '\xFF').c_str()), length > 0 && length <= limit);
    for (int unknown : {-1, 4}) EXPECT_EQ(sepa_check_field(unknown, "DEUTDEFF"), 0);
}

}  // namespace
