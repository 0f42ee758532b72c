// IBAN_check against the published structures (tests/data/ibans.csv), with
// regexec and a long division on decimal text as references.
#include "iban/iban.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

struct country_row {
    std::string code, name, length, pattern, valid;
};

std::vector<country_row> read_rows() {
    std::vector<country_row> rows;
    FILE* file = fopen(TEST_DATA "/ibans.csv", "r");
    if (!file) return rows;
    char line[200], f[5][100];
    while (fgets(line, sizeof line, file))
        if (sscanf(line, "%99[^;#];%99[^;];%99[^;];%99[^;];%99[^;\n]", f[0], f[1], f[2], f[3], f[4]) == 5)
            rows.push_back({f[0], f[1], f[2], f[3], f[4]});
    fclose(file);
    return rows;
}

std::string check(const std::string& iban) {
    const char* untouched = "valid";
    const char* reason = untouched;
    int result = IBAN_check(iban.c_str(), &reason);
    EXPECT_EQ(result, reason == untouched ? 1 : 0) << iban;
    EXPECT_EQ(IBAN_check(iban.c_str(), nullptr), result) << iban;
    return reason;
}

// The number that the IBAN spells, as decimal text, divided by hand.
int remainder_of(const std::string& iban) {
    std::string number;
    for (char c : iban.substr(4) + iban.substr(0, 4))
        number += c <= '9' ? std::string(1, c) : std::to_string(c - 'A' + 10);
    int rest = 0;
    for (char digit : number) rest = (rest * 10 + digit - '0') % 97;
    return rest;
}

// What IBAN_check must say of an IBAN whose bank, if it is German, is good.
std::string expected(const std::string& iban) {
    const iban_country_t* row = iban_countries.data();
    while (row->code && (iban.size() < 2 || strncasecmp(row->code, iban.c_str(), 2) != 0)) ++row;
    if (!row->code) return "Invalid or unknown IBAN country code";
    if (iban.size() != row->length) return "Wrong IBAN length";
    if (regexec(&row->regex, iban.c_str(), 0, nullptr, 0) != 0) return "Invalid IBAN format";
    return remainder_of(iban) == 1 ? "valid" : "Invalid IBAN checksum";
}

struct Iban : testing::Test {
    std::vector<country_row> rows = read_rows();

    void SetUp() override {
        ASSERT_EQ(rows.size(), IBAN_COUNTRY_COUNT);
        ASSERT_EQ(check(rows[0].valid), "valid");  // compiles the patterns that `expected` uses
    }

    void compare(const std::string& iban) { EXPECT_EQ(check(iban), expected(iban)) << testing::PrintToString(iban); }
};

TEST_F(Iban, TableIsThePublishedOne) {
    for (size_t i = 0; i < rows.size(); ++i) {
        const iban_country_t& row = iban_countries[i];
        EXPECT_EQ(row.code, rows[i].code);
        EXPECT_EQ(row.name, rows[i].name);
        EXPECT_EQ(std::to_string(row.length), rows[i].length);
        EXPECT_EQ(row.pattern, rows[i].pattern);
    }
    EXPECT_EQ(iban_countries[IBAN_COUNTRY_COUNT].code, nullptr);
}

TEST_F(Iban, ValidOnes) {
    for (const auto& row : rows) EXPECT_EQ(check(row.valid), "valid") << row.valid;
    for (const char* german : {"DE86100500000990021440", "DE42500502010000222000", "DE57300600100002310113"})
        EXPECT_EQ(check(german), "valid") << german;
}

// Each byte value at each position; also what is one shorter and one longer,
// and two neighbours that changed places.
TEST_F(Iban, NearMisses) {
    for (const auto& row : rows) {
        const std::string& valid = row.valid;
        for (size_t at = 0; at < valid.size(); ++at) {
            std::string changed = valid;
            for (int byte = 1; byte < 256; ++byte) {
                changed[at] = static_cast<char>(byte);
                compare(changed);
            }
            compare(valid.substr(0, at));
            compare(valid.substr(0, at) + valid.substr(at + 1));
            compare(valid.substr(0, at) + "0" + valid.substr(at));
            if (at < 4 || at + 1 == valid.size()) continue;
            changed = valid;
            std::swap(changed[at], changed[at + 1]);
            compare(changed);
        }
        for (char longer : {'0', 'A', ' ', '\n'}) compare(valid + longer);
        compare(valid.substr(0, 2) + std::string(100000, '0'));
    }
}

