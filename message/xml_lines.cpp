#include "message/xml_lines.h"

namespace sepa_internal {

void xml_cursor_t::put_escaped(const text_t& text) {
    for (const char *p = text.bytes, *const end = p + text.length; p < end; ++p) {
        if (is_escaped(*p))
            put(entity(*p));
        else
            *at++ = *p;
    }
}

}  // namespace sepa_internal
