// IBAN_check read plainly: the country's own pattern by regexec, a long
// division on decimal text, and the parts of a German IBAN looked up.
#pragma once

#include <deque>
#include <string>

#include "account/account_check.h"
#include "directory/bank_directory.h"
#include "iban/iban.h"
#include "tests/unit/posix_pattern.h"

inline char capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// Remainder by 97 of the number that the IBAN spells, or -1.
inline int remainder_of(const std::string& iban) {
    int remainder = 0;
    for (char small_or_not : iban.substr(4) + iban.substr(0, 4)) {
        char c = capital(small_or_not);
        bool letter = c >= 'A' && c <= 'Z';
        if (!letter && (c < '0' || c > '9')) return -1;
        for (char digit : letter ? std::to_string(c - 'A' + 10) : std::string(1, c))
            remainder = (remainder * 10 + digit - '0') % 97;
    }
    return remainder;
}

// The IBAN with the check digits that it should have. All else must be letters and digits.
inline std::string with_check_digits(std::string iban) {
    iban.replace(2, 2, "00");
    return iban.replace(2, 2, std::to_string(198 - remainder_of(iban)).substr(1));
}

// Whether the IBAN matches the pattern of a row of iban_countries.
inline bool matches_pattern(const std::string& iban, const iban_country_t* row) {
    static const auto patterns = [] {
        std::deque<posix_pattern> compiled;
        for (const iban_country_t* country = iban_countries.data(); country->code; ++country)
            compiled.emplace_back(country->pattern);
        return compiled;
    }();
    return patterns[static_cast<size_t>(row - iban_countries.data())].matches(iban);
}

// What IBAN_check says, or "valid".
inline std::string reason_of(const std::string& iban) {
    const iban_country_t* country = iban_countries.data();
    while (country->code &&
           (iban.size() < 2 || capital(iban[0]) != country->code[0] || capital(iban[1]) != country->code[1]))
        ++country;
    if (!country->code) return "Invalid or unknown IBAN country code";
    if (iban.size() != country->length) return "Wrong IBAN length";
    if (!matches_pattern(iban, country)) return "Invalid IBAN format";
    if (remainder_of(iban) != 1) return "Invalid IBAN checksum";
    if (iban.compare(0, 2, "DE") != 0) return "valid";
    std::string bank_code = iban.substr(4, 8);
    bank_record_t bank;
    if (bank_lookup("DE", bank_code.c_str(), &bank) != 1) return "Invalid bank ID (BLZ) in IBAN";
    bool good = account_check_bank(iban.substr(12).c_str(), bank_code.c_str(), bank.method) != -1;
    return good ? "valid" : "Invalid account number in IBAN";
}

// What IBAN_check really says; with and without a place for the reason alike.
template <typename Expect>
std::string reason_given(const char* iban, Expect expect) {
    const char* untouched = "valid";
    const char* reason = untouched;
    int result = IBAN_check(iban, &reason);
    expect(result == (reason == untouched), "a reason is given with 0 and no other result");
    expect(IBAN_check(iban, nullptr) == result, "the reason makes no difference");
    return reason;
}
