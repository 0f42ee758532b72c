#include "message/charset.h"

#include <array>
#include <cstring>

namespace sepa_internal {

// Beside the sets (charset_bit_t) that a byte begins a character of: what must
// come after it.
enum : uint8_t { UMLAUT_LEAD = 16, EURO_LEAD = 32 };

static constexpr size_t index_of(char c) { return static_cast<unsigned char>(c); }

static constexpr auto make_bytes() {
    std::array<uint8_t, 256> bytes{};
    for (char c = 'A'; c <= 'Z'; ++c) bytes[index_of(c)] = bytes[index_of(c) | 0x20U] = SET_BASE;
    for (char c = '0'; c <= '9'; ++c) bytes[index_of(c)] = SET_BASE;
    for (const char* p = "'()+,-./:?"; *p; ++p) bytes[index_of(*p)] = SET_BASE;
    bytes[index_of(' ')] = SET_BLANK;
    for (const char* p = "$%&*"; *p; ++p) bytes[index_of(*p)] = SET_GERMAN;
    for (const char* p = "!\"#;<=>@[]^_{|}~"; *p; ++p) bytes[index_of(*p)] = SET_AUSTRIAN;
    bytes[0xC3] = SET_GERMAN | UMLAUT_LEAD;
    bytes[0xE2] = SET_AUSTRIAN | EURO_LEAD;
    return bytes;
}
static constexpr auto bytes = make_bytes();

// Second bytes of Ä Ö Ü ä ö ü ß after 0xC3.
static bool is_german_tail(char c) { return c && strchr("\x84\x96\x9C\xA4\xB6\xBC\x9F", c); }

// Bytes of the character at `p` if it is one of `sets`, else 0.
static size_t character_length(const char* p, unsigned sets) {
    unsigned byte = bytes[index_of(*p)];
    if (!(byte & sets)) return 0;
    if (byte & UMLAUT_LEAD) return is_german_tail(p[1]) ? 2 : 0;
    if (byte & EURO_LEAD) return p[1] == '\x82' && p[2] == '\xAC' ? 3 : 0;
    return 1;
}

static unsigned sets_of_level(const charsets_t& charsets, int level) {
    if (level <= CHARSET_STRICT) return charsets.strict;
    return level == CHARSET_SPACE ? charsets.space : charsets.extended;
}

bool check_charset(const rulebook_t& rulebook, const char* text, char* bad, int level) {
    unsigned sets = sets_of_level(rulebook.charsets, level);
    while (*text) {
        size_t length = character_length(text, sets);
        if (!length) {
            if (bad) *bad = *text;
            return false;
        }
        text += length;
    }
    return true;
}

}  // namespace sepa_internal

using namespace sepa_internal;

int sepa_check_charset(const char* text, char* bad, int level) {
    return !text || check_charset(rulebook_in_force(), text, bad, level);
}

bool sepa_check_message_id(const char* text) {
    constexpr size_t max_length = 35;
    if (!text) return false;
    size_t length = 0;
    for (; text[length]; ++length)
        if (length == max_length || !(bytes[index_of(text[length])] & (SET_BASE | SET_BLANK))) return false;
    return length > 0;
}
