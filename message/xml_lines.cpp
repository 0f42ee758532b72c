#include "message/xml_lines.h"

namespace sepa_internal {

static std::string_view entity(char c) {
    switch (c) {
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '&': return "&amp;";
        default: return {};
    }
}

size_t xml_counter_t::escaped_size(const text_t& text) {
    size_t size = 0;
    for (char c : std::string_view(text.bytes, text.length)) {
        size_t replacement = entity(c).size();
        size += replacement ? replacement : 1;
    }
    return size;
}

void xml_cursor_t::put_escaped(const text_t& text) {
    for (const char& c : std::string_view(text.bytes, text.length)) {
        std::string_view replacement = entity(c);
        put(replacement.empty() ? std::string_view(&c, 1) : replacement);
    }
}

}  // namespace sepa_internal
