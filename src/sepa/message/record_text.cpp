#include "sepa/message/record_text.h"

#include "sepa/message/special_bytes.h"

namespace sepa_internal {

text_t measured(const char* from, size_t length) {
    text_t text = {from, length, 0};
    each_special(from, length, [&text](size_t at) {
        text.added += added_by(text.bytes[at]);
        return true;
    });
    return text;
}

}  // namespace sepa_internal
