#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "sepa/statement/text_search.h"
#include "sepa/text/scan.h"
#include "sepa/text/utf8.h"
#include "tests/unit/test_files.h"

using namespace sepa_internal;

namespace {

// A scan against the system's own, for one text.
template <typename Number, typename Scan>
void expect_as_sscanf(const std::string& text, const char* format, Scan scan) {
    Number value = 7;
    long long expected = 7;
    int consumed = 0;
    bool success = sscanf(text.c_str(), format, &expected, &consumed) == 1;
    const char* at = text.c_str();
    EXPECT_EQ(scan(&at, &value), success) << text;
    EXPECT_EQ(value, static_cast<Number>(expected)) << text;
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
        expect_as_sscanf<int>(text, "%02lld%n", [](auto at, auto value) { return scan_number(at, 2, value); });
        expect_as_sscanf<int>(text, "%03lld%n", [](auto at, auto value) { return scan_number(at, 3, value); });
        expect_as_sscanf<unsigned>(text, "%llu%n", scan_unsigned);
    }
}

TEST(StoreCut, TearsNoCharacter) {
    for (const csv_row& row : csv_rows(TEST_DATA "/cut_texts.csv", "before,text,stored,what")) {
        const std::string before = unescaped(row[0]), text = unescaped(row[1]);
        char field[13];
        store_cut(strcpy(field, before.c_str()), sizeof field, before.size(), text.data(), text.size());
        EXPECT_EQ(field, unescaped(row[2])) << row[3];
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
