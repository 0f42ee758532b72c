#include "list_text.h"

#include <algorithm>

#include "sepa/text/ascii.h"
#include "sepa/text/utf8.h"

using namespace sepa_internal;

void check_characters(const row_t& row, const std::string& text) {
    for (size_t at = 0; at < text.size();) {
        size_t length = utf8_length(text.data() + at, text.size() - at);
        if (length == 0) stop(row, "invalid UTF-8");
        auto first = static_cast<unsigned char>(text[at]);
        bool c1_control = first == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0;
        if (first < 0x20 || first == 0x7F || c1_control) stop(row, "control character in a text");
        if (first == '|') stop(row, "vertical bar in a text");
        at += length;
    }
}

std::string trimmed(const std::string& text) {
    size_t from = text.find_first_not_of(' ');
    return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(' ') + 1 - from);
}

std::vector<std::string> split_lines(const list_text_t& text) {
    std::vector<std::string> lines;
    const std::string& content = text.content;
    for (size_t at = 0; at < content.size();) {
        size_t end = content.find('\n', at);
        if (end == std::string::npos) stop(text.file, lines.size() + 1, "the last line has no line end");
        lines.push_back(content.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

std::vector<std::string> split_fields(const std::string& file, size_t line, const std::string& text, char separator) {
    std::vector<std::string> fields;
    for (size_t at = 0;; ++at) {
        std::string field;
        if (at < text.size() && text[at] == '"') {
            for (at++;; ++at) {
                if (at >= text.size()) stop(file, line, "bad quoting: no closing quote");
                if (text[at] != '"') {
                    field += text[at];
                    continue;
                }
                if (at + 1 >= text.size() || text[at + 1] != '"') break;
                field += text[at++];
            }
            ++at;
            if (at < text.size() && text[at] != separator) {
                stop(file, line, "bad quoting: text behind the closing quote");
            }
        } else {
            for (; at < text.size() && text[at] != separator; ++at) {
                if (text[at] == '"') stop(file, line, "bad quoting: quote inside a field without quotes");
                field += text[at];
            }
        }
        fields.push_back(field);
        if (at >= text.size()) return fields;
    }
}

list_t read_list(const list_text_t& text, const std::string& header) {
    const std::string& file = text.file;
    size_t width = static_cast<size_t>(std::count(header.begin(), header.end(), ',')) + 1;
    std::vector<std::string> lines = split_lines(text);
    if (lines.empty() || lines[0] != header) stop(file, 1, "wrong header, expected " + header);
    list_t list{file, {}};
    for (size_t line = 2; line <= lines.size(); ++line) {
        list.rows.push_back({file, line, {}});
        check_characters(list.rows.back(), lines[line - 1]);
        list.rows.back().fields = split_fields(file, line, lines[line - 1], ',');
        if (list.rows.back().fields.size() != width) {
            stop(list.rows.back(), "wrong number of fields, expected " + std::to_string(width));
        }
    }
    return list;
}

bool is_digits(const std::string& text, size_t width) {
    return text.size() == width && std::all_of(text.begin(), text.end(), is_digit);
}

bool is_bic(const std::string& text) {
    return text.size() == 11 &&
           std::all_of(text.begin(), text.end(), [](char c) { return is_digit(c) || is_capital(c); });
}
