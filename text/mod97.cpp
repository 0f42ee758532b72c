#include "text/mod97.h"

#include <array>
#include <cstdint>

#include "text/ascii.h"

namespace sepa_internal {

static constexpr size_t head_length = 4;

// A value below this takes two more decimal digits without leaving 64 bits,
// so that most characters need no division.
static constexpr uint64_t reduce_at = 100000000000000000;

static bool take(uint64_t* value, char c, mod97_letters_t letters) {
    if (is_digit(c)) {
        *value = *value * 10 + static_cast<uint64_t>(c - '0');
    } else {
        if (!is_capital(c) && !(letters == MOD97_EITHER_CASE && is_small(c))) return false;
        *value = *value * 100 + letter_index(c) + 10;
    }
    if (*value >= reduce_at) *value %= 97;
    return true;
}

int mod97(const char* text, size_t start, size_t length, mod97_letters_t letters) {
    uint64_t value = 0;
    for (size_t i = start; i < length; ++i)
        if (!take(&value, text[i], letters)) return -1;
    for (size_t i = 0; i < head_length; ++i)
        if (!take(&value, text[i], letters)) return -1;
    return static_cast<int>(value % 97);
}

// Remainders of 10^k by 97, so that the digits of a number can be weighed
// independently of each other.
static constexpr auto make_powers() {
    std::array<uint32_t, 34 + 2> powers{};
    uint32_t power = 1;
    for (uint32_t& p : powers) {
        p = power;
        power = power * 10 % 97;
    }
    return powers;
}
static constexpr auto powers = make_powers();

int mod97_of_digits(const char* text, size_t length) {
    // At the end: two letters of two digits each, two check digits.
    constexpr size_t head_digits = 6;
    bool good = true;
    auto digit_at = [&](const char* p) {
        uint32_t digit = static_cast<unsigned char>(*p) - uint32_t{'0'};
        good &= digit <= 9;
        return digit;
    };
    uint32_t letters = (letter_index(text[0]) + 10) * 100 + letter_index(text[1]) + 10;
    uint32_t sum = letters * 100 + digit_at(text + 2) * 10 + digit_at(text + 3);
    const uint32_t* power = &powers[length - head_length + head_digits];
    for (const char* p = text + head_length; p < text + length; ++p) sum += digit_at(p) * *--power;
    return good ? static_cast<int>(sum % 97) : -1;
}

}  // namespace sepa_internal
