// The rows of a CSV file behind its header line, quoted fields unquoted.
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
        if (line[i] == ',' && !quoted) {
            fields.emplace_back();
        } else if (line[i] != '"') {
            fields.back() += line[i];
        } else {
            if (!quoted && i && line[i - 1] == '"') fields.back() += '"';  // a doubled quote
            quoted = !quoted;
        }
    }
    return fields;
}

// `columns` is the header line that the test relies on; empty for any.
inline std::vector<csv_row> csv_rows(const std::string& path, const std::string& columns = "") {
    std::ifstream file(path);
    std::string line;
    EXPECT_TRUE(std::getline(file, line) && (columns.empty() || line == columns)) << path << ": " << line;
    std::vector<csv_row> rows;
    while (std::getline(file, line)) rows.push_back(csv_fields(line));
    EXPECT_FALSE(rows.empty()) << path;
    return rows;
}
