// The lookups of the directory: what is found is what was asked for.
// Input: country and key, one a line; the key is asked of all of them, and of
// the pattern of a BIC.
#include <regex.h>

#include "directory/bank_directory.h"
#include "directory/directory_tables.h"
#include "iban/iban.h"
#include "statement/mt940.h"
#include "tests/fuzz/fuzz.h"

namespace {

void check_text(const char* text) {
    if (text) expect(strlen(text) < BANK_TEXT_SIZE, "a text of the record");
}

void check_record(const bank_record_t& record) {
    for (const char* text :
         {record.bic, record.name, record.postal_code, record.city, record.country, record.successor})
        check_text(text);
}

std::string capitals(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return text;
}

void check_bic(const char* key) {
    bank_record_t record;
    bank_info_t* info = nullptr;
    bool found = bic_lookup(key, &record) == 1;
    expect(bank_info_get(key, &info) == (found ? 1 : -2), "both lookups find a BIC");
    if (!found) return;
    check_record(record);
    std::string bic = capitals(key);
    if (bic.size() == 8) bic += "XXX";
    expect(record.bic == bic && info->bic == bic, "another BIC was found");
    expect(info->flags == record.bank_flags && !strcmp(info->name, record.name), "the record's name and flags");
    expect(bic.compare(4, 2, record.country) == 0, "the country stands in the BIC");
    free(info);
}

void check_pattern(const char* key) {
    static regex_t regex;
    static bool compiled = regcomp(&regex, "^[A-Z]{6}[A-Z2-9][A-NP-Z0-9]([A-Z0-9]{3})?$", REG_EXTENDED) == 0;
    expect(compiled && sepa_check_field(FIELD_BIC, key) == (regexec(&regex, key, 0, nullptr, 0) == 0),
           "the pattern of a BIC");
}

void check_hash(const char* key) {
    int32_t index = directory_hash(key);
    expect(index < directory_count, "an index behind the last entry");
    size_t length = strlen(key);
    if (length < 6 || length > DIRECTORY_POSITIONS) expect(index < 0, "no entry has a key of this length");
}

}  // namespace

FUZZ_TARGET(directory) {
    input_t input(data, size);
    exact_text_t country(input.line()), key(input.rest());
    bank_record_t record;
    if (bank_lookup(country.get(), key.get(), &record) == 1) check_record(record);
    check_bic(key.get());
    check_hash(key.get());
    check_pattern(key.get());
    check_pattern(exact_text_t(capitals(key.get())).get());

    char bic[BIC_BUFFER_SIZE];
    memset(bic, 'x', sizeof bic);
    int result = IBAN_getBIC(key.get(), bic);
    expect(memchr(bic, 0, sizeof bic), "the BIC is a text");
    expect(result == 1 || !*bic, "no BIC without success");
    expect(result == 1 || result == 0 || result == -1 || result == -3, "a result that it does not have");
    if (*bic) expect(sepa_check_field(FIELD_BIC, bic) == 1, "a BIC of the directory");
}
