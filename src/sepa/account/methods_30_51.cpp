#include "sepa/account/account_check.h"
#include "sepa/account/weighted_sum.h"

using namespace sepa_internal;

int method_30(const char* form) { return check_sum(form, {mod10, 10, from(9, {2, 1, 2, 1, 0, 0, 0, 0, 2})}); }

// The remainder itself, over 11 minus the usual weights. The remainder 10 fails.
int method_31(const char* form) {
    return verdict(weighted_sum(form, from(9, {9, 8, 7, 6, 5, 4, 3, 2, 1})) % 11 == digit(form, 10));
}

int method_32(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})}); }
int method_33(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6})}); }
int method_34(const char* form) { return check_sum(form, {mod11_zero, 8, from(7, {2, 4, 8, 5, 10, 9, 7})}); }
int method_38(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 4, 8, 5, 10, 9})}); }
int method_40(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 4, 8, 5, 10, 9, 7, 3, 6})}); }

int method_41(const char* form) {
    if (digit(form, 4) == 9) return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1}));
    return method_00(form);
}

int method_42(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8, 9})}); }
int method_43(const char* form) { return check_sum(form, {mod10, 10, from(9, {1, 2, 3, 4, 5, 6, 7, 8, 9})}); }
int method_44(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 4, 8, 5, 10})}); }

int method_45(const char* form) {
    if (digit(form, 1) == 0 || digit(form, 5) == 1) return 0;
    if (digit(form, 1) == 4 && digit(form, 2) == 8) return 0;
    return method_00(form);
}

int method_46(const char* form) { return check_sum(form, {mod11_zero, 8, from(7, {2, 3, 4, 5, 6})}); }
int method_47(const char* form) { return check_sum(form, {mod11_zero, 9, from(8, {2, 3, 4, 5, 6})}); }
int method_48(const char* form) { return check_sum(form, {mod11_zero, 9, from(8, {2, 3, 4, 5, 6, 7})}); }
int method_49(const char* form) { return first_pass(form, {method_00, method_01}); }

// Numbers written without the three digits after the check digit stand three
// places further right.
int method_50(const char* form) {
    if (check_sum(form, {mod11_zero, 7, from(6, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    if (!digits_zero(form, 1, 3)) return -1;
    return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})});
}

int method_51(const char* form) {
    if (digit(form, 3) == 9) return check_third_nine(form);
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7})}) == 1) return 1;
    if (check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6})}) == 1) return 1;
    if (check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1})) == 1) return 1;
    return check_sum(form, {mod7, 10, from(9, {2, 3, 4, 5, 6})});
}
