#include "text/amount.h"

#include <gtest/gtest.h>
#include <regex.h>

#include <cerrno>
#include <cmath>
#include <random>

#include "tests/unit/test_files.h"
#include "text/field_check.h"

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

// Random texts close to a BIC are judged as the pattern judges them.
TEST(CheckField, BicIsWhatThePatternSays) {
    regex_t pattern;
    ASSERT_EQ(regcomp(&pattern, "^[A-Z]{6}[A-Z2-9][A-NP-Z0-9]([A-Z0-9]{3})?$", REG_EXTENDED), 0);
    const std::string characters = "AZNOPM0129a[@/:\n";
    std::mt19937 random(1);
    int matches = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string text = random() % 2 ? "DEUTDEFF" : "DEUTDEFF500";
        for (auto changes = random() % 3; changes; --changes)
            text[random() % text.size()] = characters[random() % characters.size()];
        if (random() % 4 == 0) text.resize(random() % 13, 'A');
        bool expected = regexec(&pattern, text.c_str(), 0, nullptr, 0) == 0;
        matches += expected;
        ASSERT_EQ(sepa_check_field(FIELD_BIC, text.c_str()), expected) << text;
    }
    EXPECT_GT(matches, 10000);
    regfree(&pattern);
    EXPECT_EQ(sepa_check_field(FIELD_BIC, nullptr), 0);
}

TEST(CheckField, Lengths) {
    for (const auto& [kind, limit] : {std::pair{FIELD_TEXT70, 70u}, {FIELD_TEXT16, 16u}, {FIELD_TEXT35, 35u}}) {
        EXPECT_EQ(sepa_check_field(kind, nullptr), 0);
        EXPECT_EQ(sepa_check_field(kind, ""), 0);
        EXPECT_EQ(sepa_check_field(kind, "\xFF"), 1);
        EXPECT_EQ(sepa_check_field(kind, std::string(limit, 'x').c_str()), 1);
        EXPECT_EQ(sepa_check_field(kind, std::string(limit + 1, 'x').c_str()), 0);
    }
    for (int unknown : {-1, 4, 1000}) EXPECT_EQ(sepa_check_field(unknown, "DEUTDEFF"), 0);
}

}  // namespace
