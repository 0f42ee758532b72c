// parse_amount against the machine's own conversion of what it has consumed,
// whose result it may miss by the last bits, and the text of its result.
#include <algorithm>
#include <cmath>

#include "message/sepa.h"
#include "statement/mt940.h"
#include "tests/fuzz/fuzz.h"

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool close_enough(double value, double exact) {
    // Beyond, powers and quotients leave the normal doubles on the way; zero
    // times infinity is no number.
    if (std::fabs(exact) > 1e280) return true;
    if (std::fabs(exact) < 1e-280) return !(std::fabs(value) > 1e-270);
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
    const char* end = nullptr;
    double value = parse_amount(text.get(), &end);
    expect(end >= text.get() && end <= text.get() + strlen(text.get()), "the number ends elsewhere");
    std::string number(text.get(), static_cast<size_t>(end - text.get()));
    auto exponent = std::find_if(number.begin(), number.end(), [](char c) { return c == 'e' || c == 'E'; });
    auto digits = std::count_if(number.begin(), exponent, is_digit);
    expect(number.empty() ? value == 0 : digits > 0, "without digits there is no number");
    expect(number.empty() || !is_digit(*end), "a number ends in front of a digit");
    // Of the digits in front of an exponent eighteen count, zeros among them.
    if (digits <= 18) expect(close_enough(value, strtod(number.c_str(), nullptr)), "the value is another");
    expect(!(value < 0) || number.find('-') != std::string::npos, "a minus out of nowhere");
    double again = parse_amount(text.get(), nullptr);
    expect(memcmp(&value, &again, sizeof value) == 0, "asking for the end makes no difference");
    check_amount_text(value);
}
