// German account numbers and their check digits: the methods of the German
// central bank's catalogue, 00 to E4.
#pragma once

#include <cstdint>

// A check method takes the account form: exactly ten ASCII digits and a NUL,
// padded on the left with zeros. Results: 1 the number passes; -1 it fails;
// 0 the method makes no check for it; 2 (method 76 alone) it passes in the
// method's second reading.
using method_fn = int (*)(const char* form);

// One slot for each method code read as two hexadecimal digits (0x24 is
// method 24); null where the code has no method of its own. The slots of 52,
// 53, B6 and C0, which need the bank code, are empty too.
extern const method_fn method_table[256];

// Checks `account`, 1 to 10 digits, by the method of code `method`. Returns
// the method's result; 0 for a code without a method; -1 for a null, empty or
// over-long text and for one with a character other than 0 to 9.
int account_check(const char* account, uint8_t method);

// As account_check, and with `bank_code` (8 digits) also for the methods 52,
// 53, B6 and C0. A bank code that is not 8 characters long gives -1 for every
// method.
int account_check_bank(const char* account, const char* bank_code, uint8_t method);
