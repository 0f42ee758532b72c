#include "statement/text_scan.h"

#include <cstring>

bool begins_with(const char* at, const char* start) {
    for (; *start; ++at, ++start)
        if (*at != *start) return false;
    return true;
}

char* find_line_end(char* from, const char* end) {
    while (from < end) {
        from = static_cast<char*>(memchr(from, '\r', static_cast<size_t>(end - from)));
        if (!from || from[1] == '\n') return from;
        ++from;
    }
    return nullptr;
}

static const char* skip_space(const char* at) {
    while (*at == ' ' || (*at >= '\t' && *at <= '\r')) ++at;
    return at;
}

bool scan_number(const char** at, int width, int32_t* out) {
    const char* p = skip_space(*at);
    bool negative = *p == '-';
    if (*p == '-' || *p == '+') ++p, --width;
    if (width < 1 || !is_digit(*p)) return false;
    int32_t value = 0;
    for (; width && is_digit(*p); ++p, --width) value = value * 10 + (*p - '0');
    *out = negative ? -value : value;
    *at = p;
    return true;
}

bool scan_unsigned(const char** at, uint32_t* out) {
    const char* p = skip_space(*at);
    bool negative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    if (!is_digit(*p)) return false;
    uint64_t value = 0;
    bool overflow = false;
    for (; is_digit(*p); ++p) {
        overflow |= __builtin_mul_overflow(value, 10u, &value);
        overflow |= __builtin_add_overflow(value, static_cast<unsigned>(*p - '0'), &value);
    }
    if (negative) value = 0 - value;
    if (overflow) value = UINT64_MAX;
    *out = static_cast<uint32_t>(value);
    *at = p;
    return true;
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
