// Reading the account form: ten characters, digits unless a method is called by
// name with others. Positions count from 1 at the left to 10 at the right.
#pragma once

#include <cstddef>
#include <cstdint>

#include "text/digits.h"

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

// Whether ten characters are digits. The two words have six in common.
inline bool is_account_form(const char* text) {
    return word_is_digits(load_word(text)) && word_is_digits(load_word(text + account_length - 8));
}

inline bool is_bank_code(const char* text) { return word_is_digits(load_word(text)); }

// The ten digits as a number; 32 bits would not hold it.
inline uint64_t value(const char* form) {
    return uint64_t{word_value(load_word(form))} * 100 + static_cast<uint64_t>(digit(form, 9) * 10 + digit(form, 10));
}

// Numbers of exactly eight digits.
inline bool eight_digits(const char* form) { return digits_zero(form, 1, 2) && digit(form, 3) != 0; }

inline bool nines_at_3_and_4(const char* form) { return digit(form, 3) == 9 && digit(form, 4) == 9; }

inline bool in_range(uint64_t number, uint64_t first, uint64_t last) { return number >= first && number <= last; }

// As account_check_bank, for an account form and eight digits of a bank code,
// neither of which is looked at again or needs a NUL.
int check_form(const char* form, const char* bank_code, uint8_t method);

}  // namespace sepa_internal
