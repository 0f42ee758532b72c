// Lists as text: what every reader of bank lists needs to turn lines into rows
// and to name what is wrong with them. No file is touched here, so that a test
// can bring its own text.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// A list with the name that its faults are reported under.
struct list_text_t {
    std::string file;
    std::string content;
};

struct row_t {
    std::string file;
    size_t line;
    std::vector<std::string> fields;
    std::string entry = {};  // names the row where its line does not: a whole list can stand in one
};

struct list_t {
    std::string file;
    std::vector<row_t> rows;
};

// Reports the first fault of a list and does not return. The program that
// reads the lists brings it.
[[noreturn]] void stop(const std::string& file, size_t line, const std::string& reason);
[[noreturn]] inline void stop(const row_t& row, const std::string& reason) {
    stop(row.file, row.line, row.entry.empty() ? reason : row.entry + ": " + reason);
}

// Refuses what no field may hold: broken UTF-8, control characters, and the
// bar that separates the fields of an entry.
void check_characters(const row_t& row, const std::string& text);

// A text without the blanks around it.
std::string trimmed(const std::string& text);

// The lines of a text without their line ends; all of them have to have one.
std::vector<std::string> split_lines(const list_text_t& text);

// The fields of a line, quoted as RFC 4180 tells. A line is a row: a quoted
// line break is a quote that is not closed.
std::vector<std::string> split_fields(const std::string& file, size_t line, const std::string& text, char separator);

// Reads a list in the form of a release, whose first line is `header`.
list_t read_list(const list_text_t& text, const std::string& header);

bool is_digits(const std::string& text, size_t width);
bool is_bic(const std::string& text);  // 11 capital letters and digits
