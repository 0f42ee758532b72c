// Reads the bank lists that a directory release is made of, and turns their
// rows into the entries of the directory. No file is touched here: the lists
// come as text, so that a test can bring its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// A list with the name that its faults are reported under.
struct list_text_t {
    std::string file;
    std::string content;
};

struct list_texts_t {
    list_text_t de, bic, at, ch;
};

struct entry_t {
    std::string key;
    std::string body;  // what follows the key, its last NUL included
};

// All entries, the four kinds one after the other, each ascending by key.
struct directory_t {
    std::vector<entry_t> entries;
    size_t bic_count, at_count, ch_count, de_count;
    int64_t switch_time;  // beginning of the later of two periods, or 0
};

// Reports the first fault of a list and does not return. The program that
// reads the lists brings it.
[[noreturn]] void stop(const std::string& file, size_t line, const std::string& reason);

// Reads all lists; a fault goes to stop. With `allow_bad_successors` a
// successor that is missing or leads in a circle is a warning on standard error.
directory_t read_directory(const list_texts_t& lists, bool allow_bad_successors);
