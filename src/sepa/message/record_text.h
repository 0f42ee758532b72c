// A text of a record: before its bytes stand what the tests of the add have
// found out, so that no output measures or searches it again.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "sepa/message/sepa.h"
#include "sepa/message/wipe.h"
#include "sepa/platform/record_arena.h"

namespace sepa_internal {

// A text on its way into a document. `bytes` is null for a text that is not set.
struct text_t {
    const char* bytes;
    size_t length;
    size_t added;  // bytes that escaping adds: 0 for a text without <, > and &
};

// What XML writes for one of the three characters that it escapes.
constexpr std::string_view entity(char c) {
    if (c == '&') return "&amp;";
    return c == '<' ? "&lt;" : "&gt;";
}

constexpr bool is_escaped(char c) { return c == '<' || c == '>' || c == '&'; }

// Bytes that escaping adds to a character.
constexpr size_t added_by(char c) { return is_escaped(c) ? entity(c).size() - 1 : 0; }

// Finds out what escaping adds to a text.
text_t measured(const char* from, size_t length);

// Null is accepted.
inline text_t measured(const char* text) { return text ? measured(text, strlen(text)) : text_t{}; }

// In memory: the length in one byte, what escaping adds in two, the bytes, a NUL.
constexpr size_t record_text_head = 3;
constexpr size_t max_record_text = UINT8_MAX;

constexpr size_t record_text_size(const text_t& text) { return record_text_head + text.length + 1; }

// Writes the text to `at`, record_text_size bytes. Returns its first byte.
inline char* put_record_text(char* at, const text_t& text) {
    auto added = static_cast<uint16_t>(text.added);
    at[0] = static_cast<char>(text.length);
    memcpy(at + 1, &added, sizeof added);
    char* bytes = at + record_text_head;
    memcpy(bytes, text.bytes, text.length);
    bytes[text.length] = '\0';
    return bytes;
}

// A text in the memory of records, of which more may be read than there is: the
// arena has so many bytes after each of its blocks.
struct record_text_t : text_t {};
constexpr size_t record_text_step = arena_margin;

// The text of a record's member, or null. Only records have such texts: those of
// the message have nothing before their bytes.
template <typename Record, typename Owner>
record_text_t record_text(const Record& record, char* Owner::*member) {
    static_assert(std::is_base_of_v<sepa_party_t, Owner>);
    const char* bytes = record.*member;
    if (!bytes) return {};
    const char* head = bytes - record_text_head;
    uint16_t added;
    memcpy(&added, head + 1, sizeof added);
    return {{bytes, static_cast<unsigned char>(head[0]), added}};
}

// Overwrites it; null is accepted.
template <typename Record, typename Owner>
void wipe_record_text(const Record& record, char* Owner::*member) {
    if (char* bytes = record.*member)
        wipe(bytes - record_text_head, record_text_head + record_text(record, member).length);
}

}  // namespace sepa_internal
