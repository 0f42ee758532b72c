#include "published_lists.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "bank_lists.h"
#include "bank_master.h"
#include "sepa/text/utf8.h"

using namespace sepa_internal;

namespace {

using fields_t = std::vector<std::string>;
using widths_t = std::vector<size_t>;

constexpr size_t record_with_rule = 174;  // bytes of a German record that ends with the IBAN rule

// --------------------------------------------------------------- lines ----

std::string utf8_of(const std::string& latin1) {
    std::string text;
    for (char c : latin1) {
        auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) text += static_cast<char>(0xC0 | byte >> 6);
        text += byte >= 0x80 ? static_cast<char>(0x80 | (byte & 0x3F)) : c;
    }
    return text;
}

// The lines of a list, still in ISO-8859-1. What reads as UTF-8 is not: no name
// has a capital A with tilde before a fraction sign.
std::vector<std::string> published_lines(const list_text_t& text) {
    std::vector<std::string> lines = split_lines(text);
    if (lines.empty()) stop(text.file, 1, "the list is empty");
    for (size_t i = 0; i < lines.size(); ++i) {
        std::string& line = lines[i];
        if (!line.empty() && line.back() == '\r') line.pop_back();
        for (size_t at = 0; at < line.size(); ++at) {
            if (utf8_length(line.data() + at, line.size() - at) > 1)
                stop(text.file, i + 1, "UTF-8, expected ISO-8859-1");
        }
        check_characters({text.file, i + 1, {}}, utf8_of(line));
    }
    return lines;
}

// Fields as a release has them: UTF-8, without blanks around them.
row_t tidy_row(const std::string& file, size_t line, fields_t fields) {
    for (std::string& field : fields) field = utf8_of(trimmed(field));
    return {file, line, fields};
}

// All lines as rows of fixed columns.
std::vector<row_t> fixed_rows(const std::string& file, const std::vector<std::string>& lines, const widths_t& widths) {
    const size_t size = std::accumulate(widths.begin(), widths.end(), size_t{0});
    std::vector<row_t> rows;
    for (const std::string& line : lines) {
        size_t number = rows.size() + 1, at = 0;
        if (line.size() != size) {
            stop(file, number, "record of " + std::to_string(line.size()) + " bytes, expected " + std::to_string(size));
        }
        fields_t fields;
        for (size_t width : widths) fields.push_back(line.substr(at, width)), at += width;
        rows.push_back(tidy_row(file, number, fields));
    }
    return rows;
}

// The lines from index `first` on as rows of `width` columns.
std::vector<row_t> separated_rows(const std::string& file, const std::vector<std::string>& lines, size_t first,
                                  size_t width) {
    std::vector<row_t> rows;
    for (size_t i = first; i < lines.size(); ++i) {
        row_t row = tidy_row(file, i + 1, split_fields(file, i + 1, lines[i], ';'));
        if (row.fields.size() != width) stop(row, "wrong number of fields, expected " + std::to_string(width));
        rows.push_back(row);
    }
    return rows;
}

bool holds_all(const std::string& line, const fields_t& names) {
    return std::all_of(names.begin(), names.end(),
                       [&](const std::string& name) { return line.find(name) != std::string::npos; });
}

// Rows of the columns called `names`, in this order. Lines of notice stand
// before the header line that tells the names.
std::vector<row_t> named_rows(const list_text_t& text, const fields_t& names) {
    std::vector<std::string> lines = published_lines(text);
    size_t at = 0;
    while (at < lines.size() && !holds_all(lines[at], names)) at++;
    fields_t header = at < lines.size() ? split_fields(text.file, at + 1, lines[at], ';') : fields_t();
    std::vector<size_t> places;
    std::string wanted;
    for (const std::string& name : names) {
        places.push_back(static_cast<size_t>(std::find(header.begin(), header.end(), name) - header.begin()));
        wanted += (wanted.empty() ? "" : ";") + name;
    }
    if (*std::max_element(places.begin(), places.end()) == header.size()) {
        stop(text.file, at < lines.size() ? at + 1 : 1, "no header line with the columns " + wanted);
    }
    std::vector<row_t> rows = separated_rows(text.file, lines, at + 1, header.size());
    for (row_t& row : rows) {
        fields_t chosen;
        for (size_t place : places) chosen.push_back(row.fields[place]);
        row.fields = chosen;
    }
    return rows;
}

// --------------------------------------------------------------- fields ----

void check_digits(const row_t& row, size_t column, size_t width, const char* name) {
    if (!is_digits(row.fields[column], width)) {
        stop(row, std::string(name) + " is not " + std::to_string(width) + " digits");
    }
}

// Refuses a row whose `column` is none of the characters in `allowed`.
void check_marker(const row_t& row, size_t column, const std::string& allowed, const char* name) {
    const std::string& text = row.fields[column];
    if (text.size() != 1 || allowed.find(text) == std::string::npos) {
        stop(row, std::string(name) + " is none of the characters " + allowed);
    }
}

std::string padded(const std::string& id, size_t width) {
    return id.empty() || id.size() >= width ? id : std::string(width - id.size(), '0') + id;
}

std::string full_bic(const std::string& bic) { return bic.size() == 8 ? bic + "XXX" : bic; }

