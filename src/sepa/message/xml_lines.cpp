#include "sepa/message/xml_lines.h"

#include "sepa/message/special_bytes.h"

namespace sepa_internal {

char* xml_cursor_t::put_escaped(char* at, const char* text, size_t length) {
    xml_cursor_t out = {at};
    size_t done = 0;
    each_special(text, length, [&](size_t i) {
        if (!is_escaped(text[i])) return true;
        put_all(out, std::string_view(text + done, i - done), entity(text[i]));
        done = i + 1;
        return true;
    });
    out.put(std::string_view(text + done, length - done));
    return out.at;
}

}  // namespace sepa_internal
