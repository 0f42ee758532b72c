#include "sepa/text/scan.h"

#include "sepa/text/ascii.h"

namespace sepa_internal {

static const char* skip_space(const char* at) {
    while (is_space(*at)) ++at;
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

}  // namespace sepa_internal
