#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "statement/text_scan.h"
#include "statement/utf8_cut.h"

namespace {

// Both scans against the system's own, for one text.
void expect_as_sscanf(const std::string& text) {
    for (int width : {2, 3}) {
        int told = -7, consumed = 0;
        int results = sscanf(text.c_str(), width == 2 ? "%02d%n" : "%03d%n", &told, &consumed);
        int32_t value = -7;
        const char* at = text.c_str();
        EXPECT_EQ(scan_number(&at, width, &value), results == 1) << text;
        EXPECT_EQ(value, told) << text;
        EXPECT_EQ(at - text.c_str(), consumed) << text;
    }
    unsigned told = 7;
    int consumed = 0;
    int results = sscanf(text.c_str(), "%u%n", &told, &consumed);
    uint32_t value = 7;
    const char* at = text.c_str();
    EXPECT_EQ(scan_unsigned(&at, &value), results == 1) << text;
    EXPECT_EQ(value, told) << text;
    EXPECT_EQ(at - text.c_str(), consumed) << text;
}

TEST(Scan, AllShortTexts) {
    const std::string alphabet = " +-019x";
    std::vector<std::string> texts = {""};
    for (size_t i = 0; texts[i].size() < 5; ++i)
        for (char c : alphabet) texts.push_back(texts[i] + c);
    for (const std::string& text : texts) expect_as_sscanf(text);
}

TEST(Scan, SpacesAndLongNumbers) {
    for (const char* text : {"\t\n\v\f\r 5", "\xA0 5", "000000000000000000000000000012/1", "4294967295", "4294967296",
                             "-4294967297", "18446744073709551615", "18446744073709551616", "-18446744073709551615",
                             "-18446744073709551616", "99999999999999999999999999999"})
        expect_as_sscanf(text);
}

std::string cut(const std::string& before, const std::string& text) {
    char field[13] = {};
    before.copy(field, sizeof field - 1);
    store_cut(field, sizeof field, before.size(), text.data(), text.size());
    return field;
}

TEST(StoreCut, TearsNoCharacter) {
    const struct {
        const char *before, *text, *stored;
    } rows[] = {
        {"", "123456789012", "123456789012"},
        {"", "1234567890123", "123456789012"},
        {"12345", "6789012345", "123456789012"},
        {"123456789012", "3", "123456789012"},
        {"", "1234567890\xC3\xA4", "1234567890\xC3\xA4"},
        {"", "12345678901\xC3\xA4", "12345678901"},
        {"", "1234567890\xE2\x82\xAC", "1234567890"},
        {"", "12345678901\xE2\x82\xAC", "12345678901"},
        {"", "123456789\xF0\x9F\x8F\xA6", "123456789"},
        {"", "123456789\xE2\x82\xACx", "123456789\xE2\x82\xAC"},
        {"1234567890\xE2", "\x82\xAC", "1234567890"},
        // No characters, so nothing is torn.
        {"", "12345678901\xC3x", "12345678901\xC3"},
        {"", "12345678901\xE4\xE4", "12345678901\xE4"},
        {"", "1234567890\xE2\x82x", "1234567890\xE2\x82"},
        {"", "12345678901\xC1\x81", "12345678901\xC1"},
        {"", "1234567890\xE0\x82\xAC", "1234567890\xE0\x82"},
        {"", "1234567890\xED\xA0\x80", "1234567890\xED\xA0"},
        {"", "123456789\xF0\x8F\x8F\xA6", "123456789\xF0\x8F\x8F"},
        {"", "123456789\xF4\x90\x8F\xA6", "123456789\xF4\x90\x8F"},
    };
    for (const auto& row : rows) EXPECT_EQ(cut(row.before, row.text), row.stored) << row.stored;
}

// Remembering must not change what is found, whatever happens to the text.
TEST(FirstPlace, AsAFreshSearch) {
    char text[] = "..ab..ab....ab.ab";
    char* end = text + sizeof text - 1;
    first_place_t place("ab");
    EXPECT_EQ(place.find(text, end), text + 2);
    EXPECT_EQ(place.find(text + 2, end), text + 2);
    text[2] = '.';
    EXPECT_EQ(place.find(text + 1, end), text + 6);
    EXPECT_EQ(place.find(text + 7, end), text + 12);
    EXPECT_EQ(place.find(text + 3, end), text + 6);
    end = text + 10;
    EXPECT_EQ(place.find(text + 7, end), end);
    end = text + 9;
    EXPECT_EQ(place.find(text + 7, end), end);
    EXPECT_EQ(place.find(text + 4, end), text + 6);
}

}  // namespace
