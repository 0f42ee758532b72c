#include "sepa/account/account_check.h"
#include "sepa/account/weighted_sum.h"

using namespace sepa_internal;

int check_cross_sum(const char* form, int modulus, int position, int w10, int w9, int w8, int w7, int w6, int w5,
                    int w4, int w3, int w2, int w1) {
    int sum = 0;
    int next = 10;
    for (int weight : {w10, w9, w8, w7, w6, w5, w4, w3, w2, w1}) {
        int product = digit(form, next--) * weight;
        sum += product - 9 * (product / 10);
    }
    return verdict(distance(sum, modulus) == digit(form, position));
}

int check_mod11(const char* form, int w4, int w3, int w2, int w1) {
    return check_sum(form, {mod11_reject, 10, from(9, {2, 3, 4, 5, 6, w4, w3, w2, w1})});
}

// Replacements of the digits 0 to 9.
static constexpr int digit_rows[4][10] = {
    {0, 1, 5, 9, 3, 7, 4, 8, 2, 6},
    {0, 1, 7, 6, 9, 8, 3, 2, 5, 4},
    {0, 1, 8, 4, 6, 2, 9, 5, 7, 3},
    {0, 1, 2, 3, 4, 5, 6, 7, 8, 9},
};

// Each row holds each digit once, so that a single wrong digit is always found.
static constexpr bool rows_are_permutations() {
    for (const auto& row : digit_rows) {
        int seen = 0;
        for (int replacement : row) seen |= 1 << replacement;
        if (seen != (1 << 10) - 1) return false;
    }
    return true;
}
static_assert(rows_are_permutations());

int check_digit_table(const char* form) {
    if (!is_account_form(form)) return -1;
    int sum = 0;
    for (int position = 9; position >= 1; --position) sum += digit_rows[(9 - position) % 4][digit(form, position)];
    return verdict(check_value(mod10, sum) == digit(form, 10));
}

int check_third_nine(const char* form) {
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8})}) == 1) return 1;
    return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8, 9, 10})});
}
