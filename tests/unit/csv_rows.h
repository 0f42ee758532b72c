// Reads a CSV file for a test: the rows behind the header line, quoted fields
// unquoted. An unreadable file has no rows.
#pragma once

#include <fstream>
#include <string>
#include <vector>

using csv_row_t = std::vector<std::string>;

inline csv_row_t csv_fields(const std::string& line) {
    csv_row_t fields(1);
    bool quoted = false;
    for (size_t i = 0; i < line.size(); i++) {
        if (line[i] == '"' && quoted && i + 1 < line.size() && line[i + 1] == '"') {
            fields.back() += line[i++];
        } else if (line[i] == '"') {
            quoted = !quoted;
        } else if (line[i] == ',' && !quoted) {
            fields.emplace_back();
        } else {
            fields.back() += line[i];
        }
    }
    return fields;
}

inline std::vector<csv_row_t> csv_rows(const std::string& file) {
    std::ifstream in(file);
    std::vector<csv_row_t> rows;
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) rows.push_back(csv_fields(line));
    return rows;
}
