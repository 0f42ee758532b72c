// IBAN_convert on any texts, and on any account at the banks of the directory:
// results and status codes fit together, and what is made is an IBAN.
// Input: flags, bank number (two bytes), country, bank and account, one a line.
#include "account/account_check.h"
#include "directory/bank_directory.h"
#include "directory/directory_tables.h"
#include "iban/iban.h"
#include "text/mod97.h"
#include "tests/fuzz/fuzz.h"
#include "tests/unit/fixed_clock.h"

namespace {

// Flags of an input.
enum : unsigned { BANK_OF_DIRECTORY = 1, COUNTRY_DE = 2, AFTER_SWITCH = 4 };

std::string german_bank_code(unsigned number) {
    int32_t german = directory_bic_count + directory_at_count + directory_ch_count;
    const char* entry = directory_entries[german + static_cast<int32_t>(number) % directory_de_count];
    return std::string(entry + strlen("_DE"), 8);
}

bool fits_result(int result, int status) {
    std::string both = " " + std::to_string(result) + ":" + std::to_string(status) + " ";
    return strstr(
        " 1:0 1:1 1:13 1:15 0:0 0:1 0:11 0:13 -1:0 -1:1 -1:11 -1:12 -1:13 -1:15 -1:50 "
        "-3:0 -3:1 -3:10 -3:13 -3:15 ",
        both.c_str());
}

// An IBAN that differs from the arguments in nothing is judged alike by
// IBAN_check, unless a rule takes accounts that their method refuses.
void compare_with_check(const std::string& iban, const std::string& bank, const std::string& padded) {
    bank_record_t record;
    expect(bank_lookup("DE", bank.c_str(), &record) == 1, "a conversion of an unknown bank");
    int rule = record.rule / 100;
    if (rule == 41 || rule == 54 || rule == 56) return;  // these write whole IBANs and report nothing
    expect(iban.substr(4) == bank + padded, "nothing was reported, and the IBAN differs");
    if (account_check_bank(padded.c_str(), bank.c_str(), record.method) != -1)
        expect(IBAN_check(iban.c_str(), nullptr) == 1, "the IBAN fails its own check");
}

}  // namespace

FUZZ_TARGET(iban_convert) {
    input_t input(data, size);
    unsigned flags = input.byte();
    unsigned number = input.word();
    std::string country = input.line(), bank = input.line(), account = input.rest();
    if (flags & BANK_OF_DIRECTORY) bank = german_bank_code(number);
    if (flags & COUNTRY_DE) country = "DE";
    fixed_now = directory_switch_time - (flags & AFTER_SWITCH ? 0 : 1);
    bank = bank.c_str();
    account = account.c_str();

    exact_text_t country_text(country), bank_text(bank), account_text(account);
    char iban[IBAN_BUFFER_SIZE];
    memset(iban, 'x', sizeof iban);
    int8_t status = 99;
    int result = IBAN_convert(country_text.get(), account_text.get(), bank_text.get(), iban, &status);
    expect(fits_result(result, status), "result and status do not fit together");
    expect(memchr(iban, 0, sizeof iban), "the IBAN is a text");
    expect(IBAN_convert(country_text.get(), account_text.get(), bank_text.get(), nullptr, nullptr) == result,
           "the out-parameters make no difference");
    if (result != 1) {
        expect(!*iban, "no IBAN without success");
        return;
    }
    expect(strlen(iban) == 22 && memcmp(iban, "DE", 2) == 0 && sepa_internal::mod97_of_digits(iban, 22) == 1, "what is made is no IBAN");
    if (status == 0) compare_with_check(iban, bank, std::string(10 - account.size(), '0') + account);
}
