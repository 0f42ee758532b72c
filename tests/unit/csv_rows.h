// Rows of a data file of tests/data, without its line of column names.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using csv_row = std::vector<std::string>;

// No quoting; a line that ends in a comma has an empty last field.
inline std::vector<csv_row> csv_rows(const std::string& name, const std::string& columns) {
    std::ifstream file(std::string(TEST_DATA) + "/" + name);
    std::string line;
    std::getline(file, line);
    EXPECT_EQ(line, columns) << name;
    std::vector<csv_row> rows;
    while (std::getline(file, line)) {
        std::istringstream fields(line + ",");
        csv_row row;
        for (std::string field; std::getline(fields, field, ',');) row.push_back(field);
        rows.push_back(row);
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}
