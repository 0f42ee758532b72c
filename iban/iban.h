// IBAN services: validation, conversion from German account data, and the BIC
// of an IBAN.
#pragma once

#include <regex.h>

#include <array>
#include <cstddef>
#include <cstdint>

// One country of the table of valid IBANs (structures: ISO 13616 registry).
struct iban_country_t {
    const char* code;  // two capital letters; null ends the table
    const char* name;
    uint8_t length;       // whole IBAN, country code and check digits included
    const char* pattern;  // POSIX extended regular expression over the whole IBAN
    regex_t regex;        // `pattern` compiled, from the first IBAN_check on
};

constexpr size_t IBAN_COUNTRY_COUNT = 37;

// All countries and an end row.
extern std::array<iban_country_t, IBAN_COUNTRY_COUNT + 1> iban_countries;

// Tests an IBAN in its electronic form (no blanks). Returns 1 if it is valid.
// Otherwise returns 0 and, unless `errmsg` is null, points it at a constant
// text with the reason. A German IBAN is judged down to bank code and account
// number. Safe to call from any number of threads.
int IBAN_check(const char* iban, const char** errmsg);
