// Numbers and amounts as texts that need no buffer of their user's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

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

// Cents as euro with a point and two decimals.
class cents_text_t : public number_text_t {
public:
    explicit cents_text_t(uint64_t cents);
};

// The cents of an amount, halves rounded away from zero: round(euro * 100)
// without a call. Meaningless beyond 64 bits.
inline int64_t cents_of(double euro) {
    double cents = euro * 100;
    auto whole = static_cast<int64_t>(cents);
    double rest = cents - static_cast<double>(whole);  // exact
    return whole + (rest >= 0.5) - (rest <= -0.5);
}

// An amount as sepa_format_amount writes it.
class amount_text_t : public cents_text_t {
public:
    explicit amount_text_t(double euro);
};

}  // namespace sepa_internal