TEST_F(Iban, EveryPairOfLettersAndOfCheckDigits) {
    for (char first = 'A'; first <= 'Z'; ++first)
        for (char second = 'A'; second <= 'Z'; ++second)
            for (size_t length : {2u, 15u, 18u, 20u, 22u, 24u, 27u, 31u})
                compare(std::string{first, second} + std::string(length - 2, '0'));
    for (const auto& row : rows) {
        int valid = 0;
        for (int pair = 0; pair < 100; ++pair) {
            std::string iban = row.valid;
            iban[2] = static_cast<char>('0' + pair / 10);
            iban[3] = static_cast<char>('0' + pair % 10);
            compare(iban);
            valid += remainder_of(iban) == 1;
        }
        EXPECT_GE(valid, 1);
    }
    // No pair is refused for its own sake.
    for (const char* pair : {"NO0100000000022", "NO9800000000022", "NO0000000000040", "NO9700000000040",
                             "NO0200000000004", "NO9900000000004"})
        EXPECT_EQ(check(pair), "valid") << pair;
}

// Random IBANs of the structure with the right check digits. A German one
// would have to be a real account.
TEST_F(Iban, ManyOfEachCountry) {
    std::mt19937 random(20240417);
    for (const auto& row : rows) {
        if (row.code == "DE") continue;
        for (int n = 0; n < 300; ++n) {
            std::string iban = row.valid;
            for (size_t at = 4; at < iban.size(); ++at)
                iban[at] = static_cast<char>(iban[at] <= '9' ? '0' + random() % 10 : 'A' + random() % 26);
            iban.replace(2, 2, "00");
            int digits = 98 - remainder_of(iban);
            iban[2] = static_cast<char>('0' + digits / 10);
            iban[3] = static_cast<char>('0' + digits % 10);
            EXPECT_EQ(check(iban), "valid") << iban;
        }
    }
}

TEST_F(Iban, TextsOfItsOwn) {
    const struct {
        const char *iban, *reason;
    } texts[] = {{"", "Invalid or unknown IBAN country code"},
                 {"D", "Invalid or unknown IBAN country code"},
                 {"DE", "Wrong IBAN length"},
                 {"US64SVBKUS6S3300958879", "Invalid or unknown IBAN country code"},
                 {"AD1200012030200359100100", "Invalid or unknown IBAN country code"},
                 {"de89370400440532013000", "Invalid IBAN format"},
                 {"dE89370400440532013000", "Invalid IBAN format"},
                 {"De89370400440532013000", "Invalid IBAN format"},
                 {"gb81SLDV99858107822382", "Invalid IBAN format"},
                 {"de8937040044053201300", "Wrong IBAN length"},
                 {"DE89 3704 0044 0532 0130 00", "Wrong IBAN length"},
                 {" DE89370400440532013000", "Invalid or unknown IBAN country code"},
                 {"FR087907449913T6dH8LB9JLC14", "Invalid IBAN format"},
                 {"DE98370400440532013000", "Invalid IBAN checksum"},
                 {"DE09000000000000000001", "Invalid bank ID (BLZ) in IBAN"},
                 {"DE24370400440532013200", "Invalid account number in IBAN"},
                 {"D\xC3\x89"
                  "9370400440532013000",
                  "Invalid or unknown IBAN country code"}};
    for (const auto& text : texts) EXPECT_EQ(check(text.iban), text.reason) << text.iban;
    const char* reason = nullptr;
    EXPECT_EQ(IBAN_check(nullptr, &reason), 0);
    EXPECT_STREQ(reason, "Invalid IBAN (NULL)");
    EXPECT_EQ(IBAN_check(nullptr, nullptr), 0);
}

}  // namespace
