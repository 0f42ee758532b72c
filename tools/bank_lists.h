// The four bank lists that a directory release is made of, and the entries of
// the directory that their rows become.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "list_text.h"

// The header lines of the lists of a release, and the columns by name. The
// German list has one row for each bank code and period.
extern const char* const german_header;
extern const char* const national_header;  // Austria and Switzerland
extern const char* const bic_header;
enum { de_valid_from, de_code, de_flag, de_method, de_rule, de_successor, de_bic, de_name };
enum { national_id, national_bic, national_name };
enum { bics_bic, bics_sct, bics_sdd, bics_cor1, bics_b2b, bics_name };

struct list_texts_t {
    list_text_t de, bic, at, ch;
};

struct lists_t {
    list_t de, bic, at, ch;
};

struct entry_t {
    std::string key;
    std::string body;  // what follows the key, its last NUL included
};

// All entries, the four kinds one after the other, each ascending by key.
struct directory_t {
    std::vector<entry_t> entries;
    size_t bic_count, at_count, ch_count, de_count;
    size_t ended_de_count;  // bank codes that end with the earlier period, which are left out
    int64_t switch_time;    // beginning of the later of two periods, or 0
    // What may be right and still is worth a look, each "file:line: warning: ...".
    std::vector<std::string> warnings;
};

// Splits all lists into rows; a fault goes to stop.
lists_t read_lists(const list_texts_t& texts);

// Checks all rows, which may stand in any order; a fault goes to stop. With
// `allow_bad_successors` a successor may be missing or lead in a circle.
directory_t make_directory(const lists_t& lists, bool allow_bad_successors);
