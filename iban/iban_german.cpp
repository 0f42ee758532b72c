#include "iban/iban_german.h"

#include <cstring>

#include "account/account_form.h"
#include "directory/bank_directory.h"

namespace sepa_internal {

const char* iban_german_fault(const char* iban) {
    const char* digits = iban + 4;
    char bank_code[bank_code_length + 1] = {};
    memcpy(bank_code, digits, bank_code_length);
    int method = bank_check_method(bank_code);
    if (method < 0) return "Invalid bank ID (BLZ) in IBAN";
    // 0, no verdict, and 2, passed in a second reading, are good.
    if (check_form(digits + bank_code_length, digits, static_cast<uint8_t>(method)) == -1)
        return "Invalid account number in IBAN";
    return nullptr;
}

}  // namespace sepa_internal
