#include "sepa/directory/bank_codes.h"

#include "sepa/directory/directory_tables.h"
#include "sepa/platform/clock.h"

namespace sepa_internal {

[[gnu::hot]] const bank_code_t* find_bank_code(const char* digits) {
    uint64_t word = load_word(digits);
    if (!word_is_digits(word)) return nullptr;
    uint32_t code = word_value(word);
    const bank_code_t* row = bank_codes + first_cell<bank_code_bits>(code);
    for (; row->code != code; ++row)
        if (row->code == no_bank_code) return nullptr;
    if (row->later == 0 || clock_now() < directory_switch_time) return row;
    return later_bank_codes + row->later;
}

int32_t find_bic(bic_words_t bic) {
    const uint16_t* cell = bic_cells + first_cell<bic_bits>(bic_key(bic));
    for (; *cell != no_entry; ++cell) {
        bic_words_t found = bic_words(directory_entries[*cell]);
        if (found.first == bic.first && found.last == bic.last) return *cell;
    }
    return -1;
}

}  // namespace sepa_internal
