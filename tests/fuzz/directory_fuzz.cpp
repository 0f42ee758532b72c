// The lookups of the directory: what is found is what was asked for.
// Input: country and key, one a line; the key is asked of all of them.
#include "directory/directory_tables.h"
#include "statement/mt940.h"
#include "tests/fuzz/fuzz.h"
#include "tests/unit/iban_reading.h"

namespace {

void check_record(const bank_record_t& record) {
    for (const char* text :
         {record.bic, record.name, record.postal_code, record.city, record.country, record.successor})
        expect(!text || strlen(text) < BANK_TEXT_SIZE, "a text of the record");
}

void check_bic(const char* key) {
    bank_record_t record;
    bank_info_t* info = nullptr;
    bool found = bic_lookup(key, &record) == 1;
    expect(bank_info_get(key, &info) == (found ? 1 : -2), "both lookups find a BIC");
    if (!found) return;
    check_record(record);
    std::string bic = key;
    for (char& c : bic) c = capital(c);
    if (bic.size() == 8) bic += "XXX";
    expect(record.bic == bic && info->bic == bic, "another BIC was found");
    expect(info->flags == record.bank_flags && !strcmp(info->name, record.name), "the record's name and flags");
    expect(bic.compare(4, 2, record.country) == 0, "the country stands in the BIC");
    free(info);
}

}  // namespace

FUZZ_TARGET(directory) {
    input_t input(data, size);
    exact_text_t country(input.line()), key(input.rest());
    bank_record_t record;
    if (bank_lookup(country.get(), key.get(), &record) == 1) check_record(record);
    check_bic(key.get());
    expect(directory_hash(key.get()) < directory_count, "an index after the last entry");

    char bic[BIC_BUFFER_SIZE];
    memset(bic, 'x', sizeof bic);
    int result = IBAN_getBIC(key.get(), bic);
    expect(memchr(bic, 0, sizeof bic), "the BIC is a text");
    expect(result == 1 || !*bic, "no BIC without success");
    expect(result == 1 || result == 0 || result == -1 || result == -3, "a result that it does not have");
    if (*bic) expect(sepa_check_field(FIELD_BIC, bic) == 1, "a BIC of the directory");
}
