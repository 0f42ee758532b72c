// The test of texts that are a BIC or have a limit.
#pragma once

// What sepa_check_field tests a text against.
enum sepa_field_kind : int {
    FIELD_BIC = 0,     // ISO 9362: four letters, country, location, optional branch
    FIELD_TEXT70 = 1,  // 1 to 70 bytes
    FIELD_TEXT16 = 2,  // 1 to 16 bytes
    FIELD_TEXT35 = 3,  // 1 to 35 bytes
};

// The library asks for BICs alone; the others are for C++ programs.
// Returns 1 if `text` is acceptable for the kind; 0 otherwise, also for null
// and for an unknown kind.
int sepa_check_field(int kind, const char* text);
