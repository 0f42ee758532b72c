// German account numbers and their check digits: the methods 00 to E4.
#pragma once

#include <array>
#include <cstdint>

// A check method takes the account form: exactly ten ASCII digits and a NUL,
// padded on the left with zeros. Results: 1 the number passes; -1 it fails;
// 0 the method makes no check for it; 2 (method 76 alone) it passes in the
// method's second reading. Ten characters that are not all digits are no
// account form; methods that look digits up in a table give -1 then, others
// add up what stands there, and none reads outside its tables.
using check_method = int(const char* form);
using method_fn = check_method*;

// One slot for each method code read as two hexadecimal digits (0x24 is
// method 24); null where the code has no method of its own. The slots of 52,
// 53, B6 and C0, which need the bank code, are empty too.
extern const std::array<method_fn, 256> method_table;

// Checks `account`, 1 to 10 digits, by the method of code `method`. Returns
// the method's result; 0 for a code without a method; -1 for a null, empty or
// over-long text and for one with a character other than 0 to 9.
int account_check(const char* account, uint8_t method);

// As account_check, and with `bank_code` (8 digits) also for the methods 52,
// 53, B6 and C0. A bank code that is not 8 characters long gives -1 for every
// method, one with a character other than 0 to 9 for these four.
int account_check_bank(const char* account, const char* bank_code, uint8_t method);

// The primitives below take the account form and return 1 or -1. Positions
// count from 1 at the left to 10 at the right.

// Adds the products of digits and weights (0, 1 or 2; w10 belongs to the last
// digit), each reduced to the sum of its two digits. The digit at `position`
// must bring the sum to a multiple of `modulus`.
int check_cross_sum(const char* form, int modulus, int position, int w10, int w9, int w8, int w7, int w6, int w5,
                    int w4, int w3, int w2, int w1);

// Modulus 11 over the weights 2 3 4 5 6 from position 9 and the given ones for
// positions 4 to 1. A number that asks for the check digit ten fails.
int check_mod11(const char* form, int w4, int w3, int w2, int w1);

// Modulus 10 over replaced digits, by four rows of replacements in turn. -1 if
// there is any character but digits.
int check_digit_table(const char* form);

// The exception of several methods for numbers with a 9 at position 3: modulus
// 11 over the last eight digits, then over all ten.
int check_third_nine(const char* form);

// The methods by name.
check_method method_00, method_01, method_02, method_03, method_04, method_05, method_06, method_07, method_08,
    method_09, method_10, method_11, method_13, method_14, method_15, method_16, method_17, method_18, method_19,
    method_20, method_21, method_22, method_23, method_24, method_25, method_26, method_27, method_28, method_29;

check_method method_30, method_31, method_32, method_33, method_34, method_38, method_40, method_41, method_42,
    method_43, method_44, method_45, method_46, method_47, method_48, method_49, method_50, method_51;

// These two read the bank code too: eight ASCII digits and a NUL.
int method_52(const char* form, const char* bank_code);
int method_53(const char* form, const char* bank_code);

// Their common end. `work` has `n` ASCII digits, 6 to 12, made of bank code and
// account, as numbers once were: the sixth, the check digit's place, is 0.
// Returns 1 if `check_digit` belongs there, else -1.
int solve_check(const char* work, int n, int check_digit);

check_method method_55, method_56, method_57, method_58, method_59, method_60, method_61, method_63, method_64,
    method_65, method_66, method_67, method_68;

check_method method_71, method_73, method_74, method_75, method_76, method_78, method_81, method_84, method_85,
    method_87, method_88, method_90, method_91, method_92, method_93, method_94, method_95, method_96, method_98,
    method_99;

check_method method_A1, method_A2, method_A3, method_A4, method_A5, method_A6, method_A7, method_A8, method_A9,
    method_B1, method_B2, method_B3, method_B5, method_B7, method_B8, method_B9;

check_method method_C1, method_C2, method_C3, method_C4, method_C5, method_C6, method_C7, method_C8, method_C9,
    method_D0, method_D1, method_D2, method_D3, method_D4, method_D5, method_D6, method_D7, method_D8, method_D9,
    method_E0, method_E1, method_E2, method_E3, method_E4;
