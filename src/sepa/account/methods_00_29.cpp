#include "sepa/account/account_check.h"
#include "sepa/account/weighted_sum.h"

using namespace sepa_internal;

int method_00(const char* form) { return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1, 2, 1, 2})); }
int method_01(const char* form) { return check_sum(form, {mod10, 10, from(9, {3, 7, 1, 3, 7, 1, 3, 7, 1})}); }
int method_02(const char* form) { return check_mod11(form, 7, 8, 9, 2); }
// The products themselves, where method 00 adds their cross sums.
int method_03(const char* form) { return check_sum(form, {mod10, 10, from(9, {2, 1, 2, 1, 2, 1, 2, 1, 2})}); }
int method_04(const char* form) { return check_mod11(form, 7, 2, 3, 4); }
int method_05(const char* form) { return check_sum(form, {mod10, 10, from(9, {7, 3, 1, 7, 3, 1, 7, 3, 1})}); }
int method_06(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 2, 3, 4})}); }
int method_07(const char* form) { return check_mod11(form, 7, 8, 9, 10); }
int method_08(const char* form) { return value(form) < 60000 ? 0 : method_00(form); }
int method_09(const char*) { return 0; }
int method_10(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8, 9, 10})}); }

int method_11(const char* form) {
    int r = weighted_sum(form, from(9, {2, 3, 4, 5, 6, 7, 8, 9, 10})) % 11;
    int asked = r == 0 ? 0 : r == 1 ? 9 : 11 - r;
    return verdict(asked == digit(form, 10));
}

// The six digits from position 2 with their check digit; numbers written
// without the two digits after it stand two places further right.
int method_13(const char* form) {
    if (check_cross_sum(form, 10, 8, from(7, {2, 1, 2, 1, 2, 1})) == 1) return 1;
    if (!digits_zero(form, 1, 2)) return -1;
    return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1}));
}

int method_14(const char* form) { return check_mod11(form, 7, 0, 0, 0); }
int method_15(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5})}); }

int method_16(const char* form) {
    int r = weighted_sum(form, from(9, {2, 3, 4, 5, 6, 7, 2, 3, 4})) % 11;
    int check_digit = digit(form, 10);
    if (r == 1) return verdict(check_digit == digit(form, 9) || check_digit == 0);
    return verdict((11 - r) % 11 == check_digit);
}

// Six zeros leave -1, which the remainder keeps: they ask for a 1.
int method_17(const char* form) {
    int r = (sum_of_cross_sums(form, from(7, {2, 1, 2, 1, 2, 1})) - 1) % 11;
    return verdict((10 - r) % 10 == digit(form, 8));
}

int method_18(const char* form) { return check_sum(form, {mod10, 10, from(9, {3, 9, 7, 1, 3, 9, 7, 1, 3})}); }
int method_19(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8, 9, 1})}); }
int method_20(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8, 9, 3})}); }

// A check digit 0 never passes: the cross sum left is below 10, and a 0 left
// by nine zeros would ask for ten.
int method_21(const char* form) {
    int sum = sum_of_cross_sums(form, from(9, {2, 1, 2, 1, 2, 1, 2, 1, 2}));
    while (sum > 9) sum = sum / 10 + sum % 10;
    return verdict(digit(form, 10) + sum == 10);
}

int method_22(const char* form) {
    int sum = 0;
    for (int position = 9; position >= 1; --position) {
        int weight = position % 2 ? 3 : 1;
        sum += digit(form, position) * weight % 10;
    }
    return verdict(check_value(mod10, sum) == digit(form, 10));
}

int method_23(const char* form) {
    int r = weighted_sum(form, from(6, {2, 3, 4, 5, 6, 7})) % 11;
    if (r == 1) return verdict(digit(form, 6) == digit(form, 7));
    return verdict((11 - r) % 11 == digit(form, 7));
}

// How many digits count depends on the first one; leading zeros never count.
int method_24(const char* form) {
    int a1 = digit(form, 1);
    int position = a1 >= 3 && a1 <= 6 ? 2 : a1 == 9 ? 4 : 1;
    while (position <= 9 && digit(form, position) == 0) ++position;
    int sum = 0;
    for (int weight = 1; position <= 9; ++position) {
        sum += (digit(form, position) + 1) * weight % 11;
        weight = weight % 3 + 1;
    }
    return verdict(sum % 10 == digit(form, 10));
}

int method_25(const char* form) {
    int r = weighted_sum(form, from(9, {2, 3, 4, 5, 6, 7, 8, 9})) % 11;
    int a2 = digit(form, 2);
    if (r == 1) return verdict(digit(form, 10) == 0 && a2 != 8 && a2 != 9);
    return verdict((11 - r) % 11 == digit(form, 10));
}

int method_26(const char* form) {
    if (digits_zero(form, 1, 2)) return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 2})});
    return check_sum(form, {mod11_zero, 8, from(7, {2, 3, 4, 5, 6, 7, 2})});
}

int method_27(const char* form) { return digit(form, 1) == 0 ? method_00(form) : check_digit_table(form); }
int method_28(const char* form) { return check_sum(form, {mod11_zero, 8, from(7, {2, 3, 4, 5, 6, 7, 8})}); }
int method_29(const char* form) { return check_digit_table(form); }
