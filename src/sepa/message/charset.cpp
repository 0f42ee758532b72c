#include "sepa/message/charset.h"

#include <array>
#include <cstring>

#include "sepa/message/special_bytes.h"

namespace sepa_internal {

// Beside the sets (charset_bit_t) that a byte begins a character of: what must
// come after it, and what may come after the lead of an umlaut.
enum : uint8_t { umlaut_lead = 16, umlaut_tail = 32, euro_lead = 64 };

static constexpr size_t index_of(char c) { return static_cast<unsigned char>(c); }

static constexpr auto make_bytes() {
    std::array<uint8_t, 256> bytes{};
    for (char c = 'A'; c <= 'Z'; ++c) bytes[index_of(c)] = bytes[index_of(c) | 0x20U] = set_base;
    for (char c = '0'; c <= '9'; ++c) bytes[index_of(c)] = set_base;
    for (const char* p = "'()+,-./:?"; *p; ++p) bytes[index_of(*p)] = set_base;
    bytes[index_of(' ')] = set_blank;
    for (const char* p = "$%&*"; *p; ++p) bytes[index_of(*p)] = set_german;
    for (const char* p = "!\"#;<=>@[]^_{|}~"; *p; ++p) bytes[index_of(*p)] = set_austrian;
    for (const char* p = "\x84\x96\x9C\xA4\xB6\xBC\x9F"; *p; ++p) bytes[index_of(*p)] = umlaut_tail;  // of ÄÖÜäöüß
    bytes[0xC3] = set_german | umlaut_lead;
    bytes[0xE2] = set_austrian | euro_lead;
    return bytes;
}
static constexpr auto bytes = make_bytes();

// Bytes of the character at `p` if it is one of `sets`, else 0.
static size_t character_length(const char* p, unsigned sets) {
    unsigned byte = bytes[index_of(*p)];
    if (!(byte & sets)) return 0;
    if (byte & umlaut_lead) return bytes[index_of(p[1])] & umlaut_tail ? 2 : 0;
    if (byte & euro_lead) return p[1] == '\x82' && p[2] == '\xAC' ? 3 : 0;
    return 1;
}

static unsigned sets_of_level(const charsets_t& charsets, int level) {
    if (level <= CHARSET_STRICT) return charsets.strict;
    return level == CHARSET_SPACE ? charsets.space : charsets.extended;
}

bool check_charset(const rulebook_t& rulebook, text_t* text, char* bad, int level) {
    unsigned sets = sets_of_level(rulebook.charsets, level);
    size_t next = 0;  // the character's first byte
    auto visit = [&](size_t at) {
        if (at < next) return true;
        const char* p = text->bytes + at;
        size_t length = character_length(p, sets);
        if (!length && bad) *bad = *p;
        text->added += added_by(*p);
        next = at + length;
        return length > 0;
    };
    if (sets & set_blank) return each_special(text->bytes, text->length, visit);
    for (size_t at = 0; at < text->length; ++at)
        if (!visit(at)) return false;
    return true;
}

}  // namespace sepa_internal

using namespace sepa_internal;

int sepa_check_charset(const char* text, char* bad, int level) {
    if (!text) return 1;
    text_t whole = {text, strlen(text), 0};
    return check_charset(rulebook_in_force(), &whole, bad, level);
}

bool sepa_check_message_id(const char* text) {
    constexpr size_t max_length = 35;
    if (!text) return false;
    size_t length = 0;
    for (; text[length]; ++length)
        if (length == max_length || !(bytes[index_of(text[length])] & (set_base | set_blank))) return false;
    return length > 0;
}
