#include "sepa/iban/iban_german.h"

#include "sepa/account/account_form.h"
#include "sepa/directory/bank_codes.h"
#include "sepa/text/mod97.h"

namespace sepa_internal {

// The number is bank code, account, the letters as 1314, and the check digits.
static constexpr uint64_t bank_code_weight = mod97_of_power(10 + 4 + 2);
static constexpr uint64_t account_weight = mod97_of_power(4 + 2);
static constexpr uint64_t letters = 1314 * 100;

[[gnu::hot]] int german_remainder(const char* iban) {
    const char* bank_code = iban + mod97_head_length;
    const char* form = bank_code + bank_code_length;
    if (!is_digit(iban[2]) || !is_digit(iban[3]) || !is_bank_code(bank_code) || !is_account_form(form)) return -1;
    uint64_t sum = word_value(load_word(bank_code)) * bank_code_weight + value(form) * account_weight + letters;
    sum += static_cast<uint64_t>((iban[2] - '0') * 10 + iban[3] - '0');
    return static_cast<int>(sum % 97);
}

[[gnu::hot]] const char* iban_german_fault(const char* iban) {
    const char* digits = iban + mod97_head_length;
    const bank_code_t* bank = find_bank_code(digits);
    if (!bank) return "Invalid bank ID (BLZ) in IBAN";
    // 0, no verdict, and 2, passed in a second reading, are good.
    if (check_form(digits + bank_code_length, digits, bank->method) == -1) return "Invalid account number in IBAN";
    return nullptr;
}

}  // namespace sepa_internal
