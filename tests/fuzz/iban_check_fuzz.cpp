// IBAN_check against regexec, digit-by-digit arithmetic and the stages of its
// German part, on the text as it is and with its check digits put right.
#include <regex.h>

#include "account/account_check.h"
#include "directory/bank_directory.h"
#include "iban/iban.h"
#include "tests/fuzz/fuzz.h"

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// Remainder by 97, or -1.
int remainder_of(const std::string& iban) {
    int remainder = 0;
    for (char c : iban.substr(4) + iban.substr(0, 4)) {
        if (!is_digit(c) && !is_letter(c)) return -1;
        std::string number = is_digit(c) ? std::string(1, c) : std::to_string(upper(c) - 'A' + 10);
        for (char digit : number) remainder = (remainder * 10 + digit - '0') % 97;
    }
    return remainder;
}

const char* german_reason(const std::string& iban) {
    bank_record_t bank;
    if (bank_lookup("DE", iban.substr(4, 8).c_str(), &bank) != 1) return "Invalid bank ID (BLZ) in IBAN";
    int check = account_check_bank(iban.substr(12).c_str(), iban.substr(4, 8).c_str(), bank.method);
    return check == -1 ? "Invalid account number in IBAN" : nullptr;
}

// Null for a good IBAN.
const char* reason_of(const std::string& iban) {
    const iban_country_t* country = nullptr;
    for (const iban_country_t& row : iban_countries) {
        if (!row.code || iban.size() < 2) break;
        if (upper(iban[0]) == row.code[0] && upper(iban[1]) == row.code[1]) country = &row;
    }
    if (!country) return "Invalid or unknown IBAN country code";
    if (iban.size() != country->length) return "Wrong IBAN length";
    if (regexec(&country->regex, iban.c_str(), 0, nullptr, 0) != 0) return "Invalid IBAN format";
    int remainder = remainder_of(iban);
    if (remainder < 0) return "Invalid character in IBAN";
    if (remainder != 1) return "Invalid IBAN checksum";
    return iban.compare(0, 2, "DE") == 0 ? german_reason(iban) : nullptr;
}

void compare(const std::string& iban) {
    exact_text_t text(iban);
    const char* before = "untouched";
    const char* reason = before;
    int result = IBAN_check(text.get(), &reason);
    const char* expected = reason_of(iban);
    expect(result == (expected ? 0 : 1), "the verdict is another");
    expect(strcmp(reason, expected ? expected : before) == 0, "the reason is another");
    expect(IBAN_check(text.get(), nullptr) == result, "the reason makes no difference");
}

}  // namespace

FUZZ_TARGET(iban_check) {
    std::string iban(reinterpret_cast<const char*>(data), strnlen(reinterpret_cast<const char*>(data), size));
    IBAN_check("", nullptr);  // compiles the patterns that the comparison uses
    compare(iban);
    if (iban.size() < 5) return;
    iban.replace(2, 2, "00");
    int remainder = remainder_of(iban);
    if (remainder < 0) return;
    iban[2] = static_cast<char>('0' + (98 - remainder) / 10);
    iban[3] = static_cast<char>('0' + (98 - remainder) % 10);
    compare(iban);
    for (char& c : iban) c = upper(c);
    compare(iban);
}
