// Reads a CSV file for a test: the rows behind the header line, quoted fields
// unquoted. A file without rows is a failure of the test.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

using csv_row = std::vector<std::string>;

inline csv_row csv_fields(const std::string& line) {
    csv_row fields(1);
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

// `columns` is the header line that the test relies on; empty for any.
inline std::vector<csv_row> csv_rows(const std::string& path, const std::string& columns = "") {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    if (!columns.empty()) {
        EXPECT_EQ(line, columns) << path;
    }
    std::vector<csv_row> rows;
    while (std::getline(file, line)) rows.push_back(csv_fields(line));
    EXPECT_FALSE(rows.empty()) << path;
    return rows;
}
