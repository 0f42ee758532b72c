#include "sepa/statement/text_search.h"

#include <cstring>

namespace sepa_internal {

char* find_line_end(char* from, const char* end) {
    while (from < end) {
        from = static_cast<char*>(memchr(from, '\r', static_cast<size_t>(end - from)));
        if (!from || from[1] == '\n') return from;
        ++from;
    }
    return nullptr;
}

first_place_t::first_place_t(const char* wanted) : wanted_(wanted), length_(strlen(wanted)) {}

char* first_place_t::find(char* from, char* end) {
    bool known = since_ && since_ <= from && from <= place_;
    char* start = known ? place_ : from;
    if (!known) since_ = from;
    if (start >= end) {
        place_ = start;
        return end;
    }
    void* found = memmem(start, static_cast<size_t>(end - start), wanted_, length_);
    place_ = found ? static_cast<char*>(found) : end;
    return place_;
}

}  // namespace sepa_internal
