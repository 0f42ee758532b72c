#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "statement/text_search.h"
#include "text/scan.h"
#include "text/utf8.h"

using namespace sepa_internal;

namespace {

// A scan against the system's own, for one text.
template <typename Number, typename Scan>
void expect_as_sscanf(const std::string& text, const char* format, Scan scan) {
    Number expected = 7, value = 7;
    int consumed = 0;
    bool success = sscanf(text.c_str(), format, &expected, &consumed) == 1;
    const char* at = text.c_str();
    EXPECT_EQ(scan(&at, &value), success) << text;
    EXPECT_EQ(value, expected) << text;
    EXPECT_EQ(at - text.c_str(), consumed) << text;
}

TEST(Scan, AsSscanf) {
    std::vector<std::string> texts = {""};
    for (size_t i = 0; texts[i].size() < 5; ++i)
        for (char c : {' ', '+', '-', '0', '1', '9', 'x'}) texts.push_back(texts[i] + c);
    texts.insert(texts.end(), {"\t\n\v\f\r 5", "\xA0 5", "000000000000000000000000000012/1", "4294967295", "4294967296",
                               "-4294967297", "18446744073709551615", "18446744073709551616", "-18446744073709551615",
                               "-18446744073709551616", "99999999999999999999999999999"});
    for (const std::string& text : texts) {
        expect_as_sscanf<int>(text, "%02d%n", [](auto at, auto value) { return scan_number(at, 2, value); });
        expect_as_sscanf<int>(text, "%03d%n", [](auto at, auto value) { return scan_number(at, 3, value); });
        expect_as_sscanf<unsigned>(text, "%u%n", scan_unsigned);
    }
}

TEST(StoreCut, TearsNoCharacter) {
    const struct {
        const char *before, *text, *stored;
    } rows[] = {
        {"", "1234567890123", "123456789012"},
        {"123456789012", "3", "123456789012"},
        {"", "1234567890\xC3\xA4", "1234567890\xC3\xA4"},
        {"", "12345678901\xC3\xA4", "12345678901"},
        {"", "12345678901\xE2\x82\xAC", "12345678901"},
        {"", "123456789\xF0\x9F\x8F\xA6", "123456789"},
        {"1234567890\xE2", "\x82\xAC", "1234567890"},
        // No characters, so nothing is torn.
        {"", "12345678901\xC3x", "12345678901\xC3"},
        {"", "1234567890\xE2\x82x", "1234567890\xE2\x82"},
        {"", "12345678901\xC1\x81", "12345678901\xC1"},
        {"", "1234567890\xE0\x9F\xBF", "1234567890\xE0\x9F"},
        {"", "1234567890\xED\xA0\x80", "1234567890\xED\xA0"},
        {"", "123456789\xF0\x8F\x8F\xA6", "123456789\xF0\x8F\x8F"},
        {"", "123456789\xF4\x90\x8F\xA6", "123456789\xF4\x90\x8F"},
    };
    for (const auto& row : rows) {
        char field[13];
        strcpy(field, row.before);
        store_cut(field, sizeof field, strlen(field), row.text, strlen(row.text));
        EXPECT_STREQ(field, row.stored);
    }
}

// Remembering must not change what is found, whatever happens to the text.
TEST(FirstPlace, AsAFreshSearch) {
    char text[] = "..ab..ab....ab.ab";
    char* end = text + sizeof text - 1;
    first_place_t place("ab");
    EXPECT_EQ(place.find(text, end), text + 2);
    text[2] = '.';
    EXPECT_EQ(place.find(text + 1, end), text + 6);
    EXPECT_EQ(place.find(text + 7, end), text + 12);
    EXPECT_EQ(place.find(text + 3, end), text + 6);
    end = text + 10;
    EXPECT_EQ(place.find(text + 7, end), end);
    end = text + 9;
    EXPECT_EQ(place.find(text + 7, end), end);
}

}  // namespace
