#include "sepa/text/mod97.h"

#include <array>
#include <cstdint>

#include "sepa/text/ascii.h"
#include "sepa/text/words.h"

namespace sepa_internal {

// A value below this takes two more decimal digits without leaving 64 bits,
// so that most characters need no division.
static constexpr uint64_t reduce_at = 100000000000000000;

static bool take(uint64_t* value, char c) {
    if (is_digit(c)) {
        *value = *value * 10 + static_cast<uint64_t>(c - '0');
    } else {
        if (!is_capital(c)) return false;
        *value = *value * 100 + letter_index(c) + 10;
    }
    if (*value >= reduce_at) *value %= 97;
    return true;
}

int mod97(const char* text, size_t start, size_t length) {
    uint64_t value = 0;
    for (size_t i = start; i < length; ++i)
        if (!take(&value, text[i])) return -1;
    for (size_t i = 0; i < mod97_head_length; ++i)
        if (!take(&value, text[i])) return -1;
    return static_cast<int>(value % 97);
}

static constexpr auto make_powers() {
    std::array<uint64_t, mod97_max_length> powers{};
    for (size_t i = 0; i < powers.size(); ++i) powers[i] = mod97_of_power(i);
    return powers;
}
static constexpr auto powers = make_powers();

// The head moved to the end, where its letters have two digits each.
static constexpr size_t head_digits = 6;

static uint64_t head_value(const char* text) {
    auto letter = [](char c) { return uint64_t{letter_index(c)} + 10; };
    auto digit = [](char c) { return static_cast<uint64_t>(c - '0'); };
    return letter(text[0]) * 10000 + letter(text[1]) * 100 + digit(text[2]) * 10 + digit(text[3]);
}

int mod97_of_digits(const char* text, size_t length) {
    bool good = is_digit(text[2]) && is_digit(text[3]);
    uint64_t sum = head_value(text);
    const char* at = text + mod97_head_length;
    size_t left = length - mod97_head_length;
    for (; left >= 8; at += 8) {
        left -= 8;
        uint64_t word = load_word(at);
        good &= word_is_digits(word);
        sum += word_value(word) * powers[left + head_digits];
    }
    uint64_t rest = 0;
    for (; left > 0; --left, ++at) {
        good &= is_digit(*at);
        rest = rest * 10 + static_cast<uint64_t>(*at - '0');
    }
    sum += rest * powers[head_digits];
    return good ? static_cast<int>(sum % 97) : -1;
}

}  // namespace sepa_internal
