#include "sepa/text/amount.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "sepa/text/ascii.h"
#include "sepa/text/number_text.h"

using namespace sepa_internal;

// Mantissa digits that count, and the last nine of them.
static constexpr long max_digits = 18;
static constexpr uint64_t low_part = 1000000000;
static constexpr long max_exponent = 511;
static constexpr long exponent_ceiling = 1L << 40;  // keeps sums of exponents within a long

static double power_of_ten(long exponent) {
    static const double powers[] = {1e1, 1e2, 1e4, 1e8, 1e16, 1e32, 1e64, 1e128, 1e256};
    double result = 1.0;
    for (const double* power = powers; exponent; exponent >>= 1, ++power)
        if (exponent & 1) result *= *power;
    return result;
}

double parse_amount(const char* text, const char** end) {
    const char* at = text;
    while (is_space(*at)) ++at;
    bool negative = *at == '-';
    if (*at == '-' || *at == '+') ++at;

    uint64_t mantissa = 0;  // of the first max_digits digits
    long digits = 0, digits_before_point = -1;
    for (;; ++at) {
        if (is_digit(*at)) {
            if (digits++ < max_digits) mantissa = mantissa * 10 + static_cast<uint64_t>(*at - '0');
        } else if (*at == '.' && digits_before_point < 0) {
            digits_before_point = digits;
        } else {
            break;
        }
    }
    if (!digits) {
        if (end) *end = text;
        return negative ? -0.0 : 0.0;
    }
    if (digits_before_point < 0) digits_before_point = digits;

    long used = digits < max_digits ? digits : max_digits;
    // In two parts, each of which a double holds exactly.
    double value = static_cast<double>(mantissa / low_part) * 1.0e9 + static_cast<double>(mantissa % low_part);

    long exponent = digits_before_point - used;
    if (*at == 'E' || *at == 'e') {
        ++at;
        bool below = *at == '-';
        if (*at == '-' || *at == '+') ++at;
        long written = 0;
        for (; is_digit(*at); ++at)
            if (written < exponent_ceiling) written = written * 10 + (*at - '0');
        exponent += below ? -written : written;
    }
    long magnitude = exponent < 0 ? -exponent : exponent;
    if (magnitude > max_exponent) {
        magnitude = max_exponent;
        errno = ERANGE;
    }
    double power = power_of_ten(magnitude);
    value = exponent < 0 ? value / power : value * power;

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
