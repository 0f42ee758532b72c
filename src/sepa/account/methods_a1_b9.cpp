#include "sepa/account/account_check.h"
#include "sepa/account/weighted_sum.h"

using namespace sepa_internal;

int method_A1(const char* form) {
    bool ten_digits = digit(form, 1) != 0;
    if (!ten_digits && !eight_digits(form)) return -1;
    return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1, 2}));
}

int method_A2(const char* form) { return first_pass(form, {method_00, method_04}); }
int method_A3(const char* form) { return first_pass(form, {method_00, method_10}); }

int method_A4(const char* form) {
    if (nines_at_3_and_4(form)) {
        if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    } else {
        if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
        if (check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    }
    return method_93(form);
}

int method_A5(const char* form) {
    if (method_00(form) == 1) return 1;
    return digit(form, 1) == 9 ? -1 : method_10(form);
}

int method_A6(const char* form) { return digit(form, 2) == 8 ? method_00(form) : method_01(form); }
int method_A7(const char* form) { return first_pass(form, {method_00, method_03}); }

int method_A8(const char* form) {
    if (digit(form, 3) == 9) return check_third_nine(form);
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1}));
}

int method_A9(const char* form) { return first_pass(form, {method_01, method_06}); }

int method_B1(const char* form) { return first_pass(form, {method_05, method_01, method_00}); }
int method_B2(const char* form) { return digit(form, 1) >= 8 ? method_00(form) : method_02(form); }
int method_B3(const char* form) { return digit(form, 1) == 9 ? method_06(form) : method_32(form); }

int method_B5(const char* form) {
    if (method_05(form) == 1) return 1;
    return digit(form, 1) >= 8 ? -1 : method_00(form);
}

int method_B7(const char* form) {
    uint64_t v = value(form);
    if (in_range(v, 1000000, 5999999) || in_range(v, 700000000, 899999999)) return method_01(form);
    return 0;
}

int method_B8(const char* form) {
    if (method_20(form) == 1 || method_29(form) == 1) return 1;
    uint64_t v = value(form);
    return in_range(v, 5100000000, 5999999999) || in_range(v, 9010000000, 9109999999) ? 0 : -1;
}

// Numbers of seven and of eight digits alone, each with a sum of its own; the
// check digit may also stand five away from what the sum asks for.
int method_B9(const char* form) {
    if (!digits_zero(form, 1, 2) || digits_zero(form, 3, 4)) return -1;
    int sum = 0;
    if (digit(form, 3) != 0) {
        int position = 9;
        for (int weight : {1, 3, 2, 1, 3, 2, 1}) sum += weight * (digit(form, position--) + 1) % 11;
    } else {
        sum = weighted_sum(form, from(9, {1, 2, 3, 4, 5, 6})) % 11;
    }
    return verdict(sum % 10 == digit(form, 10) || (sum + 5) % 10 == digit(form, 10));
}
