#include <array>
#include <cstring>

#include "sepa/iban/iban.h"
#include "sepa/iban/iban_german.h"
#include "sepa/iban/iban_shape.h"
#include "sepa/text/ascii.h"
#include "sepa/text/mod97.h"

using namespace sepa_internal;

static constexpr const char* null_iban = "Invalid IBAN (NULL)";
static constexpr const char* unknown_country = "Invalid or unknown IBAN country code";
static constexpr const char* wrong_length = "Wrong IBAN length";
static constexpr const char* wrong_format = "Invalid IBAN format";
static constexpr const char* wrong_checksum = "Invalid IBAN checksum";

// clang-format off
constexpr std::array<iban_country_t, IBAN_COUNTRY_COUNT + 1> iban_countries = {{
    {"AT", "Austria", 20, "^AT[0-9]{18}$"},
    {"BE", "Belgium", 16, "^BE[0-9]{14}$"},
    {"BG", "Bulgaria", 22, "^BG[0-9]{2}[A-Z]{4}[0-9]{6}[A-Z0-9]{8}$"},
    {"HR", "Croatia", 21, "^HR[0-9]{19}$"},
    {"CY", "Cyprus", 28, "^CY[0-9]{10}[A-Z0-9]{16}$"},
    {"CZ", "Czech Republic", 24, "^CZ[0-9]{22}$"},
    {"DK", "Denmark", 18, "^DK[0-9]{16}$"},
    {"FO", "Denmark", 18, "^FO[0-9]{16}$"},
    {"GL", "Denmark", 18, "^GL[0-9]{16}$"},
    {"EE", "Estonia", 20, "^EE[0-9]{18}$"},
    {"FI", "Finland", 18, "^FI[0-9]{16}$"},
    {"FR", "France", 27, "^FR[0-9]{12}[A-Z0-9]{11}[0-9]{2}$"},
    {"DE", "Germany", 22, "^DE[0-9]{20}$"},
    {"GI", "Gibraltar", 23, "^GI[0-9]{2}[A-Z]{4}[A-Z0-9]{15}$"},
    {"GR", "Greece", 27, "^GR[0-9]{9}[A-Z0-9]{16}$"},
    {"HU", "Hungary", 28, "^HU[0-9]{26}$"},
    {"IS", "Iceland", 26, "^IS[0-9]{24}$"},
    {"IE", "Ireland", 22, "^IE[0-9]{2}[A-Z]{4}[0-9]{14}$"},
    {"IT", "Italy", 27, "^IT[0-9]{2}[A-Z]{1}[0-9]{10}[A-Z0-9]{12}$"},
    {"LV", "Latvia", 21, "^LV[0-9]{2}[A-Z]{4}[A-Z0-9]{13}$"},
    {"LI", "Liechtenstein", 21, "^LI[0-9]{7}[A-Z0-9]{12}$"},
    {"LT", "Lithuania", 20, "^LT[0-9]{18}$"},
    {"LU", "Luxembourg", 20, "^LU[0-9]{5}[A-Z0-9]{13}$"},
    {"MT", "Malta", 31, "^MT[0-9]{2}[A-Z]{4}[0-9]{5}[A-Z0-9]{18}$"},
    {"MC", "Monaco", 27, "^MC[0-9]{12}[A-Z0-9]{11}[0-9]{2}$"},
    {"NL", "The Netherlands", 18, "^NL[0-9]{2}[A-Z]{4}[0-9]{10}$"},
    {"NO", "Norway", 15, "^NO[0-9]{13}$"},
    {"PL", "Poland", 28, "^PL[0-9]{26}$"},
    {"PT", "Portugal", 25, "^PT[0-9]{23}$"},
    {"RO", "Romania", 24, "^RO[0-9]{2}[A-Z]{4}[A-Z0-9]{16}$"},
    {"SM", "San Marino", 27, "^SM[0-9]{2}[A-Z]{1}[0-9]{10}[A-Z0-9]{12}$"},
    {"SK", "Slovak Republic", 24, "^SK[0-9]{22}$"},
    {"SI", "Slovenia", 19, "^SI[0-9]{17}$"},
    {"ES", "Spain", 24, "^ES[0-9]{22}$"},
    {"SE", "Sweden", 24, "^SE[0-9]{22}$"},
    {"CH", "Switzerland", 21, "^CH[0-9]{7}[A-Z0-9]{12}$"},
    {"GB", "United Kingdom", 22, "^GB[0-9]{2}[A-Z]{4}[0-9]{14}$"},
}};
// clang-format on

