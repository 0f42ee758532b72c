// IBAN_check against a plainer reading, on the text as it is and with its
// check digits put right.
#include "tests/fuzz/fuzz.h"
#include "tests/unit/iban_reading.h"

static void compare(const std::string& iban) {
    exact_text_t text(iban);
    expect(reason_given(text.get(), expect) == reason_of(iban), "the verdict is another");
}

FUZZ_TARGET(iban_check) {
    std::string iban(reinterpret_cast<const char*>(data), strnlen(reinterpret_cast<const char*>(data), size));
    compare(iban);
    if (iban.size() < 5 || remainder_of(iban) < 0) return;
    iban = with_check_digits(iban);
    compare(iban);
    for (char& c : iban) c = capital(c);
    compare(iban);
}
