#include "message/xml_lines.h"

namespace sepa_internal {

void xml_cursor_t::put_escaped(const text_t& text) {
    for (const char *p = text.bytes, *const end = p + text.length; p < end; ++p) {
        std::string_view replacement = entity(*p);
        if (replacement.empty())
            *at++ = *p;
        else
            put(replacement);
    }
}

}  // namespace sepa_internal
