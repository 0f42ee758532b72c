#include <cstddef>
#include <cstdint>

#include "sepa/account/account_check.h"
#include "sepa/account/weighted_sum.h"
#include "sepa/text/ascii.h"

using namespace sepa_internal;

int method_C1(const char* form) {
    if (digit(form, 1) != 5) return method_17(form);
    int r = (sum_of_cross_sums(form, from(9, {1, 2, 1, 2, 1, 2, 1, 2})) + 4) % 11;
    return verdict((10 - r) % 10 == digit(form, 10));
}

int method_C2(const char* form) { return first_pass(form, {method_22, method_00, method_04}); }
int method_C3(const char* form) { return digit(form, 1) == 9 ? method_58(form) : method_00(form); }
int method_C4(const char* form) { return digit(form, 1) == 9 ? method_58(form) : method_15(form); }

int method_C5(const char* form) {
    uint64_t v = value(form);
    if (in_range(v, 100000, 899999)) return method_75(form);
    if (in_range(v, 100000000, 899999999)) return method_75(form);
    if (in_range(v, 1000000000, 1999999999)) return check_digit_table(form);
    if (in_range(v, 4000000000, 6999999999)) return check_digit_table(form);
    if (in_range(v, 9000000000, 9999999999)) return check_digit_table(form);
    if (in_range(v, 3000000000, 3999999999)) return method_00(form);
    if (in_range(v, 30000000, 59999999)) return 0;
    if (in_range(v, 7000000000, 7099999999)) return 0;
    if (in_range(v, 8500000000, 8599999999)) return 0;
    return -1;
}

// The first digit stands for seven digits before the next eight. Rows
// without a text are rejected.
static constexpr size_t prefix_length = 7;
using prefix_table_t = char[10][prefix_length + 1];

static constexpr prefix_table_t prefix_c6 = {"4451970", "4451981", "4451992", "4451993", "4344992",
                                             "4344990", "4344991", "5499570", "4451994", "5499579"};
static constexpr prefix_table_t prefix_d1 = {"4363380", "4363381", "4363382", "4363383", "4363384",
                                             "4363385", "4363386", "4363387", "",        "4363389"};
static constexpr prefix_table_t prefix_e2 = {"4383200", "4383201", "4383202", "4383203", "4383204", "4383205"};

static constexpr int full_rows(const prefix_table_t& table) {
    int full = 0;
    for (const auto& row : table) {
        size_t digits = 0;
        for (char c : row) digits += is_digit(c);
        if (digits != 0 && digits != prefix_length) return -1;
        full += digits == prefix_length;
    }
    return full;
}
static_assert(full_rows(prefix_c6) == 10 && full_rows(prefix_d1) == 9 && full_rows(prefix_e2) == 6);

static int check_prefixed(const char* form, const prefix_table_t& table) {
    if (!is_account_form(form)) return -1;
    const char* prefix = table[digit(form, 1)];
    if (!*prefix) return -1;
    int sum = sum_of_cross_sums(form, from(9, {2, 1, 2, 1, 2, 1, 2, 1}));
    for (size_t i = 0; i < prefix_length; ++i) sum += cross_sum((prefix[i] - '0') * (i % 2 ? 1 : 2));
    return verdict(check_value(mod10, sum) == digit(form, 10));
}

int method_C6(const char* form) { return check_prefixed(form, prefix_c6); }
int method_C7(const char* form) { return first_pass(form, {method_63, method_06}); }
int method_C8(const char* form) { return first_pass(form, {method_00, method_04, method_07}); }
int method_C9(const char* form) { return first_pass(form, {method_00, method_07}); }

int method_D0(const char* form) { return digit(form, 1) == 5 && digit(form, 2) == 7 ? 0 : method_20(form); }
int method_D1(const char* form) { return check_prefixed(form, prefix_d1); }
int method_D2(const char* form) { return first_pass(form, {method_95, method_00, method_68}); }

int method_D3(const char* form) {
    if (digit(form, 1) == 0) return method_00(form);
    return first_pass(form, {method_00, check_digit_table});
}

// The sum of method 00, which D4, D7 and E0 read in their own ways.
static int sum_of_method_00(const char* form) { return sum_of_cross_sums(form, from(9, {2, 1, 2, 1, 2, 1, 2, 1, 2})); }

int method_D4(const char* form) {
    if (digit(form, 1) == 0) return -1;
    return verdict(check_value(mod10, sum_of_method_00(form) + 29) == digit(form, 10));
}

int method_D5(const char* form) {
    if (nines_at_3_and_4(form)) return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8})});
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    if (check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    return check_sum(form, {mod10, 10, from(9, {2, 3, 4, 5, 6, 7})});
}

int method_D6(const char* form) { return first_pass(form, {method_07, method_03, method_00}); }
int method_D7(const char* form) { return verdict(sum_of_method_00(form) % 10 == digit(form, 10)); }

int method_D8(const char* form) {
    if (digit(form, 1) != 0) return method_00(form);
    return eight_digits(form) ? 0 : -1;
}

int method_D9(const char* form) { return first_pass(form, {method_00, method_10, method_18}); }

int method_E0(const char* form) { return verdict(check_value(mod10, sum_of_method_00(form) + 7) == digit(form, 10)); }

// Adds character codes, not digits: the weights add up to 51, each 48 times
// more. The remainder itself is the check digit; remainder 10 fails.
int method_E1(const char* form) {
    int sum = weighted_sum(form, from(9, {1, 2, 3, 4, 5, 6, 11, 10, 9})) + '0' * 51;
    return verdict(sum % 11 == digit(form, 10));
}

int method_E2(const char* form) { return check_prefixed(form, prefix_e2); }
int method_E3(const char* form) { return first_pass(form, {method_00, method_21}); }
int method_E4(const char* form) { return first_pass(form, {method_02, method_00}); }
