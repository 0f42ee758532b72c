// A text of a record: before its bytes stand what the tests of the add have
// found out, so that no output measures or searches it again.
#pragma once

#include <cstring>
#include <string_view>

namespace sepa_internal {

// A text on its way into a document. `bytes` is null for a text that is not set.
struct text_t {
    const char* bytes;
    size_t length;
    bool markup;  // has a <, > or &, which are escaped
};

constexpr bool is_markup(char c) { return c == '<' || c == '>' || c == '&'; }

inline bool has_markup(std::string_view text) {
    for (char c : text)
        if (is_markup(c)) return true;
    return false;
}

// A text of which nothing is known; null is accepted.
inline text_t unmeasured(const char* text) {
    if (!text) return {};
    size_t length = strlen(text);
    return {text, length, has_markup({text, length})};
}

// In memory: length, markup, the bytes, a NUL.
constexpr size_t record_text_head = 2;
constexpr size_t max_record_text = 255;

constexpr size_t record_text_size(const text_t& text) { return record_text_head + text.length + 1; }

// Writes the text to `at`, record_text_size bytes. Returns its first byte.
inline char* put_record_text(char* at, const text_t& text) {
    at[0] = static_cast<char>(text.length);
    at[1] = text.markup;
    char* bytes = at + record_text_head;
    memcpy(bytes, text.bytes, text.length);
    bytes[text.length] = '\0';
    return bytes;
}

// Overwrites a record's text; null is accepted.
inline void wipe_record_text(char* bytes) {
    if (bytes) explicit_bzero(bytes - record_text_head, record_text_head + static_cast<unsigned char>(bytes[-2]));
}

// The text of a record, or null.
inline text_t record_text(const char* bytes) {
    if (!bytes) return {};
    return {bytes, static_cast<unsigned char>(bytes[-2]), bytes[-1] != 0};
}

}  // namespace sepa_internal
