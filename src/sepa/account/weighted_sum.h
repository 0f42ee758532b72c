// What the check methods are written in: lists of weights, and the rules that
// turn a sum into the digit it asks for.
#pragma once

#include "sepa/account/account_check.h"
#include "sepa/account/account_form.h"

namespace sepa_internal {

// One weight for each position, position 1 first.
struct weights_t {
    int at[10];
};

// Weights are listed from right to left, as they are published: the first one
// belongs to `position`, the next to the position left of it. Positions that
// the list does not reach have weight 0.
//
// This and the sums are inlined and unrolled by force, so that the compiler
// folds a method's weights into its code. With g++ a method of several sums
// takes half the time then.
template <int count>
[[gnu::always_inline]] constexpr weights_t from(int position, const int (&list)[count]) {
    weights_t result{};
    for (int i = 0; i < count && i < position; ++i) result.at[position - 1 - i] = list[i];
    return result;
}

// The sum of digit times weight.
[[gnu::always_inline]] inline int weighted_sum(const char* form, const weights_t& w) {
    int sum = 0;
#pragma GCC unroll 10
    for (int i = 0; i < 10; ++i) sum += (form[i] - '0') * w.at[i];
    return sum;
}

// The sum of the two decimal digits of a digit times a weight of 1 or 2.
inline int cross_sum(int product) { return product > 9 ? product - 9 : product; }

// The sum of the cross sums of digit times weight, for weights up to 2.
[[gnu::always_inline]] inline int sum_of_cross_sums(const char* form, const weights_t& w) {
    int sum = 0;
#pragma GCC unroll 10
    for (int i = 0; i < 10; ++i) sum += cross_sum((form[i] - '0') * w.at[i]);
    return sum;
}

// How a sum S asks for a check digit. With a plain modulus it is the distance
// from S to the next multiple; mod11_reject may thus ask for ten, which no
// digit is, and mod11_zero takes a zero in its place.
enum modulus_rule_t { mod7, mod9, mod10, mod11_reject, mod11_zero };

// Unsigned, for the cheaper division; no sum of digits is negative.
inline int distance(int sum, int modulus) {
    unsigned m = static_cast<unsigned>(modulus);
    return static_cast<int>((m - static_cast<unsigned>(sum) % m) % m);
}

[[gnu::always_inline]] inline int check_value(modulus_rule_t rule, int sum) {
    switch (rule) {
        case mod7: return distance(sum, 7);
        case mod9: return distance(sum, 9);
        case mod10: return distance(sum, 10);
        case mod11_reject: return distance(sum, 11);
        case mod11_zero: break;
    }
    int asked = distance(sum, 11);
    return asked == 10 ? 0 : asked;
}

inline int verdict(bool passes) { return passes ? 1 : -1; }

// One weighted sum with one rule: what most methods are made of.
struct sum_check_t {
    modulus_rule_t rule;
    int position;  // of the check digit
    weights_t w;
};

[[gnu::always_inline]] inline int check_sum(const char* form, const sum_check_t& check) {
    return verdict(check_value(check.rule, weighted_sum(form, check.w)) == digit(form, check.position));
}

// As the primitive of the same name, with its weights as a list.
[[gnu::always_inline]] inline int check_cross_sum(const char* form, int modulus, int position, const weights_t& w) {
    return verdict(distance(sum_of_cross_sums(form, w), modulus) == digit(form, position));
}

// Tries the methods in turn: 1 as soon as one passes, else what the last says.
template <int count>
inline int first_pass(const char* form, const method_fn (&methods)[count]) {
    for (int i = 0; i < count - 1; ++i)
        if (methods[i](form) == 1) return 1;
    return methods[count - 1](form);
}

}  // namespace sepa_internal
