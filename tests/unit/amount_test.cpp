#include <gtest/gtest.h>
#include <regex.h>

#include <cerrno>
#include <cmath>
#include <random>

#include "statement/mt940.h"

namespace {

struct row {
    const char* text;
    double value;
    size_t consumed;
};

// The arithmetic is told as plain double steps, so results are compared
// exactly, signs of zero included.
TEST(ParseAmount, Values) {
    const row rows[] = {
        {"12.34", 1234.0 / 100.0, 5},
        {"0.1", 1.0 / 10.0, 3},
        {" \t\r\n\v\f+7", 7.0, 8},
        {"-3.5xyz", -3.5, 4},
        {"1.2.3", 1.2, 3},
        {"12,34", 12.0, 2},
        {".", 0.0, 0},
        {"", 0.0, 0},
        {"abc", 0.0, 0},
        {" +", 0.0, 0},
        {"-", -0.0, 0},
        {"-.", -0.0, 0},
        {"-0", -0.0, 2},
        {"--1", -0.0, 0},
        {".5", 0.5, 2},
        {"5.", 5.0, 2},
        {"1e3", 1000.0, 3},
        {"1E-2", 0.01, 4},
        {"1e", 1.0, 2},
        {"1e+", 1.0, 3},
        {"1e-x", 1.0, 3},
        {"e5", 0.0, 0},
        {"123456789", 123456789.0, 9},
        {"1234567890", 1.0 * 1.0e9 + 234567890.0, 10},
        {"123456789012345678901", (123456789.0 * 1.0e9 + 12345678.0) * 1e3, 21},
        {"0.0000000000000000001234", 0.0, 24},
        {"1.2345678901234567890", (123456789.0 * 1.0e9 + 12345678.0) / (1e1 * 1e16), 21},
        {"1e22", 1.0 * (1e2 * 1e4 * 1e16), 4},
        {"1\xC2\xA0", 1.0, 1},
    };
    for (const row& r : rows) {
        const char* end = nullptr;
        errno = 0;
        double value = parse_amount(r.text, &end);
        EXPECT_EQ(value, r.value) << r.text;
        EXPECT_EQ(std::signbit(value), std::signbit(r.value)) << r.text;
        EXPECT_EQ(static_cast<size_t>(end - r.text), r.consumed) << r.text;
        EXPECT_EQ(errno, 0) << r.text;
    }
    EXPECT_EQ(parse_amount("12.5x", nullptr), 12.5);
}

TEST(ParseAmount, ExponentIsClippedAt511) {
    const row rows[] = {
        {"1e999", HUGE_VAL, 5},
        {"1e-999", 0.0, 6},
        {"-1e512", -HUGE_VAL, 6},
        {"0e999999999999999999999999", 0.0, 26},
        {"1e99999999999999999999999999999999999999", HUGE_VAL, 40},
    };
    for (const row& r : rows) {
        const char* end = nullptr;
        errno = 0;
        double value = parse_amount(r.text, &end);
        if (r.text[0] == '0') {
            EXPECT_TRUE(std::isnan(value)) << r.text;
        } else {
            EXPECT_EQ(value, r.value) << r.text;
        }
        EXPECT_EQ(static_cast<size_t>(end - r.text), r.consumed) << r.text;
        EXPECT_EQ(errno, ERANGE) << r.text;
    }
    errno = 0;
    EXPECT_EQ(parse_amount("1e511", nullptr), HUGE_VAL);
    EXPECT_EQ(errno, 0);
}

TEST(CheckField, Bic) {
    for (const char* good : {"DEUTDEFF", "DEUTDEFF500", "AAAAAAA0", "AAAAAA2N", "AAAAAA9PXXX", "AAAAAAZ9000"})
        EXPECT_EQ(sepa_check_field(FIELD_BIC, good), 1) << good;
    for (const char* bad :
         {"", "DEUTDEF", "DEUTDEFF5", "DEUTDEFF50", "DEUTDEFF5000", "deutdeff", "DEUTDE1F", "DEUTDE0F", "DEUTDEFO",
          "DEUT1EFF", "D3UTDEFF", "DEUTDEFF\n", "\nDEUTDEFF", "DEUTDEFF5-0", "DEUTDEFF50a"})
        EXPECT_EQ(sepa_check_field(FIELD_BIC, bad), 0) << bad;
    EXPECT_EQ(sepa_check_field(FIELD_BIC, nullptr), 0);
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
}

TEST(CheckField, Lengths) {
    const struct {
        int kind;
        size_t limit;
    } kinds[] = {{FIELD_TEXT70, 70}, {FIELD_TEXT16, 16}, {FIELD_TEXT35, 35}};
    for (auto k : kinds) {
        EXPECT_EQ(sepa_check_field(k.kind, nullptr), 0);
        EXPECT_EQ(sepa_check_field(k.kind, ""), 0);
        EXPECT_EQ(sepa_check_field(k.kind, "\xFF"), 1);
        EXPECT_EQ(sepa_check_field(k.kind, std::string(k.limit, 'x').c_str()), 1);
        EXPECT_EQ(sepa_check_field(k.kind, std::string(k.limit + 1, 'x').c_str()), 0);
    }
    for (int unknown : {-1, 4, 1000}) EXPECT_EQ(sepa_check_field(unknown, "DEUTDEFF"), 0);
}

}  // namespace
