// Turns one release of the bank lists into the C++ tables of the bank
// directory: the entries in their order and a minimal perfect hash over their
// keys. A program of the build, run by both builds:
//
//     gen_directory [--for-tests] LIST_FOLDER OUTPUT_FILE
//
// The first fault in a list ends it with "file:line: reason" and status 1, and
// OUTPUT_FILE stays as it was. What it leaves out, it says, and it warns of what
// the library will not check: methods and rules that it does not have. The same
// lists give the same bytes on every machine. --for-tests takes lists as a test
// needs them: nothing is warned of, and a successor may be missing or lead in a
// circle.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "bank_lists.h"
#include "cell_tables.h"
#include "files.h"
#include "sepa/directory/directory_tables.h"

const char* const program_name = "gen_directory";

namespace {

constexpr size_t max_draws = 100000;

// ----------------------------------------------------------------- hash ----
// Minimal perfect hash of Czech, Havas and Majewski: each key is an edge that
// joins three random cells; if the edges can be taken away one by one, each
// with a cell of its own, the cells can be filled so that those of a key add
// up to the key's index.

using edge_t = std::array<uint32_t, 3>;

struct hash_t {
    uint32_t cells;
    std::array<std::vector<uint32_t>, 3> t;
    std::vector<int32_t> g;
};

edge_t edge_of(const hash_t& hash, const std::string& key) {
    edge_t edge{};
    for (size_t i = 0; i < key.size(); ++i) {
        size_t at = directory_characters * i + static_cast<size_t>(key[i] - directory_first_character);
        for (size_t part = 0; part < 3; ++part) edge[part] += hash.t[part][at];
    }
    for (uint32_t& cell : edge) cell %= hash.cells;
    return edge;
}

struct removal_t {
    size_t key;
    size_t own;  // which of the key's three cells no remaining key had
};

// The order in which the keys can be taken away, or fewer than all of them.
std::vector<removal_t> take_away(const std::vector<edge_t>& edges, uint32_t cells) {
    // A cell knows how often it is used, and the sum of the keys that use it:
    // of a cell that is used once, the sum is the key.
    std::vector<size_t> uses(cells), sums(cells);
    for (size_t key = 0; key < edges.size(); ++key) {
        for (uint32_t cell : edges[key]) uses[cell]++, sums[cell] += key;
    }
    std::vector<uint32_t> free_cells;
    for (uint32_t cell = 0; cell < cells; ++cell) {
        if (uses[cell] == 1) free_cells.push_back(cell);
    }
    std::vector<removal_t> order;
    for (size_t i = 0; i < free_cells.size(); ++i) {
        uint32_t own = free_cells[i];
        if (uses[own] != 1) continue;
        size_t key = sums[own];
        const edge_t& edge = edges[key];
        order.push_back({key, static_cast<size_t>(std::find(edge.begin(), edge.end(), own) - edge.begin())});
        for (uint32_t cell : edge) {
            --uses[cell], sums[cell] -= key;
            if (uses[cell] == 1) free_cells.push_back(cell);
        }
    }
    return order;
}

void fill_cells(hash_t& hash, const std::vector<edge_t>& edges, const std::vector<removal_t>& order) {
    hash.g.assign(hash.cells, -1);
    auto count = static_cast<int64_t>(edges.size());
    for (auto removal = order.rbegin(); removal != order.rend(); ++removal) {
        const edge_t& edge = edges[removal->key];
        auto rest = static_cast<int64_t>(removal->key);
        for (size_t part = 0; part < 3; ++part) {
            if (part == removal->own) continue;
            int32_t& cell = hash.g[edge[part]];
            cell = std::max(cell, 0);
            rest -= cell;
        }
        hash.g[edge[removal->own]] = static_cast<int32_t>(((rest % count) + count) % count);
    }
}

hash_t make_hash(const std::vector<entry_t>& entries) {
    hash_t hash{};
    hash.cells = static_cast<uint32_t>(directory_cells_of(entries.size()));
    std::mt19937 random(1);  // its numbers are the same everywhere, unlike the library's distributions
    for (size_t draw = 0; draw < max_draws; ++draw) {
        for (auto& table : hash.t) {
            table.resize(directory_positions * directory_characters);
            for (uint32_t& value : table) value = static_cast<uint32_t>(random() % hash.cells);
        }
        std::vector<edge_t> edges;
        for (const entry_t& entry : entries) edges.push_back(edge_of(hash, entry.key));
        std::vector<removal_t> order = take_away(edges, hash.cells);
        if (order.size() < edges.size()) continue;
        fill_cells(hash, edges, order);
        return hash;
    }
    stop("no perfect hash found");
}

// --------------------------------------------------------------- output ----

template <typename Number>
void write_numbers(FILE* out, const char* type, const char* name, const std::vector<Number>& numbers) {
    fprintf(out, "const %s %s[%zu] = {", type, name, numbers.size());
    for (size_t i = 0; i < numbers.size(); ++i) {
        fprintf(out, "%s%lld,", i % 16 == 0 ? "\n    " : "", static_cast<long long>(numbers[i]));
    }
    fprintf(out, "\n};\n\n");
}

// One literal an entry, joined by the compiler. Whatever is not plain ASCII is
// an escape of three octal digits, which no digit behind it can lengthen.
void write_literal(FILE* out, const std::string& bytes) {
    fprintf(out, "    \"");
    for (char c : bytes) {
        bool plain = c >= ' ' && c <= '~' && c != '"' && c != '\\' && c != '?';
        fprintf(out, plain ? "%c" : "\\%03o", static_cast<unsigned char>(c));
    }
    fprintf(out, "\"\n");
}

void write_tables(FILE* out, const directory_t& directory, const hash_t& hash) {
    std::vector<size_t> offsets;
    size_t size = 0;
    for (const entry_t& entry : directory.entries) {
        offsets.push_back(size);
        size += entry.key.size() + entry.body.size();
    }
    offsets.push_back(size);
    fprintf(out, "// Made by tools/gen_directory.cpp from the bank lists. Do not edit.\n\n");
    fprintf(out, "constexpr int32_t directory_format = %d;\n", tables_format);
    fprintf(out, "constexpr int32_t directory_count = %zu;\n", directory.entries.size());
    fprintf(out, "constexpr int32_t directory_bic_count = %zu;\n", directory.bic_count);
    fprintf(out, "constexpr int32_t directory_at_count = %zu;\n", directory.at_count);
    fprintf(out, "constexpr int32_t directory_ch_count = %zu;\n", directory.ch_count);
    fprintf(out, "constexpr int32_t directory_de_count = %zu;\n", directory.de_count);
    fprintf(out, "constexpr int32_t directory_cells = %u;\n", hash.cells);
    fprintf(out, "constexpr int64_t directory_switch_time = %lld;\n\n", static_cast<long long>(directory.switch_time));
    write_numbers(out, "uint32_t", "directory_t1", hash.t[0]);
    write_numbers(out, "uint32_t", "directory_t2", hash.t[1]);
    write_numbers(out, "uint32_t", "directory_t3", hash.t[2]);
    write_numbers(out, "int32_t", "directory_g", hash.g);
    write_numbers(out, "uint32_t", "directory_offsets", offsets);
    fprintf(out, "const char directory_text[%zu] =\n", size + 1);
    for (const entry_t& entry : directory.entries) write_literal(out, entry.key + entry.body);
    fprintf(out, "    ;\n\n");
    write_bank_codes(out, directory);
    write_bic_cells(out, directory);
}

// Writes beside the output and renames, so that no half of a file ever stands
// under its name.
void write_output(const std::string& name, const directory_t& directory, const hash_t& hash) {
    std::string temporary = name + ".tmp";
    FILE* out = fopen(temporary.c_str(), "wb");
    if (!out) stop(temporary + ": cannot be opened: " + strerror(errno));
    write_tables(out, directory, hash);
    bool failed = ferror(out) != 0;
    failed = fclose(out) != 0 || failed;
    if (!failed && rename(temporary.c_str(), name.c_str()) == 0) return;
    int error = errno;
    remove(temporary.c_str());
    stop(name + ": cannot be written: " + strerror(error));
}

}  // namespace

int main(int argc, char** argv) try {
    bool for_tests = argc == 4 && strcmp(argv[1], "--for-tests") == 0;
    if (argc != 3 && !for_tests) stop("usage: [--for-tests] LIST_FOLDER OUTPUT_FILE");
    const std::string folder = argv[argc - 2];
    auto list = [&](const char* name) { return list_text_t{folder + name, read_file(folder + name)}; };
    lists_t lists = read_lists({list("/de.csv"), list("/bic.csv"), list("/at.csv"), list("/ch.csv")});
    directory_t directory = make_directory(lists, for_tests);
    if (directory.ended_de_count) {
        printf("%s/de.csv: bank codes that end with the earlier period: %zu\n", folder.c_str(),
               directory.ended_de_count);
    }
    if (for_tests) directory.warnings.clear();
    for (const std::string& warning : directory.warnings) fprintf(stderr, "%s\n", warning.c_str());
    if (directory.entries.empty()) stop(folder + ": the lists are empty");
    write_output(argv[argc - 1], directory, make_hash(directory.entries));
    return 0;
} catch (const std::bad_alloc&) {
    stop("memory has run out");
}
