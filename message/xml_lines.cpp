#include "message/xml_lines.h"

namespace sepa_internal {

static constexpr std::string_view entity(char c) {
    if (c == '&') return "&amp;";
    return c == '<' ? "&lt;" : "&gt;";
}

size_t xml_counter_t::escaped_size(const text_t& text) {
    size_t size = text.length;
    for (char c : std::string_view(text.bytes, text.length))
        if (is_markup(c)) size += entity(c).size() - 1;
    return size;
}

void xml_cursor_t::put_escaped(const text_t& text) {
    const char *p = text.bytes, *const end = p + text.length;
    for (const char* from = p; p < end; from = ++p) {
        while (p < end && !is_markup(*p)) ++p;
        put(std::string_view(from, static_cast<size_t>(p - from)));
        if (p < end) put(entity(*p));
    }
}

}  // namespace sepa_internal
