#include "sepa/text/amount.h"

#include <algorithm>
#include <cerrno>
#include <cfloat>
#include <cstdint>
#include <cstring>

#include "sepa/text/ascii.h"
#include "sepa/text/number_text.h"

using namespace sepa_internal;

// Cents are counted and halves of them rounded in plain double steps.
static_assert(FLT_EVAL_METHOD == 0 || FLT_EVAL_METHOD == 1, "on x86 of 32 bits compile with -msse2 -mfpmath=sse");

// Mantissa digits that count, and the last nine of them.
static constexpr int64_t max_digits = 18;
static constexpr uint64_t low_part = 1000000000;
static constexpr int64_t max_exponent = 511;
static constexpr int64_t exponent_ceiling = int64_t{1} << 40;  // keeps sums of exponents within 64 bits

static bool take_minus(const char** at) {
    bool minus = **at == '-';
    if (minus || **at == '+') ++*at;
    return minus;
}

namespace {
// All counts are of digits, leading zeros included.
struct mantissa_t {
    uint64_t value = 0;  // of the first max_digits
    int64_t digits = 0, before_point = -1;
};
}  // namespace

static mantissa_t take_mantissa(const char** at) {
    mantissa_t mantissa;
    const char* p = *at;
    for (;; ++p) {
        if (is_digit(*p)) {
            if (mantissa.digits++ < max_digits) mantissa.value = mantissa.value * 10 + static_cast<uint64_t>(*p - '0');
        } else if (*p == '.' && mantissa.before_point < 0) {
            mantissa.before_point = mantissa.digits;
        } else {
            break;
        }
    }
    if (mantissa.before_point < 0) mantissa.before_point = mantissa.digits;
    *at = p;
    return mantissa;
}

// 0 if there is none. Digits need not follow its mark.
static int64_t take_exponent(const char** at) {
    if (**at != 'E' && **at != 'e') return 0;
    ++*at;
    bool below = take_minus(at);
    int64_t exponent = 0;
    for (; is_digit(**at); ++*at)
        if (exponent < exponent_ceiling) exponent = exponent * 10 + (**at - '0');
    return below ? -exponent : exponent;
}

static double power_of_ten(int64_t exponent) {
    static const double powers[] = {1e1, 1e2, 1e4, 1e8, 1e16, 1e32, 1e64, 1e128, 1e256};
    double result = 1.0;
    for (const double* power = powers; exponent; exponent >>= 1, ++power)
        if (exponent & 1) result *= *power;
    return result;
}

static double scaled(uint64_t mantissa, int64_t exponent) {
    // In two parts, each of which a double holds exactly.
    double value = static_cast<double>(mantissa / low_part) * 1.0e9 + static_cast<double>(mantissa % low_part);
    int64_t magnitude = exponent < 0 ? -exponent : exponent;
    if (magnitude > max_exponent) {
        magnitude = max_exponent;
        errno = ERANGE;
    }
    double power = power_of_ten(magnitude);
    return exponent < 0 ? value / power : value * power;
}

// No strtod: it follows the locale, takes "inf" and hexadecimal digits, and
// rounds once where these steps round twice, so that results would change.
double parse_amount(const char* text, const char** end) {
    const char* at = text;
    while (is_space(*at)) ++at;
    bool negative = take_minus(&at);
    mantissa_t mantissa = take_mantissa(&at);
    double value = 0;
    if (mantissa.digits) {
        value =
            scaled(mantissa.value, mantissa.before_point - std::min(mantissa.digits, max_digits) + take_exponent(&at));
    } else {
        at = text;
    }
    if (end) *end = at;
    return negative ? -value : value;
}

static constexpr char digit_pairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546474849"
    "5051525354555657585960616263646566676869707172737475767778798081828384858687888990919293949596979899";

static char* put_pair(char* end, uint64_t below_100) {
    return static_cast<char*>(memcpy(end - 2, digit_pairs + 2 * below_100, 2));
}

void sepa_internal::number_text_t::put(uint64_t value) {
    for (; value >= 100; value /= 100) start = put_pair(start, value % 100);
    start = put_pair(start, value);
    if (value < 10) ++start;
}

sepa_internal::cents_text_t::cents_text_t(uint64_t cents) {
    start = put_pair(start, cents % 100);
    *--start = '.';
    put(cents / 100);
}

static uint64_t magnitude(int64_t cents) {
    return cents < 0 ? 0 - static_cast<uint64_t>(cents) : static_cast<uint64_t>(cents);
}

sepa_internal::amount_text_t::amount_text_t(double euro) : cents_text_t(magnitude(cents_of(euro))) {
    if (cents_of(euro) < 0) *--start = '-';
}

void sepa_format_amount(char* out, double value) {
    amount_text_t amount(value);
    std::string_view text = amount.text();
    memcpy(out, text.data(), text.size());
    out[text.size()] = '\0';
}
