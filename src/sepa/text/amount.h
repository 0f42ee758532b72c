// Amounts as text: read, and written. Both know one decimal separator, the
// point, in every locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Converts decimal text to a double. White space and one sign may lead, an
// exponent may follow. At most 18 digits count. `end`, if not null, receives
// the first byte not consumed, or `text` itself if there was no digit, with
// the result 0.0. An exponent beyond 511 is clipped and sets errno to ERANGE.
double parse_amount(const char* text, const char** end);

// Writes `value`, euro, with a point and two decimals into `out`, a buffer of
// 128 bytes; halves of a cent round away from zero. Meaningless beyond
// 64 bits of cents.
void sepa_format_amount(char* out, double value);

namespace sepa_internal {

// The digits of a number, made without a locale, a format and memory.
class number_text_t {
public:
    explicit number_text_t(uint64_t value) { put(value); }
    std::string_view text() const { return {start, static_cast<size_t>(digits + sizeof digits - start)}; }

protected:
    number_text_t() = default;
    void put(uint64_t value);  // before what is there

    char digits[24];  // 64 bits take 20; a point and a sign
    char* start = digits + sizeof digits;
};

// An amount as sepa_format_amount writes it.
class amount_text_t : public number_text_t {
public:
    explicit amount_text_t(double euro);
};

}  // namespace sepa_internal
