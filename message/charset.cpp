#include <array>
#include <cstdint>
#include <cstring>

#include "message/sepa.h"

// What each byte may begin, one bit a set. A rulebook and a level together
// select the sets that are allowed.
enum : uint8_t {
    SET_BASE = 1,      // single bytes of every level
    SET_BLANK = 2,     // the blank
    SET_EXTRAS = 4,    // $ % & *
    SET_AUSTRIAN = 8,  // further characters of AT-6
    SET_UMLAUT = 16,   // lead byte of the German two-byte forms
    SET_EURO = 32,     // lead byte of the euro sign
};

static constexpr size_t index_of(char c) { return static_cast<unsigned char>(c); }

static constexpr auto make_sets() {
    std::array<uint8_t, 256> sets{};
    for (char c = 'A'; c <= 'Z'; ++c) sets[index_of(c)] = sets[index_of(c) | 0x20U] = SET_BASE;
    for (char c = '0'; c <= '9'; ++c) sets[index_of(c)] = SET_BASE;
    for (const char* p = "'()+,-./:?"; *p; ++p) sets[index_of(*p)] = SET_BASE;
    sets[index_of(' ')] = SET_BLANK;
    for (const char* p = "$%&*"; *p; ++p) sets[index_of(*p)] = SET_EXTRAS;
    for (const char* p = "!\"#;<=>@[]^_{|}~"; *p; ++p) sets[index_of(*p)] = SET_AUSTRIAN;
    sets[0xC3] = SET_UMLAUT;
    sets[0xE2] = SET_EURO;
    return sets;
}
static constexpr auto sets_of_byte = make_sets();

static unsigned allowed_sets(int level) {
    int rulebook = current_rulebook.load(std::memory_order_relaxed);
    if (rulebook == RULEBOOK_DE_2_6 && level == CHARSET_EXTENDED) level = CHARSET_SPACE;
    unsigned sets = SET_BASE;
    if (level >= CHARSET_SPACE) sets |= SET_BLANK;
    if (level >= CHARSET_EXTENDED) sets |= SET_EXTRAS | SET_UMLAUT;
    if (rulebook == RULEBOOK_AT_6) sets |= SET_AUSTRIAN | SET_EURO;
    return sets;
}

// Second bytes of Ä Ö Ü ä ö ü ß behind 0xC3.
static bool is_german_tail(char c) { return c && strchr("\x84\x96\x9C\xA4\xB6\xBC\x9F", c); }

// Bytes of the character at `p`, whose lead byte is allowed; 0 for a wrong form.
static size_t form_length(const char* p, unsigned set) {
    if (set == SET_UMLAUT) return is_german_tail(p[1]) ? 2 : 0;
    if (set == SET_EURO) return p[1] == '\x82' && p[2] == '\xAC' ? 3 : 0;
    return 1;
}

int sepa_check_charset(const char* text, char* bad, int level) {
    if (!text) return 1;
    unsigned allowed = allowed_sets(level);
    while (*text) {
        unsigned set = sets_of_byte[index_of(*text)] & allowed;
        size_t length = set ? form_length(text, set) : 0;
        if (!length) {
            if (bad) *bad = *text;
            return 0;
        }
        text += length;
    }
    return 1;
}

bool sepa_check_message_id(const char* text) {
    constexpr size_t max_length = 35;
    if (!text) return false;
    size_t length = 0;
    for (; text[length]; ++length)
        if (length == max_length || !(sets_of_byte[index_of(text[length])] & (SET_BASE | SET_BLANK))) return false;
    return length > 0;
}
