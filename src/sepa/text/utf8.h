// What a valid UTF-8 character is, and copies into fields of fixed size that do
// not tear one.
#pragma once

#include <cstddef>

namespace sepa_internal {

// Bytes of the valid character that begins the `count` bytes at `text`, 1 to 4,
// or 0: overlong forms, surrogates and what lies beyond U+10FFFF are none.
inline size_t utf8_length(const char* text, size_t count) {
    auto byte = [&](size_t i) { return i < count ? static_cast<unsigned char>(text[i]) : 0u; };
    auto follows = [&](size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
        return byte(i) >= low && byte(i) <= high;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) return count ? 1 : 0;
    if (lead >= 0xC2 && lead <= 0xDF) return follows(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned low = lead == 0xE0 ? 0xA0 : 0x80, high = lead == 0xED ? 0x9F : 0xBF;
        return follows(1, low, high) && follows(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned low = lead == 0xF0 ? 0x90 : 0x80, high = lead == 0xF4 ? 0x8F : 0xBF;
        return follows(1, low, high) && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

// Stores the text after the first `used` bytes of `field`, with a NUL within
// its `capacity`. Where the text has to be cut inside a valid UTF-8 character,
// the whole character is left out.
void store_cut(char* field, size_t capacity, size_t used, const char* text, size_t length);

}  // namespace sepa_internal
