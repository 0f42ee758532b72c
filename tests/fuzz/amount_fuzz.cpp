// parse_amount, and the text of its result, against the grammar in plain words and the machine's own
// conversion, whose result it may miss by the last bits.
#include <cerrno>
#include <cmath>

#include "message/sepa.h"
#include "statement/mt940.h"
#include "tests/fuzz/fuzz.h"

namespace {

size_t digits_at(const std::string& text, size_t at) {
    size_t end = text.find_first_not_of("0123456789", at);
    return (end == std::string::npos ? text.size() : end) - at;
}

struct reading_t {
    size_t end = 0;          // bytes consumed
    std::string number;      // what strtod is asked, at most 18 digits of it
    long exponent_seen = 0;  // as used with the digits as an integer
};

// White space, sign, digits with one point, exponent.
reading_t read(const std::string& text) {
    reading_t reading;
    size_t at = text.find_first_not_of(" \t\n\v\f\r");
    if (at == std::string::npos) return reading;
    if (text[at] == '-' || text[at] == '+') reading.number = text[at++];
    size_t before = digits_at(text, at);
    std::string digits = text.substr(at, before);
    at += before;
    if (at < text.size() && text[at] == '.') {
        digits += text.substr(at + 1, digits_at(text, at + 1));
        at += 1 + digits_at(text, at + 1);
    }
    if (digits.empty()) return reading;
    double exponent = static_cast<double>(before) - static_cast<double>(digits.size() > 18 ? 18 : digits.size());
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        bool below = at < text.size() && text[at] == '-';
        if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
        double written = 0;
        for (size_t n = digits_at(text, at); n; --n, ++at) written = written * 10 + (text[at] - '0');
        exponent += below ? -written : written;
    }
    if (exponent > 1e6) exponent = 1e6;
    if (exponent < -1e6) exponent = -1e6;
    reading.exponent_seen = static_cast<long>(exponent);
    reading.number += digits.substr(0, 18) + "e" + std::to_string(reading.exponent_seen);
    reading.end = at;
    return reading;
}

bool close_enough(double value, double exact) {
    if (!std::isfinite(exact) || !std::isfinite(value)) return value == exact;
    return std::fabs(value - exact) <= std::fabs(exact) * 1e-13;
}

// The text of an amount, read as a number of cents.
void check_amount_text(double value) {
    double cents = round(value * 100);
    if (!(std::fabs(cents) < 9.2e18)) return;
    char text[128];
    sepa_format_amount(text, value);
    std::string digits = text;
    expect(digits.size() >= 4 && digits[digits.size() - 3] == '.', "an amount has two decimals");
    digits.erase(digits.size() - 3, 1);
    expect(digits.find_first_not_of("0123456789", 1) == std::string::npos, "an amount is a number");
    expect(strtoll(digits.c_str(), nullptr, 10) == static_cast<long long>(cents), "another amount is written");
}

}  // namespace

FUZZ_TARGET(amount) {
    exact_text_t text(input_t(data, size).rest().c_str());
    reading_t reading = read(text.get());
    const char* end = nullptr;
    errno = 0;
    double value = parse_amount(text.get(), &end);
    expect(end == text.get() + reading.end, "the number ends elsewhere");
    expect((errno == ERANGE) == (std::labs(reading.exponent_seen) > 511), "a clipped exponent is told, and no other");
    if (!reading.end) {
        expect(value == 0, "without digits the value is zero");
    } else if (std::labs(reading.exponent_seen) <= 290) {
        // Beyond, powers and quotients leave the normal doubles on the way.
        expect(close_enough(value, strtod(reading.number.c_str(), nullptr)), "the value is another");
        expect(std::signbit(value) == (reading.number[0] == '-'), "the sign is another");
    }
    double again = parse_amount(text.get(), nullptr);
    expect(memcmp(&value, &again, sizeof value) == 0, "asking for the end makes no difference");
    check_amount_text(value);
}
