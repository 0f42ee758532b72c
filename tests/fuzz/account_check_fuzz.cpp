// Both entry points over all 256 codes, with one account and one bank code.
// Input: bank code and account, one a line.
#include "account/account_check.h"
#include "tests/fuzz/fuzz.h"

static bool is_number(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

static bool is_possible(int result, unsigned code) {
    return (result >= -1 && result <= 1) || (result == 2 && code == 0x76);
}

FUZZ_TARGET(account_check) {
    input_t input(data, size);
    std::string bank = input.line().c_str(), account = input.rest().c_str();
    exact_text_t bank_text(bank), account_text(account);
    bool good_account = account.size() <= 10 && is_number(account);
    std::string padded = good_account ? std::string(10 - account.size(), '0') + account : account;

    for (unsigned value = 0; value < 256; ++value) {
        auto code = static_cast<uint8_t>(value);
        int alone = account_check(account_text.get(), code);
        int with_bank = account_check_bank(account_text.get(), bank_text.get(), code);
        expect(is_possible(alone, code) && is_possible(with_bank, code), "a result that no method has");
        if (!good_account) expect(alone == -1 && with_bank == -1, "no account number passes");
        if (bank.size() != 8) expect(with_bank == -1, "a bank code of another length fails");
        if (code == 0x52 || code == 0x53 || code == 0xB6 || code == 0xC0) {
            if (good_account) expect(alone == 0, "without a bank there is no verdict");
            if (!is_number(bank)) expect(with_bank == -1, "the bank code is needed");
        } else {
            if (bank.size() == 8) expect(with_bank == alone, "the bank makes no difference");
            if (good_account && !method_table[code]) expect(alone == 0, "a code without a method");
        }
        expect(account_check(padded.c_str(), code) == alone, "leading zeros make no difference");
        if (bank.size() == 8)
            expect(account_check_bank(padded.c_str(), bank.c_str(), code) == with_bank, "nor with a bank");
    }
}
