// The country patterns, taken apart at compile time. Their grammar is small:
// "^", the country code, then [0-9], [A-Z] and [A-Z0-9], each with an optional
// {count}, then "$", so that every pattern has one fixed width. One outside
// that grammar does not compile. regexec says the same of every text in ten
// times the time, and would have to compile the patterns in every process.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace sepa_internal {

struct iban_shape_t {
    static constexpr size_t max_length = 34;    // of ISO 13616
    uint8_t length = 0;                         // characters of a matching IBAN
    bool only_digits = true;                    // after the country code
    std::array<uint8_t, max_length> classes{};  // a shape_class for each character
};

enum shape_class_t : uint8_t { shape_digit = 1, shape_letter = 2, shape_digit_or_letter = 3 };

constexpr iban_shape_t shape_of_pattern(const char* pattern) {
    iban_shape_t shape;
    const char* p = pattern + 3;  // "^" and the country code, which the table walk has compared
    shape.length = 2;
    while (*p == '[') {
        uint8_t kind = 0;
        for (++p; *p != ']'; p += 3) {
            if (p[0] == '0' && p[2] == '9') kind |= shape_digit;
            if (p[0] == 'A' && p[2] == 'Z') kind |= shape_letter;
        }
        unsigned count = 1;
        ++p;
        if (*p == '{') {
            count = 0;
            for (++p; *p != '}'; ++p) count = count * 10 + static_cast<unsigned>(*p - '0');
            ++p;
        }
        shape.only_digits &= kind == shape_digit;
        for (; count; --count) shape.classes[shape.length++] = kind;
    }
    if (p[0] != '$' || p[1]) shape.length = 0;
    return shape;
}

}  // namespace sepa_internal
