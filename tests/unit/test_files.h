// What the tests read: whole files, rows of CSV, texts with escapes, digests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

inline std::string read_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// FNV-1a, of a text or of what follows a text with the digest `hash`.
inline uint64_t fnv1a(const std::string& text, uint64_t hash = 14695981039346656037u) {
    for (char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return hash;
}

// Resolves {70}, 70 letters, and \xC3, \n, \r, \t and a doubled backslash.
inline std::string unescaped(const std::string& text) {
    std::string plain;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '{') {
            plain += std::string(std::stoul(text.substr(at + 1)), 'x');
            at = text.find('}', at);
        } else if (text[at] != '\\') {
            plain += text[at];
        } else if (text[++at] == 'x') {
            plain += static_cast<char>(std::stoul(text.substr(at + 1, 2), nullptr, 16));
            at += 2;
        } else {
            plain += text[at] == 'n' ? '\n' : text[at] == 'r' ? '\r' : text[at] == 't' ? '\t' : text[at];
        }
    }
    return plain;
}

inline const char* or_null(const std::string& text) { return text == "(null)" ? nullptr : text.c_str(); }

using csv_row = std::vector<std::string>;

// Quoted fields are unquoted.
inline csv_row csv_fields(const std::string& line) {
    csv_row fields(1);
    bool quoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
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

// The rows after the header line. `columns` is the header line that the test relies on; empty for any.
inline std::vector<csv_row> csv_rows(const std::string& path, const std::string& columns = "") {
    std::ifstream file(path);
    std::string line;
    EXPECT_TRUE(std::getline(file, line) && (columns.empty() || line == columns)) << path << ": " << line;
    std::vector<csv_row> rows;
    while (std::getline(file, line)) rows.push_back(csv_fields(line));
    EXPECT_FALSE(rows.empty()) << path;
    return rows;
}
