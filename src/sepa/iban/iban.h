// IBAN services: validation, conversion from German account data, and the BIC
// of an IBAN.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// One country of the table of valid IBANs (structures: ISO 13616 registry).
struct iban_country_t {
    const char* code;     // two capital letters; null ends the table
    const char* name;     // for C++ programs; nothing here reads it
    uint8_t length;       // whole IBAN, country code and check digits included
    const char* pattern;  // POSIX extended regular expression over the whole IBAN
};

constexpr size_t IBAN_COUNTRY_COUNT = 37;

// All countries and an end row.
extern const std::array<iban_country_t, IBAN_COUNTRY_COUNT + 1> iban_countries;

// Tests an IBAN without blanks, as computers exchange it. Returns 1 if it is
// valid. Otherwise returns 0 and, unless `errmsg` is null, points it at a
// constant text with the reason. A German IBAN is judged down to bank code and account
// number. Safe to call from any number of threads.
int IBAN_check(const char* iban, const char** errmsg);

// Room for a BIC and its NUL.
constexpr size_t BIC_BUFFER_SIZE = 12;

// Finds the BIC for an IBAN of Germany, Austria, Switzerland or Liechtenstein
// by the bank id inside it. `bic` has BIC_BUFFER_SIZE bytes and is cleared
// first. Returns 1, with `bic` empty if the directory has none for the bank;
// 0 for any other country, small letters included; -1 if the IBAN's length is
// wrong; -3 if the bank is unknown. Check digits and account are not judged.
int IBAN_getBIC(const char* iban, char* bic);

// What IBAN_convert makes has this length.
constexpr size_t GERMAN_IBAN_LENGTH = 22;

// Room for an IBAN of any country and its NUL.
constexpr size_t IBAN_BUFFER_SIZE = 35;

// What IBAN_convert reports beside its result.
enum iban_status_t : int8_t {
    IBAN_STATUS_NONE = 0,              // nothing to report
    IBAN_STATUS_ACCOUNT_CHANGED = 1,   // the bank's rule changed the account number
    IBAN_STATUS_UNKNOWN_BANK = 10,     // bank code, or a successor's, not in the directory
    IBAN_STATUS_CHECK_FAILED = 11,     // the account number fails its check
    IBAN_STATUS_FORBIDDEN = 12,        // the bank, or this kind of account, takes no conversion
    IBAN_STATUS_SUCCESSOR = 13,        // the bank code was replaced by its successor
    IBAN_STATUS_BANK_CHANGED = 15,     // the rule changed the bank code alone
    IBAN_STATUS_ACCOUNT_REFUSED = 50,  // the rule refuses this account
};

// Working record of one conversion.
struct iban_work_t {
    char account[11];     // 10 characters, padded on the left with zeros
    char bank[9];         // 8 digits
    uint8_t method;       // account check method of the bank
    int8_t check;         // result of the account check, or what a rule put there; -1: failed
    int8_t status;        // iban_status_t; 0 until a successor or a rule sets it
    char account_in[11];  // the account as given, padded; never changed
};

// An IBAN rule of the German central bank. Returns 1 and writes the IBAN into
// `iban_buf`, with "00" as check digits, or returns -1 to refuse. May change
// all of `work` but `account_in`.
using iban_rule_fn = int (*)(char* iban_buf, iban_work_t* work);

constexpr int IBAN_RULE_COUNT = 58;

// The rules by number: rule word of the directory / 100.
extern const iban_rule_fn iban_rules[IBAN_RULE_COUNT];

// Converts a German account number (1 to 10 characters) and bank code (8
// characters) into an IBAN. `country` is "DE". Returns 1; 0 if the country is
// another or the bank's rule is unknown; -1 for a null or wrongly sized
// argument, for a refusal by the bank's rule and for an account number that
// fails its check; -3 if the bank code is unknown. `iban`, if not null, has
// IBAN_BUFFER_SIZE bytes and gets the IBAN on 1, an empty text otherwise.
// `status`, if not null, gets an iban_status_t. Safe to call from any number
// of threads.
int IBAN_convert(const char* country, const char* account, const char* bank_id, char* iban, int8_t* status);