// A list of these rows, ascending by a column. What stands twice is one row.
list_t sorted_list(const std::string& file, std::vector<row_t> rows, size_t key, size_t name) {
    for (const row_t& row : rows) {
        if (row.fields[name].empty()) stop(row, "a bank without a name");
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [&](const row_t& a, const row_t& b) { return a.fields[key] < b.fields[key]; });
    auto same = [](const row_t& a, const row_t& b) { return a.fields == b.fields; };
    rows.erase(std::unique(rows.begin(), rows.end(), same), rows.end());
    return {file, rows};
}

}  // namespace

// ---------------------------------------------------------------- lists ----

list_t read_german_banks(const list_text_t& text, const std::string& valid_from) {
    enum {
        col_code,
        col_mark,
        col_name,
        col_postal_code,
        col_city,
        col_short,
        col_pan,
        col_bic,
        col_method,
        col_record,
        col_change,
        col_deletion,
        col_successor,
        col_rule
    };
    widths_t widths{8, 1, 58, 5, 35, 27, 5, 11, 2, 6, 1, 1, 8};
    std::vector<std::string> lines = published_lines(text);
    bool fixed = is_digits(lines[0].substr(0, widths[col_code]), widths[col_code]);
    bool has_rule = fixed && lines[0].size() == record_with_rule;
    if (has_rule) widths.push_back(6);
    std::vector<row_t> rows =
        fixed ? fixed_rows(text.file, lines, widths) : separated_rows(text.file, lines, 0, widths.size());
    if (!fixed) {
        if (is_digits(rows[0].fields[col_code], 8)) stop(rows[0], "a row in place of the names of the columns");
        rows.erase(rows.begin());
    }
    std::vector<row_t> banks;
    for (const row_t& row : rows) {
        const fields_t& fields = row.fields;
        check_digits(row, col_code, 8, "bank code");
        check_marker(row, col_mark, "12", "own-record marker");
        check_digits(row, col_record, 6, "record number");
        check_marker(row, col_change, "ADMU", "change marker");
        check_digits(row, col_successor, 8, "successor");
        if (fields[col_mark] != "1") continue;
        std::string rule;
        if (has_rule) {
            check_digits(row, col_rule, 6, "rule");
            rule = fields[col_rule] == "000000"
                       ? "0"
                       : fields[col_rule].substr(fields[col_rule].compare(0, 2, "00") == 0 ? 2 : 0);
        }
        std::string successor = fields[col_successor] == "00000000" ? "" : fields[col_successor];
        banks.push_back(
            {text.file,
             row.line,
             {valid_from, fields[col_code], fields[col_deletion], fields[col_method], rule, successor,
              full_bic(fields[col_bic]), fields[col_name], fields[col_postal_code], fields[col_city], "DE"}});
    }
    return sorted_list(text.file, banks, de_code, de_name);
}

list_t read_providers(const list_text_t& text) {
    std::map<std::string, row_t> banks;
    for (row_t& row : named_rows(text, {"BIC", "SERVICE SCT", "SERVICE COR", "SERVICE COR1", "SERVICE B2B", "Name"})) {
        row.fields[bics_bic] = full_bic(row.fields[bics_bic]);
        row_t& bank = banks.emplace(row.fields[bics_bic], row).first->second;
        for (size_t scheme : {bics_sct, bics_sdd, bics_cor1, bics_b2b}) {
            check_marker(row, scheme, "01", "service");
            bank.fields[scheme] = std::max(bank.fields[scheme], row.fields[scheme]);
        }
    }
    std::vector<row_t> rows;
    for (const auto& [bic, row] : banks) rows.push_back(row);
    return sorted_list(text.file, rows, bics_bic, bics_name);
}

list_t read_austrian_banks(const list_text_t& text) {
    std::vector<row_t> banks = named_rows(text, {"Bankleitzahl", "SWIFT-Code", "Bankenname", "PLZ", "Ort"});
    for (row_t& row : banks) {
        row.fields[national_id] = padded(row.fields[national_id], 5);
        row.fields[national_bic] = full_bic(row.fields[national_bic]);
        row.fields.push_back("AT");
    }
    return sorted_list(text.file, banks, national_id, national_name);
}

// Rows of the form that ended with 21 November 2025.
static std::vector<row_t> read_swiss_records(const list_text_t& text) {
    static const widths_t widths{2, 5, 4, 5, 6, 5, 1, 8, 1, 1, 1, 15, 60, 35, 35, 10, 35, 18, 18, 5, 2, 12, 14};
    enum {
        col_id = 1,
        col_branch = 2,
        col_name = 12,
        col_postal_code = 15,
        col_city = 16,
        col_country = 20,
        col_bic = 22
    };
    std::vector<row_t> banks;
    for (const row_t& row : fixed_rows(text.file, published_lines(text), widths)) {
        const fields_t& fields = row.fields;
        check_digits(row, col_branch, 4, "branch");
        if (fields[col_branch] != "0000") continue;
        banks.push_back({text.file,
                         row.line,
                         {padded(fields[col_id], 5), fields[col_bic], fields[col_name], fields[col_postal_code],
                          fields[col_city], fields[col_country]}});
    }
    return banks;
}

list_t read_swiss_banks(const list_text_t& text) {
    std::vector<row_t> banks = is_bank_master(text) ? read_bank_master(text) : read_swiss_records(text);
    for (row_t& row : banks) row.fields[national_bic] = full_bic(row.fields[national_bic]);
    return sorted_list(text.file, banks, national_id, national_name);
}
