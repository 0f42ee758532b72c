// Classes of characters by their ASCII codes, whatever the process's locale.
#pragma once

namespace sepa_internal {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool is_letter(char c) { return is_capital(c) || (c >= 'a' && c <= 'z'); }

// As isspace of the "C" locale.
constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace sepa_internal
