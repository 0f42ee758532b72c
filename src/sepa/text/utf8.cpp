#include "sepa/text/utf8.h"

#include <cstring>

namespace sepa_internal {

// How many bytes before the cut belong to a character that the cut tears.
static size_t torn_bytes(const char* field, size_t filled, const char* rest, size_t rest_length) {
    for (size_t before = 1; before <= 3 && before <= filled; ++before) {
        char around[6];
        size_t after = rest_length < 3 ? rest_length : 3;
        memcpy(around, field + filled - before, before);
        memcpy(around + before, rest, after);
        if (utf8_length(around, before + after) > before) return before;
    }
    return 0;
}

void store_cut(char* field, size_t capacity, size_t used, const char* text, size_t length) {
    size_t room = capacity - 1 - used;
    size_t taken = length < room ? length : room;
    memcpy(field + used, text, taken);
    size_t filled = used + taken;
    if (taken < length) filled -= torn_bytes(field, filled, text + taken, length - taken);
    field[filled] = '\0';
}

}  // namespace sepa_internal
