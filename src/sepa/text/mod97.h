// The remainder of ISO 7064 MOD 97-10: check digits of IBANs and of creditor
// identifiers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sepa_internal {

constexpr size_t mod97_head_length = 4;  // country code and check digits, which count last

// Remainder by 97 of the number that `text` of `length` bytes spells if its
// head, country code and check digits, is moved to the end: bytes `start` to
// `length`, then bytes 0 to 3. Capital letters count 10 to 35. Returns 0 to 96,
// 1 meaning that the check digits are right, or -1 for a byte that is neither a
// digit nor a capital. `start` and `length` are at least
// MOD97_HEAD_LENGTH.
int mod97(const char* text, size_t start, size_t length);

constexpr size_t mod97_max_length = 34;  // of an IBAN, by ISO 13616

// The same with `start` MOD97_HEAD_LENGTH in half the time, for a text of 12 to
// MOD97_MAX_LENGTH bytes that begins with two letters and has digits after
// them: -1 if any byte after the first two is no digit.
int mod97_of_digits(const char* text, size_t length);

// Remainder of 10^exponent, by which a part of a number weighs independently of
// the others.
constexpr uint64_t mod97_of_power(size_t exponent) {
    uint64_t power = 1;
    while (exponent--) power = power * 10 % 97;
    return power;
}

}  // namespace sepa_internal
