// Bank statements in SWIFT MT940 form, and the two text functions that the
// message side shares with them.
#pragma once

// Converts decimal text to a double; the decimal separator is "." in every
// locale. White space and one sign may lead, an exponent may follow. At most
// 18 digits count. `end`, if not null, receives the first byte not consumed,
// or `text` itself if there was no digit, with the result 0.0. An exponent
// beyond 511 is clipped and sets errno to ERANGE.
double parse_amount(const char* text, const char** end);

// What sepa_check_field tests a text against.
enum sepa_field_kind : int {
    FIELD_BIC = 0,     // ISO 9362: four letters, country, location, optional branch
    FIELD_TEXT70 = 1,  // 1 to 70 bytes
    FIELD_TEXT16 = 2,  // 1 to 16 bytes
    FIELD_TEXT35 = 3,  // 1 to 35 bytes
};

// Returns 1 if `text` is acceptable for the kind; 0 otherwise, also for null,
// for an unknown kind and where the BIC pattern cannot be compiled. Safe to
// call from any number of threads.
int sepa_check_field(int kind, const char* text);
