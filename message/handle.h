// What the sources of this folder share: failures, owned texts, ASCII case.
#pragma once

#include "message/sepa.h"

constexpr const char* out_of_memory = "Out of memory";

// Sets last_error to a constant text. Returns 0.
int fail(sepa_t* handle, const char* text);

// Composes last_error in error_buffer, cut to fit. Returns 0.
int fail_with(sepa_t* handle, const char* format, ...) __attribute__((format(printf, 2, 3)));

// Overwrites a text over its length, frees it and clears the pointer. Null is
// accepted. The one place, with wipe_record, where memory is wiped: compilers
// delete a memset in front of free.
void wipe_text(char** text);

// Overwrites and frees a record or handle.
void wipe_record(void* record, size_t size);

char ascii_upper(char c);

// Compares two texts without regard to the case of ASCII letters.
bool same_text(const char* a, const char* b);

// The same for a key of a list, most of which differ in their first letter.
inline bool same_key(const char* a, const char* b) {
    constexpr int but_case = ~0x20;
    return ((a[0] ^ b[0]) & but_case) == 0 && same_text(a, b);
}

constexpr size_t max_bic_length = 11;

// Writes `bic` in capitals into `out`. False if it is null or over-long.
bool bic_in_capitals(const char* bic, char (&out)[max_bic_length + 1]);

// Today's date as clock_local gives it, or any date of ten bytes.
constexpr size_t date_length = 10;
