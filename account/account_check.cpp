#include "account/account_check.h"

#include <cstring>

#include "account/weighted_sum.h"
#include "text/ascii.h"

using namespace sepa_internal;

namespace {
struct slot {
    uint8_t code;
    method_fn method;
};
}  // namespace

// clang-format off
#define SLOT(code) {0x##code, method_##code}
static constexpr slot slots[] = {
    SLOT(00), SLOT(01), SLOT(02), SLOT(03), SLOT(04), SLOT(05), SLOT(06), SLOT(07), SLOT(08), SLOT(09),
    SLOT(10), SLOT(11), SLOT(13), SLOT(14), SLOT(15), SLOT(16), SLOT(17), SLOT(18), SLOT(19),
    SLOT(20), SLOT(21), SLOT(22), SLOT(23), SLOT(24), SLOT(25), SLOT(26), SLOT(27), SLOT(28), SLOT(29),
    SLOT(30), SLOT(31), SLOT(32), SLOT(33), SLOT(34), SLOT(38),
    SLOT(40), SLOT(41), SLOT(42), SLOT(43), SLOT(44), SLOT(45), SLOT(46), SLOT(47), SLOT(48), SLOT(49),
    SLOT(50), SLOT(51), SLOT(55), SLOT(56), SLOT(57), SLOT(58), SLOT(59),
    SLOT(60), SLOT(61), SLOT(63), SLOT(64), SLOT(65), SLOT(66), SLOT(67), SLOT(68),
    SLOT(71), SLOT(73), SLOT(74), SLOT(75), SLOT(76), SLOT(78),
    SLOT(81), SLOT(84), SLOT(85), SLOT(87), SLOT(88),
    SLOT(90), SLOT(91), SLOT(92), SLOT(93), SLOT(94), SLOT(95), SLOT(96), SLOT(98), SLOT(99),
    SLOT(A1), SLOT(A2), SLOT(A3), SLOT(A4), SLOT(A5), SLOT(A6), SLOT(A7), SLOT(A8), SLOT(A9),
    SLOT(B1), SLOT(B2), SLOT(B3), SLOT(B5), SLOT(B7), SLOT(B8), SLOT(B9),
    SLOT(C1), SLOT(C2), SLOT(C3), SLOT(C4), SLOT(C5), SLOT(C6), SLOT(C7), SLOT(C8), SLOT(C9),
    SLOT(D0), SLOT(D1), SLOT(D2), SLOT(D3), SLOT(D4), SLOT(D5), SLOT(D6), SLOT(D7), SLOT(D8), SLOT(D9),
    SLOT(E0), SLOT(E1), SLOT(E2), SLOT(E3), SLOT(E4),
};
#undef SLOT
// clang-format on

static constexpr std::array<method_fn, 256> fill_slots() {
    std::array<method_fn, 256> table{};
    for (const slot& s : slots) table[s.code] = s.method;
    return table;
}

static constexpr bool slots_ascend() {
    for (size_t i = 1; i < std::size(slots); ++i)
        if (slots[i - 1].code >= slots[i].code) return false;
    return true;
}
static_assert(std::size(slots) == 120 && slots_ascend());

constexpr std::array<method_fn, 256> method_table = fill_slots();

static constexpr size_t form_length = 10;
static constexpr size_t bank_code_length = 8;

static bool all_digits(const char* text, size_t length) {
    for (size_t i = 0; i < length; ++i)
        if (!is_digit(text[i])) return false;
    return true;
}

// Writes the account form of `account`; false if it is not 1 to 10 digits.
static bool build_form(char (&form)[form_length + 1], const char* account) {
    if (!account) return false;
    size_t length = strnlen(account, form_length + 1);
    if (length == 0 || length > form_length || !all_digits(account, length)) return false;
    memset(form, '0', form_length - length);
    memcpy(form + form_length - length, account, length);
    form[form_length] = '\0';
    return true;
}

int account_check(const char* account, uint8_t method) {
    char form[form_length + 1];
    if (!build_form(form, account)) return -1;
    return method_table[method] ? method_table[method](form) : 0;
}

static int method_B6(const char* form, const char* bank_code) {
    bool plain = memcmp(form, "0269", 4) != 0 || digit(form, 5) == 0;
    return digit(form, 1) == 0 && plain ? method_53(form, bank_code) : method_20(form);
}

static int method_C0(const char* form, const char* bank_code) {
    if (eight_digits(form) && method_52(form, bank_code) == 1) return 1;
    return method_20(form);
}

int account_check_bank(const char* account, const char* bank_code, uint8_t method) {
    char form[form_length + 1];
    if (!build_form(form, account)) return -1;
    if (!bank_code || strnlen(bank_code, bank_code_length + 1) != bank_code_length) return -1;

    int (*check)(const char* form, const char* bank_code);
    switch (method) {
        case 0x52: check = method_52; break;
        case 0x53: check = method_53; break;
        case 0xB6: check = method_B6; break;
        case 0xC0: check = method_C0; break;
        default: return method_table[method] ? method_table[method](form) : 0;
    }
    return all_digits(bank_code, bank_code_length) ? check(form, bank_code) : -1;
}
