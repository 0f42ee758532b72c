#include "sepa/text/utf8.h"

#include <cstring>

namespace sepa_internal {

// Bytes of the valid UTF-8 character that begins `bytes`, or 0.
static size_t character_length(const unsigned char* bytes, size_t count) {
    unsigned char lead = bytes[0];
    size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                    : lead >= 0xE0 && lead <= 0xEF ? 3
                    : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                   : 0;
    if (!length || length > count) return 0;
    for (size_t i = 1; i < length; ++i)
        if ((bytes[i] & 0xC0) != 0x80) return 0;
    // Overlong forms, surrogates, and what lies beyond U+10FFFF.
    unsigned char second = bytes[1];
    if (lead == 0xE0 && second < 0xA0) return 0;
    if (lead == 0xED && second > 0x9F) return 0;
    if (lead == 0xF0 && second < 0x90) return 0;
    if (lead == 0xF4 && second > 0x8F) return 0;
    return length;
}

// How many bytes before the cut belong to a character that the cut tears.
static size_t torn_bytes(const char* field, size_t filled, const char* rest, size_t rest_length) {
    for (size_t before = 1; before <= 3 && before <= filled; ++before) {
        unsigned char around[6];
        size_t after = rest_length < 3 ? rest_length : 3;
        memcpy(around, field + filled - before, before);
        memcpy(around + before, rest, after);
        if (character_length(around, before + after) > before) return before;
    }
    return 0;
}

void store_cut(char* field, size_t capacity, size_t used, const char* text, size_t length) {
    size_t room = capacity - 1 - used;
    size_t taken = length < room ? length : room;
    memcpy(field + used, text, taken);
    size_t filled = used + taken;
    if (taken < length) filled -= torn_bytes(field, filled, text + taken, length - taken);
    field[filled] = '\0';
}

}  // namespace sepa_internal
