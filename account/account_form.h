// Reading the account form: ten characters, digits unless a method is called by
// name with others. Positions count from 1 at the left to 10 at the right.
#pragma once

#include <cstddef>
#include <cstdint>

#include "text/ascii.h"

namespace sepa_internal {

constexpr size_t account_length = 10;
constexpr size_t bank_code_length = 8;

// The value of the digit at `position`.
inline int digit(const char* form, int position) { return form[position - 1] - '0'; }

// Whether the digits from position `first` to position `last` are all 0.
inline bool digits_zero(const char* form, int first, int last) {
    for (int position = first; position <= last; ++position)
        if (form[position - 1] != '0') return false;
    return true;
}

inline bool all_digits(const char* text, size_t length) {
    for (size_t i = 0; i < length; ++i)
        if (!is_digit(text[i])) return false;
    return true;
}

// The ten digits as a number; 32 bits would not hold it.
inline uint64_t value(const char* form) {
    uint64_t number = 0;
    for (int position = 1; position <= 10; ++position)
        number = number * 10 + static_cast<uint64_t>(digit(form, position));
    return number;
}

// Numbers of exactly eight digits.
inline bool eight_digits(const char* form) { return digits_zero(form, 1, 2) && digit(form, 3) != 0; }

inline bool nines_at_3_and_4(const char* form) { return digit(form, 3) == 9 && digit(form, 4) == 9; }

inline bool in_range(uint64_t number, uint64_t first, uint64_t last) { return number >= first && number <= last; }

}  // namespace sepa_internal
