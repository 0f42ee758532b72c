#include "cell_tables.h"

#include <map>

#include "files.h"
#include "sepa/directory/bank_codes.h"

using namespace sepa_internal;

namespace {

constexpr size_t free_cell = SIZE_MAX;

// The index of the key in each cell, or FREE. A key stands in its first cell or
// in the next one that was free; after the last one comes a free cell.
template <int bits>
std::vector<size_t> place(const std::vector<uint64_t>& keys) {
    std::vector<size_t> cells((size_t{1} << bits) + 1, free_cell);
    if (keys.size() > cells.size() * 3 / 4) stop("too many keys for cells of " + std::to_string(bits) + " bits");
    for (size_t key = 0; key < keys.size(); ++key) {
        size_t at = first_cell<bits>(keys[key]);
        while (cells[at] != free_cell) {
            if (++at + 1 == cells.size()) cells.push_back(free_cell);
        }
        cells[at] = key;
    }
    return cells;
}

// Texts of a row, by their index in a table whose first text is empty.
class texts_t {
public:
    uint16_t index_of(const std::string& text) {
        auto [place, is_new] = index_.insert({text, texts_.size()});
        if (is_new) texts_.push_back(text);
        if (texts_.size() > UINT16_MAX) stop("too many texts for indices of 16 bits");
        return static_cast<uint16_t>(place->second);
    }

    void write(FILE* out, const char* name, size_t size) const {
        fprintf(out, "const char sepa_internal::%s[%zu][%zu] = {\n", name, texts_.size(), size);
        for (const std::string& text : texts_) fprintf(out, "    \"%s\",\n", text.c_str());
        fprintf(out, "};\n\n");
    }

private:
    std::vector<std::string> texts_ = {""};
    std::map<std::string, size_t> index_ = {{"", 0}};
};

struct bank_code_texts_t {
    texts_t bics, successors;
};

// Reads the sub-record at `at` and moves it to the next one, or to the end.
bank_code_t read_sub_record(const entry_t& entry, size_t* at, bank_code_texts_t* texts) {
    auto byte = [&](size_t i) { return static_cast<uint8_t>(entry.body[*at + i]); };
    bank_code_t row{};
    row.code = static_cast<uint32_t>(std::stoul(entry.key.substr(3)));
    row.method = byte(1);
    row.rule = static_cast<uint16_t>(byte(2) << 8 | byte(3));
    size_t successor = *at + 4, bic = entry.body.find('|', successor) + 1, end = bic;
    row.successor = texts->successors.index_of(entry.body.substr(successor, bic - 1 - successor));
    row.bic = texts->bics.index_of(entry.body.substr(bic, entry.body.find('|', bic) - bic));
    for (int field = 0; field < 5 && end != 0; ++field) end = entry.body.find('|', end) + 1;
    *at = end == 0 ? entry.body.size() : end;
    return row;
}

void write_rows(FILE* out, const char* name, const std::vector<bank_code_t>& rows) {
    fprintf(out, "const sepa_internal::bank_code_t sepa_internal::%s[%zu] = {\n", name, rows.size());
    for (const bank_code_t& row : rows) {
        fprintf(out, "    {%uu, %u, %u, %u, %u, %u, 0x%02X},\n", row.code, row.rule, row.bic, row.successor, row.later,
                row.entry, row.method);
    }
    fprintf(out, "};\n\n");
}

}  // namespace

void write_bank_codes(FILE* out, const directory_t& directory) {
    bank_code_texts_t texts;
    std::vector<bank_code_t> rows, later(1);
    for (size_t i = directory.entries.size() - directory.de_count; i < directory.entries.size(); ++i) {
        if (i > UINT16_MAX) stop("too many entries for indices of 16 bits");
        const entry_t& entry = directory.entries[i];
        size_t at = 0;
        bank_code_t row = read_sub_record(entry, &at, &texts);
        row.entry = static_cast<uint16_t>(i);
        if (at < entry.body.size()) {
            later.push_back(read_sub_record(entry, &at, &texts));
            later.back().entry = row.entry;
            row.later = static_cast<uint16_t>(later.size() - 1);
        }
        rows.push_back(row);
    }
    std::vector<uint64_t> keys;
    for (const bank_code_t& row : rows) keys.push_back(row.code);
    std::vector<bank_code_t> table;
    for (size_t key : place<bank_code_bits>(keys))
        table.push_back(key == free_cell ? bank_code_t{no_bank_code, 0, 0, 0, 0, 0, 0} : rows[key]);
    write_rows(out, "bank_codes", table);
    write_rows(out, "later_bank_codes", later);
    texts.bics.write(out, "bank_code_bics", sizeof bank_code_bics[0]);
    texts.successors.write(out, "bank_code_successors", sizeof bank_code_successors[0]);
}

void write_bic_cells(FILE* out, const directory_t& directory) {
    std::vector<uint64_t> keys;
    for (size_t i = 0; i < directory.bic_count; ++i)
        keys.push_back(bic_key(bic_words(directory.entries[i].key.c_str())));
    std::vector<size_t> cells = place<bic_bits>(keys);
    fprintf(out, "const uint16_t sepa_internal::bic_cells[%zu] = {", cells.size());
    for (size_t i = 0; i < cells.size(); ++i) {
        size_t entry = cells[i] == free_cell ? size_t{no_entry} : cells[i];
        fprintf(out, "%s%zu,", i % 16 == 0 ? "\n    " : "", entry);
    }
    fprintf(out, "\n};\n\n");
}
