// ASCII characters by their codes. Nothing here asks the locale, which a
// script can change, and no byte above 127 is a letter, a digit or a space.
#pragma once

namespace sepa_internal {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool is_small(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool is_letter(char c) { return is_capital(c) || is_small(c); }

// A blank, or one of the five controls from tab to carriage return.
constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr char ascii_upper(char c) { return is_small(c) ? static_cast<char>(c - 'a' + 'A') : c; }

// 0 to 25 for a letter in either case, above that for anything else.
constexpr unsigned letter_index(char c) { return (static_cast<unsigned char>(c) | 0x20U) - unsigned{'a'}; }

}  // namespace sepa_internal
