// IBAN_check against the published structures and a plainer reading: the
// country's own pattern by regexec, a long division on decimal text, and the
// parts of a German IBAN looked up.
#include "sepa/iban/iban.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <random>

#include "sepa/account/account_check.h"
#include "sepa/directory/bank_directory.h"
#include "tests/unit/posix_pattern.h"
#include "tests/unit/test_files.h"

namespace {

enum { CODE, NAME, LENGTH, PATTERN, VALID };

// Remainder by 97 of the number that the IBAN spells.
int remainder_of(const std::string& iban) {
    int remainder = 0;
    for (char c : iban.substr(4) + iban.substr(0, 4))
        for (char digit : std::to_string(c <= '9' ? c - '0' : c - 'A' + 10))
            remainder = (remainder * 10 + digit - '0') % 97;
    return remainder;
}

// The IBAN with the check digits that it should have.
std::string with_check_digits(std::string iban) {
    iban.replace(2, 2, "00");
    return iban.replace(2, 2, std::to_string(198 - remainder_of(iban)).substr(1));
}

// What IBAN_check says, or "valid".
std::string reason_of(const std::string& iban) {
    static std::map<std::string, posix_pattern> patterns;
    const iban_country_t* country = iban_countries.data();
    while (country->code && strncasecmp(country->code, iban.c_str(), 2) != 0) ++country;
    if (!country->code) return "Invalid or unknown IBAN country code";
    if (iban.size() != country->length) return "Wrong IBAN length";
    if (!patterns.try_emplace(country->code, country->pattern).first->second.matches(iban))
        return "Invalid IBAN format";
    if (remainder_of(iban) != 1) return "Invalid IBAN checksum";
    if (iban.compare(0, 2, "DE") != 0) return "valid";
    std::string bank_code = iban.substr(4, 8);
    bank_record_t bank;
    if (bank_lookup("DE", bank_code.c_str(), &bank) != 1) return "Invalid bank ID (BLZ) in IBAN";
    bool good = account_check_bank(iban.substr(12).c_str(), bank_code.c_str(), bank.method) != -1;
    return good ? "valid" : "Invalid account number in IBAN";
}

// What IBAN_check really says; with and without a place for the reason alike.
std::string check(const std::string& iban) {
    const char* const untouched = "valid";
    const char* reason = untouched;
    int result = IBAN_check(iban.c_str(), &reason);
    EXPECT_EQ(result, reason == untouched) << iban;
    EXPECT_EQ(IBAN_check(iban.c_str(), nullptr), result) << iban;
    return reason;
}

void compare(const std::string& iban) { EXPECT_EQ(check(iban), reason_of(iban)) << testing::PrintToString(iban); }

struct Iban : testing::Test {
    std::vector<csv_row> rows = csv_rows(TEST_DATA "/ibans.csv", "code,name,length,pattern,valid_iban");

    void SetUp() override { ASSERT_EQ(rows.size(), IBAN_COUNTRY_COUNT); }
};

TEST_F(Iban, TableIsThePublishedOne) {
    for (size_t i = 0; i < rows.size(); ++i) {
        const iban_country_t& row = iban_countries[i];
        csv_row found = {row.code, row.name, std::to_string(row.length), row.pattern, rows[i][VALID]};
        EXPECT_EQ(found, rows[i]);
        EXPECT_EQ(check(rows[i][VALID]), "valid") << rows[i][VALID];
    }
    EXPECT_EQ(iban_countries[IBAN_COUNTRY_COUNT].code, nullptr);
}

TEST_F(Iban, Reasons) {
    for (const csv_row& row : csv_rows(TEST_DATA "/iban_reasons.csv", "iban,reason"))
        EXPECT_EQ(check(row[0]), row[1].empty() ? "valid" : row[1]) << row[0];
    const char* reason = nullptr;
    EXPECT_EQ(IBAN_check(nullptr, &reason), 0);
    EXPECT_STREQ(reason, "Invalid IBAN (NULL)");
    EXPECT_EQ(IBAN_check(nullptr, nullptr), 0);
}

// Each byte value at each position; also what is one shorter and one longer,
// and two neighbours that changed places.
TEST_F(Iban, NearMisses) {
    for (const auto& row : rows) {
        const std::string& valid = row[VALID];
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
    for (char first = 'A'; first <= 'Z'; ++first)
        for (char second = 'A'; second <= 'Z'; ++second)
            for (size_t length : {2u, 15u, 18u, 20u, 22u, 24u, 27u, 31u})
                compare(std::string{first, second} + std::string(length - 2, '0'));
}

// Random IBANs of the structure with the right check digits, and with all
// others.
TEST_F(Iban, ManyOfEachCountry) {
    std::mt19937 random(20240417);
    for (const auto& row : rows)
        for (int n = 0; n < 300; ++n) {
            std::string iban = row[VALID];
            for (size_t at = 4; at < iban.size(); ++at)
                iban[at] = static_cast<char>(iban[at] <= '9' ? '0' + random() % 10 : 'A' + random() % 26);
            iban = with_check_digits(iban);
            compare(iban);
            // A German one would have to be a real account.
            if (row[CODE] != "DE") {
                EXPECT_EQ(check(iban), "valid") << iban;
            }
            compare(iban.replace(2, 2, std::to_string(100 + n % 100).substr(1)));
        }
}

}  // namespace
