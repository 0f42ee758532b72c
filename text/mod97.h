// The remainder of ISO 7064 MOD 97-10: check digits of IBANs and of creditor
// identifiers.
#pragma once

#include <cstddef>

namespace sepa_internal {

// Remainder by 97 of the number that `text` of `length` bytes spells if its
// head, country code and check digits, is moved to the end: bytes `start` to
// `length`, then bytes 0 to 3. Capital letters count 10 to 35. Returns 0 to 96,
// 1 meaning that the check digits are right, or -1 for a byte that is neither a
// digit nor a capital. `start` and `length` are at least 4.
int mod97(const char* text, size_t start, size_t length);

constexpr size_t MOD97_MAX_LENGTH = 34;  // of an IBAN, by ISO 13616

// The same with `start` 4 in half the time, for a text of 12 to
// MOD97_MAX_LENGTH bytes that begins with two letters and has digits after
// them: -1 if any byte after the first two is no digit.
int mod97_of_digits(const char* text, size_t length);

}  // namespace sepa_internal
