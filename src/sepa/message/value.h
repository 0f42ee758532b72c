// Tests of values that setters and transaction keys share.
#pragma once

#include <cstring>

#include "sepa/text/ascii.h"

namespace sepa_internal {

// A date is ten bytes; nothing here asks the calendar.
constexpr size_t date_length = 10;

// Whether a text, which may be null, has so many bytes.
inline bool length_within(const char* value, size_t min, size_t max) {
    if (!value) return false;
    size_t length = strnlen(value, max + 1);
    return length >= min && length <= max;
}

constexpr size_t max_bic_length = 11;
using bic_text_t = char[max_bic_length + 1];

// Writes `bic` in capitals into `out`. False if it is null or over-long.
inline bool bic_in_capitals(const char* bic, bic_text_t& out) {
    if (!length_within(bic, 0, max_bic_length)) return false;
    char* p = out;
    for (; *bic; ++bic) *p++ = ascii_upper(*bic);
    *p = '\0';
    return true;
}

}  // namespace sepa_internal
