#include "message/xml_lines.h"

#include "message/special_bytes.h"

namespace sepa_internal {

void xml_cursor_t::put_escaped(const text_t& text) {
    size_t done = 0;
    each_special(text.bytes, text.length, [&](size_t i) {
        if (!is_escaped(text.bytes[i])) return true;
        put_all(*this, std::string_view(text.bytes + done, i - done), entity(text.bytes[i]));
        done = i + 1;
        return true;
    });
    put(std::string_view(text.bytes + done, text.length - done));
}

}  // namespace sepa_internal
