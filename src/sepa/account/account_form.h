// Reading the account form: ten characters, digits unless a method is called by
// name with others. Positions count from 1 at the left to 10 at the right.
#pragma once

#include <cstddef>
#include <cstdint>

#include "sepa/text/ascii.h"
#include "sepa/text/words.h"

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

// Writes `account` of 1 to 10 characters, padded on the left with zeros. The
// form is written, tested and read in the same pieces, two characters and a
// word: a processor waits for a word that has just been written in other pieces.
inline void pad_account(char* form, const char* account, size_t length) {
    if (length < 8) {
        memset(form, '0', account_length - length);
        memcpy(form + account_length - length, account, length);
        return;
    }
    form[0] = length > 9 ? account[0] : '0';
    form[1] = length > 8 ? account[length - 9] : '0';
    memcpy(form + 2, account + length - 8, 8);
}

// Whether ten characters are digits.
inline bool is_account_form(const char* text) {
    return is_digit(text[0]) && is_digit(text[1]) && word_is_digits(load_word(text + 2));
}

inline bool is_bank_code(const char* text) { return word_is_digits(load_word(text)); }

// The ten digits as a number; 32 bits would not hold it.
inline uint64_t value(const char* form) {
    return static_cast<uint64_t>(digit(form, 1) * 10 + digit(form, 2)) * 100000000 + word_value(load_word(form + 2));
}

// Numbers of exactly eight digits.
inline bool eight_digits(const char* form) { return digits_zero(form, 1, 2) && digit(form, 3) != 0; }

inline bool nines_at_3_and_4(const char* form) { return digit(form, 3) == 9 && digit(form, 4) == 9; }

inline bool in_range(uint64_t number, uint64_t first, uint64_t last) { return number >= first && number <= last; }

// As account_check_bank, for an account form and eight digits of a bank code,
// neither of which is looked at again or needs a NUL.
int check_form(const char* form, const char* bank_code, uint8_t method);

}  // namespace sepa_internal
