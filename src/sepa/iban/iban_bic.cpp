#include <cstring>

#include "sepa/directory/bank_codes.h"
#include "sepa/directory/bank_directory.h"
#include "sepa/iban/iban.h"

using namespace sepa_internal;

namespace {
// How long a country's IBAN is. The bank id begins with its fifth character.
struct bank_place_t {
    char country[3];
    char directory_country[3];
    size_t iban_length;
};
}  // namespace

static const bank_place_t bank_places[] = {
    {"AT", "AT", 20},
    {"CH", "CH", 21},
    {"LI", "CH", 21},
    {"DE", "DE", 22},
};

static const bank_place_t* find_place(const char* iban) {
    for (const bank_place_t& place : bank_places) {
        if (iban[0] == place.country[0] && iban[1] == place.country[1]) return &place;
    }
    return nullptr;
}

// The one BIC that a bank prescribes for its IBANs whatever the directory has
// for the bank code, or null.
static const char* prescribed_bic(const char* bank_code, int rule) {
    switch (rule / 100) {
        case 5:
            if (bank_code[3] != '4' || (bank_code[4] == '1' && bank_code[5] == '1')) return nullptr;
            return "COBADEFFXXX";
        case 14: return "DAAEDEDDXXX";
        default: return nullptr;
    }
}

static int german_bic(const char* bank_code, char* bic) {
    const bank_code_t* bank = find_bank_code(bank_code);
    if (!bank) return -3;
    const char* found = prescribed_bic(bank_code, bank->rule);
    memcpy(bic, found ? found : bank_code_bics[bank->bic], BIC_BUFFER_SIZE);
    return 1;
}

int IBAN_getBIC(const char* iban, char* bic) {
    memset(bic, 0, BIC_BUFFER_SIZE);
    if (!iban) return 0;
    const bank_place_t* place = find_place(iban);
    if (!place) return 0;
    if (strnlen(iban, place->iban_length + 1) != place->iban_length) return -1;
    if (place->country[0] == 'D') return german_bic(iban + 4, bic);
    char bank_id[6] = {};
    memcpy(bank_id, iban + 4, 5);
    bank_record_t record;
    if (!bank_lookup(place->directory_country, bank_id, &record)) return -3;
    memcpy(bic, record.bic, strnlen(record.bic, BIC_BUFFER_SIZE - 1));
    return 1;
}
