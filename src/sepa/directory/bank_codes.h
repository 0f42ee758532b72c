// The German bank codes and the BICs in tables of their own, for the calls of
// which a payroll makes one a payment. They are made by tools/cell_tables.cpp
// and say what the directory's entries say.
//
// An entry answers everything and is found by the hash of its key, which reads
// 33 numbers from tables of 64 KB, and then by cutting its texts. Here a bank code
// is a number and a row has 16 bytes, found by one multiplication: a check of an
// IBAN takes a third of the time. A BIC is two words, found the same way through
// indices of 16 bits.
#pragma once

#include <cstdint>

#include "sepa/text/words.h"

namespace sepa_internal {

// One German bank code in one period. `bic`, `successor` and `later` are indices
// of the tables below, in which 0 stands for none.
struct bank_code_t {
    uint32_t code;       // the eight digits as a number, or no_bank_code
    uint16_t rule;       // IBAN rule number x 100 + version
    uint16_t bic;        // in bank_code_bics
    uint16_t successor;  // in bank_code_successors
    uint16_t later;      // in later_bank_codes: what holds from directory_switch_time on
    uint16_t entry;      // in directory_entries
    uint8_t method;      // account check method, 0x24 is method 24
};
static_assert(sizeof(bank_code_t) == 16);

// The code of a free cell.
constexpr uint32_t no_bank_code = UINT32_MAX;

// The cell in which a search begins: the upper bits of a product. It goes on to
// the next cells up to a free one; the last cell is free. Of 20,000 random
// numbers this one finds a bank code in 1.3 cells on average and 9 at most. (The
// golden ratio, which is often taken, has 1.5 and 21, for bank codes are no
// random numbers.)
template <int bits>
constexpr size_t first_cell(uint64_t key) {
    return static_cast<size_t>(key * 0xDF8236D5F1BD191D >> (64 - bits));
}

// Twice as many cells as Germany has bank codes, and more; the same for BICs.
constexpr int bank_code_bits = 13;
constexpr int bic_bits = 14;

extern const bank_code_t bank_codes[];
extern const bank_code_t later_bank_codes[];
extern const char bank_code_bics[][12];
extern const char bank_code_successors[][9];

// What holds now for the bank code of eight characters at `digits`, or null.
const bank_code_t* find_bank_code(const char* digits);

// The BICs: cells with the index of an entry each, or no_entry.
constexpr uint16_t no_entry = UINT16_MAX;
extern const uint16_t bic_cells[];

// A BIC of 11 characters, as the words of its first and of its last eight.
struct bic_words_t {
    uint64_t first, last;
};

inline bic_words_t bic_words(const char* bic) { return {load_word(bic), load_word(bic + 3)}; }

// What is multiplied: the last word has three characters that the first has not.
inline uint64_t bic_key(bic_words_t bic) { return bic.first ^ (bic.last >> 40 << 20); }

// Index of the entry of a BIC of capital letters and digits, or -1.
int32_t find_bic(bic_words_t bic);

}  // namespace sepa_internal
