#include "sepa/account/account_check.h"
#include "sepa/account/weighted_sum.h"

using namespace sepa_internal;

// Remainder 1 asks for a 1.
int method_71(const char* form) {
    int r = weighted_sum(form, from(7, {1, 2, 3, 4, 5, 6})) % 11;
    int asked = r < 2 ? r : 11 - r;
    return verdict(asked == digit(form, 10));
}

int method_73(const char* form) {
    if (digit(form, 3) == 9) return check_third_nine(form);
    if (check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1})) == 1) return 1;
    if (check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2})) == 1) return 1;
    return check_cross_sum(form, 7, 10, from(9, {2, 1, 2, 1, 2}));
}

// A six-digit number may also fill up to the next number that ends in 5.
int method_74(const char* form) {
    if (method_00(form) == 1) return 1;
    bool six_digits = digits_zero(form, 1, 4) && digit(form, 5) != 0;
    int sum = sum_of_cross_sums(form, from(9, {2, 1, 2, 1, 2}));
    if (six_digits && (15 - sum % 10) % 10 == digit(form, 10)) return 1;
    return check_mod11(form, 7, 2, 3, 4);
}

int method_75(const char* form) {
    if (digit(form, 1) != 0) return -1;
    if (digits_zero(form, 2, 3)) return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2}));
    if (digit(form, 2) == 9) return check_cross_sum(form, 10, 8, from(7, {2, 1, 2, 1, 2}));
    return check_cross_sum(form, 10, 7, from(6, {2, 1, 2, 1, 2}));
}

// First digits that stand for no kind of account in method 76.
static bool no_account_kind(int first_digit) {
    return first_digit == 1 || first_digit == 2 || first_digit == 3 || first_digit == 5;
}

// The remainder itself is the check digit, and remainder 10 cannot be checked.
// The second reading takes the number as written without the two digits that
// follow the check digit.
int method_76(const char* form) {
    if (no_account_kind(digit(form, 1)) || digits_zero(form, 2, 4)) return -1;
    int r = weighted_sum(form, from(7, {2, 3, 4, 5, 6, 7})) % 11;
    if (r == 10) return 0;
    if (r == digit(form, 8)) return 1;

    if (!digits_zero(form, 1, 2)) return -1;
    if (no_account_kind(digit(form, 3)) || digits_zero(form, 4, 6)) return -1;
    r = weighted_sum(form, from(9, {2, 3, 4, 5, 6, 7})) % 11;
    if (r == 10) return 0;
    return r == digit(form, 10) ? 2 : -1;
}

int method_78(const char* form) { return eight_digits(form) ? 0 : method_00(form); }
int method_81(const char* form) { return digit(form, 3) == 9 ? check_third_nine(form) : method_32(form); }

int method_84(const char* form) {
    if (digit(form, 3) == 9) return check_third_nine(form);
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    if (check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    return check_sum(form, {mod10, 10, from(9, {2, 1, 2, 1, 2})});
}

int method_85(const char* form) {
    if (nines_at_3_and_4(form)) return check_mod11(form, 7, 8, 0, 0);
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    return check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6})});
}

// Walks the digits from position 4 to 9, leading zeros left out, adding and
// subtracting in turn. A replaced digit above 5 turns the turn around.
static bool alternating_walk_passes(const char* form) {
    static constexpr int replaced[10] = {5, 6, 2, 3, 4, 10, 1, 7, 8, 9};
    static constexpr int asked_digits[2][5] = {{0, 4, 3, 2, 6}, {7, 1, 5, 9, 8}};

    int position = 4;
    while (position < 10 && digit(form, position) == 0) ++position;
    int odd = position % 2, turned = 0, sum = 0;
    for (; position <= 9; ++position) {
        int v = replaced[digit(form, position)];
        int change = !odd && v > 5 ? 12 - v : v;
        sum += odd == turned ? change : -change;
        if (v > 5) turned = !turned;
        odd = !odd;
    }
    int asked = asked_digits[turned][(sum % 5 + 5) % 5];
    if (asked == digit(form, 10)) return true;
    return digit(form, 4) == 0 && (asked + 5) % 10 == digit(form, 10);
}

int method_87(const char* form) {
    if (!is_account_form(form)) return -1;
    if (digit(form, 3) == 9) return check_third_nine(form);
    if (alternating_walk_passes(form) || method_33(form) == 1) return 1;
    if (check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})});
}

int method_88(const char* form) {
    if (digit(form, 3) == 9) return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8})});
    return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})});
}

int method_90(const char* form) {
    if (digit(form, 3) == 9) return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8})});
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    if (check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    if (check_sum(form, {mod9, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    if (check_sum(form, {mod10, 10, from(9, {2, 1, 2, 1, 2})}) == 1) return 1;
    return check_sum(form, {mod7, 10, from(9, {2, 1, 2, 1, 2, 1})});
}

int method_91(const char* form) {
    if (check_sum(form, {mod11_zero, 7, from(6, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    if (check_sum(form, {mod11_zero, 7, from(6, {7, 6, 5, 4, 3, 2})}) == 1) return 1;
    if (check_sum(form, {mod11_zero, 7, from(10, {2, 3, 4, 0, 5, 6, 7, 8, 9, 10})}) == 1) return 1;
    return check_sum(form, {mod11_zero, 7, from(6, {2, 4, 8, 5, 10, 9})});
}

int method_92(const char* form) { return check_sum(form, {mod10, 10, from(9, {3, 7, 1, 3, 7, 1})}); }

// Numbers of up to six digits have their check digit at the end, longer ones
// four places before it.
int method_93(const char* form) {
    if (digits_zero(form, 1, 4)) {
        if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
        return check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6})});
    }
    if (check_sum(form, {mod11_zero, 6, from(5, {2, 3, 4, 5, 6})}) == 1) return 1;
    return check_sum(form, {mod7, 6, from(5, {2, 3, 4, 5, 6})});
}

int method_94(const char* form) { return check_cross_sum(form, 10, 10, from(9, {1, 2, 1, 2, 1, 2, 1, 2, 1})); }

// Numbers in these ranges pass unchecked.
int method_95(const char* form) {
    uint64_t v = value(form);
    if (in_range(v, 1, 1999999)) return 1;
    if (in_range(v, 9000000, 25999999)) return 1;
    if (in_range(v, 396000000, 499999999)) return 1;
    if (in_range(v, 700000000, 799999999)) return 1;
    if (in_range(v, 910000000, 989999999)) return 1;
    return method_06(form);
}

int method_96(const char* form) {
    if (method_19(form) == 1 || method_00(form) == 1) return 1;
    return in_range(value(form), 1300000, 99399999) ? 0 : -1;
}

int method_98(const char* form) {
    if (check_sum(form, {mod10, 10, from(9, {3, 1, 7, 3, 1, 7, 3})}) == 1) return 1;
    return method_32(form);
}

int method_99(const char* form) { return in_range(value(form), 396000000, 499999999) ? 0 : method_06(form); }
