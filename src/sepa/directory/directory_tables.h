// The generated tables of the directory, for its lookups and their tests. The
// tables themselves are in generated/directory_tables.inc, which
// bank_directory.cpp alone includes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "sepa/directory/bank_directory.h"

// Raised whenever the tables change their meaning or form: tables of another
// generator do not compile.
constexpr int32_t tables_format = 2;

extern const int32_t directory_count;  // entries; all four kinds, in the order of the next lines
extern const int32_t directory_bic_count;
extern const int32_t directory_at_count;
extern const int32_t directory_ch_count;
extern const int32_t directory_de_count;
extern const int32_t directory_cells;  // cells of directory_g

// From this second of the epoch on the second of two sub-records counts; 0 if
// the directory knows one period alone.
extern const int64_t directory_switch_time;

// An entry is a run of bytes: its key, what the lists have for it, and a NUL.
//
//     BIC of 11 characters   flags name
//     _AT or _CH, 5 digits   bic|name|postal code|city|country
//     _DE, 8 digits          a sub-record for each period, two at most, a bar between them:
//                            flag method rule rule successor|bic|name|postal code|city|country
//
// flags, flag, method and the two halves of rule, the high one first, are bytes
// of any value, a bar's and 0 too: they are found by their place and never
// searched. Texts are UTF-8 without a bar or a NUL and may be empty; those of
// one sub-record or entry, with their bars and a NUL, fit into BANK_TEXT_SIZE.

// Room for the name of a BIC's entry and its NUL: the record of one holds its BIC
// and country as well, a NUL after each.
constexpr size_t directory_name_size = BANK_TEXT_SIZE - (11 + 1) - (2 + 1);

// Shape of a key: characters '0' to 'z', at most 15 of them.
constexpr uint32_t directory_positions = 15;
constexpr uint32_t directory_characters = 75;
constexpr char directory_first_character = '0';

// Cells of the hash for so many keys, a little more than the 1.222 for each below
// which a random choice hardly ever works.
constexpr size_t directory_cells_of(size_t keys) { return (keys * 123 + 99) / 100; }

// The hash: a row of DIRECTORY_CHARACTERS random numbers for each position of
// a key, three times, and what is added up where they lead.
extern const uint32_t directory_t1[];
extern const uint32_t directory_t2[];
extern const uint32_t directory_t3[];
extern const int32_t directory_g[];  // -1 where no key leads

extern const uint32_t directory_offsets[];
extern const char directory_text[];

// The entries, by index; each ends where the next one begins, and the one at
// directory_count is the end of the last. One run of bytes and 32-bit offsets
// into it instead of an array of pointers: those would have to be relocated,
// ten thousand of them, whenever a process loads the module.
struct directory_entries_t {
    const char* operator[](int32_t index) const { return directory_text + directory_offsets[index]; }
};
constexpr directory_entries_t directory_entries;
