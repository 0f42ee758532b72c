#include "sepa/account/account_check.h"

#include <cstring>

#include "sepa/account/method_codes.h"
#include "sepa/account/weighted_sum.h"

using namespace sepa_internal;

namespace {
struct slot_t {
    uint8_t code;
    method_fn method;
};
}  // namespace

#define SLOT(code) {0x##code, method_##code},
static constexpr slot_t slots[] = {SEPA_METHOD_CODES(SLOT)};
#undef SLOT

static constexpr std::array<method_fn, 256> fill_slots() {
    std::array<method_fn, 256> table{};
    for (const slot_t& s : slots) table[s.code] = s.method;
    return table;
}

static constexpr bool slots_ascend() {
    for (size_t i = 1; i < std::size(slots); ++i)
        if (slots[i - 1].code >= slots[i].code) return false;
    return true;
}
static_assert(std::size(slots) == SEPA_METHOD_COUNT, "SEPA_METHOD_COUNT is not the number of methods with a slot");
static_assert(slots_ascend(), "the methods of method_codes.h are out of order, or one stands twice");

constexpr std::array<method_fn, 256> method_table = fill_slots();

// Writes the account form of `account`; false if it is not 1 to 10 digits.
static bool build_form(char (&form)[account_length + 1], const char* account) {
    if (!account) return false;
    size_t length = strnlen(account, account_length + 1);
    if (length == 0 || length > account_length) return false;
    pad_account(form, account, length);
    form[account_length] = '\0';
    return is_account_form(form);
}

int account_check(const char* account, uint8_t method) {
    char form[account_length + 1];
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

[[gnu::hot]] int sepa_internal::check_form(const char* form, const char* bank_code, uint8_t method) {
    if (method_fn check = method_table[method]) return check(form);
    switch (method) {
        case 0x52: return method_52(form, bank_code);
        case 0x53: return method_53(form, bank_code);
        case 0xB6: return method_B6(form, bank_code);
        case 0xC0: return method_C0(form, bank_code);
        default: return 0;
    }
}

static bool asks_for_bank_code(uint8_t method) {
#define CASE(code) case 0x##code:
    switch (method) {
        SEPA_BANK_METHOD_CODES(CASE)
        return true;
        default: return false;
    }
#undef CASE
}

int account_check_bank(const char* account, const char* bank_code, uint8_t method) {
    char form[account_length + 1];
    if (!build_form(form, account)) return -1;
    if (!bank_code || strnlen(bank_code, bank_code_length + 1) != bank_code_length) return -1;
    if (asks_for_bank_code(method) && !is_bank_code(bank_code)) return -1;
    return check_form(form, bank_code, method);
}
