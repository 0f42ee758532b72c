// The bank directory: German, Austrian and Swiss bank ids and BICs, compiled
// into the program under one minimal perfect hash. Every function here is
// safe to call from any number of threads.
#pragma once

#include <cstddef>
#include <cstdint>

// Room for the text of one entry, its NUL included.
constexpr size_t BANK_TEXT_SIZE = 168;

// SEPA schemes that an institution takes part in.
enum sepa_scl : uint8_t {
    SEPA_SCL_SCT = 1,   // credit transfer
    SEPA_SCL_SDD = 2,   // direct debit, core
    SEPA_SCL_COR1 = 4,  // direct debit, COR1
    SEPA_SCL_B2B = 8,   // direct debit, business to business
};

// One decoded entry. Storage is the caller's; all text pointers point into
// `text` of the same record, so a plain copy of a record points into the
// original.
struct bank_record_t {
    const char* bic;  // 11 characters, or empty; null if never read
    const char* name;
    const char* postal_code;  // null in a record from a BIC entry
    const char* city;         // null in a record from a BIC entry
    const char* country;      // empty for Swiss banks in Switzerland
    uint8_t flag;             // 1: the bank code is about to be deleted (German entries); for callers alone
    const char* successor;    // German entries: 8 digits or empty; else null
    uint8_t method;           // German entries: account check method, 0x24 is method 24
    uint8_t bank_flags;       // BIC entries: SEPA_SCL_... bits
    int32_t rule;             // German entries: IBAN rule number x 100 + version
    char text[BANK_TEXT_SIZE];
};

// What bic_name finds.
struct bic_name_t {
    const char* name;
    size_t length;
    uint8_t flags;  // SEPA_SCL_... bits
};

// What bank_info_get hands out: one malloc block that also holds the texts.
struct bank_info_t {
    char* name;
    char* postal_code;  // null if the record has none
    char* city;         // null if the record has none
    char* country;
    char* bic;
    uint16_t flags;  // SEPA_SCL_... bits
};

// Index of `key` in the directory, or a negative number if no entry can have
// it. A non-negative result says nothing before the entry's key is compared.
// For C++ programs that walk the tables; the lookups below know their keys'
// lengths and do without it.
int32_t directory_hash(const char* key);

// Finds a bank by country ("AT", "CH", "DE" or "LI") and national bank id,
// which may lack its leading zeros. Of two periods of a German entry the one
// that the clock selects is decoded. Returns 1 and fills `record`, or 0 and
// leaves it untouched.
int bank_lookup(const char* country, const char* bank_id, bank_record_t* record);

// The account check method of a German bank code of 8 characters, as
// bank_lookup gives it, without decoding the texts; -1 if the code is unknown.
int bank_check_method(const char* bank_code);

// Finds a bank by its BIC of 8 or 11 characters, in either case of letters.
// Returns 1 and fills `record`, or 0 and leaves it untouched.
int bic_lookup(const char* bic, bank_record_t* record);

// As bic_lookup, but nothing is copied: the name is the directory's own text.
int bic_name(const char* bic, bic_name_t* found);

// Looks `bic` up and, unless `info` is null, stores a block there that the
// caller releases with one free(). For C++ programs. Returns 1; -2 if the BIC
// is unknown; -3 if memory ran out, `info` then being unchanged.
int bank_info_get(const char* bic, bank_info_t** info);