static constexpr auto make_shapes() {
    std::array<iban_shape_t, IBAN_COUNTRY_COUNT> shapes{};
    for (size_t i = 0; i < shapes.size(); ++i) shapes[i] = shape_of_pattern(iban_countries[i].pattern);
    return shapes;
}
static constexpr auto shapes = make_shapes();

static constexpr bool table_is_sound() {
    for (size_t i = 0; i < IBAN_COUNTRY_COUNT; ++i) {
        const char* code = iban_countries[i].code;
        const char* pattern = iban_countries[i].pattern;
        if (pattern[0] != '^' || pattern[1] != code[0] || pattern[2] != code[1] || code[2]) return false;
        if (shapes[i].length != iban_countries[i].length) return false;
    }
    return !iban_countries[IBAN_COUNTRY_COUNT].code;
}
static_assert(table_is_sound(), "a pattern disagrees with its row's code or length");

// Row of each pair of letters, or -1.
static constexpr auto make_row_index() {
    std::array<int8_t, 26 * 26> index{};
    for (auto& row : index) row = -1;
    for (size_t i = 0; i < IBAN_COUNTRY_COUNT; ++i) {
        const char* code = iban_countries[i].code;
        index[letter_index(code[0]) * 26 + letter_index(code[1])] = static_cast<int8_t>(i);
    }
    return index;
}
static constexpr auto row_index = make_row_index();

// Row of the country code in either case, or -1.
static int find_row(const char* iban) {
    unsigned first = letter_index(iban[0]);
    if (first >= 26) return -1;
    unsigned second = letter_index(iban[1]);
    return second < 26 ? row_index[first * 26 + second] : -1;
}

static uint8_t class_of(char c) {
    if (is_digit(c)) return shape_digit;
    return is_capital(c) ? shape_letter : 0;
}

static bool code_matches(size_t row, const char* iban) {
    const char* code = iban_countries[row].code;
    return iban[0] == code[0] && iban[1] == code[1];
}

// Whether the characters after the country code are those of the row's pattern.
static bool rest_matches(size_t row, const char* iban) {
    for (size_t i = 2; i < shapes[row].length; ++i)
        if (!(shapes[row].classes[i] & class_of(iban[i]))) return false;
    return true;
}

// The remainder by 97 of an IBAN of the row's length, or -1 if it does not
// match the row's pattern.
static int remainder_of(size_t row, const char* iban) {
    if (!code_matches(row, iban)) return -1;
    if (shapes[row].only_digits) return mod97_of_digits(iban, shapes[row].length);
    return rest_matches(row, iban) ? mod97(iban, mod97_head_length, shapes[row].length) : -1;
}

static const char* fault_of(const char* iban) {
    int found = find_row(iban);
    if (found < 0) return unknown_country;
    auto row = static_cast<size_t>(found);
    size_t length = shapes[row].length;
    if (strnlen(iban, length + 1) != length) return wrong_length;
    int remainder = remainder_of(row, iban);
    if (remainder < 0) return wrong_format;
    return remainder == 1 ? nullptr : wrong_checksum;
}

// The same for an IBAN that begins with "DE", as most do: none of the tables of
// countries is read, and the numbers in it are looked up.
static const char* german_fault_of(const char* iban) {
    if (strnlen(iban, GERMAN_IBAN_LENGTH + 1) != GERMAN_IBAN_LENGTH) return wrong_length;
    int remainder = german_remainder(iban);
    if (remainder < 0) return wrong_format;
    return remainder == 1 ? iban_german_fault(iban) : wrong_checksum;
}

// What a check runs is marked as hot, so that it stands side by side and the first
// check of a process meets fewer pages.
[[gnu::hot]] int IBAN_check(const char* iban, const char** errmsg) {
    const char* fault = null_iban;
    if (iban) fault = iban[0] == 'D' && iban[1] == 'E' ? german_fault_of(iban) : fault_of(iban);
    if (fault && errmsg) *errmsg = fault;
    return !fault;
}
