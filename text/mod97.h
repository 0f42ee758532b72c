// The remainder of ISO 7064 MOD 97-10: check digits of IBANs and of creditor
// identifiers.
#pragma once

#include <cstddef>

namespace sepa_internal {

enum mod97_letters_t { MOD97_CAPITALS, MOD97_EITHER_CASE };

// Remainder by 97 of the number that `text` of `length` bytes spells if its
// head, country code and check digits, is moved to the end: bytes `start` to
// `length`, then bytes 0 to 3. Letters count 10 to 35. Returns 0 to 96, 1
// meaning that the check digits are right, or -1 for a byte that is neither a
// digit nor a letter that `letters` takes. `start` and `length` are at least 4.
int mod97(const char* text, size_t start, size_t length, mod97_letters_t letters);

// The same with `start` 4 for a text of up to 34 bytes in a third of the time,
// where two capital letters are followed by digits alone: -1 for anything else
// after the first two bytes, which are not looked at for being letters.
int mod97_of_digits(const char* text, size_t length);

}  // namespace sepa_internal
