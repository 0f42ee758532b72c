// The search of a key among the rows of keys: one cell to look at, by the key's
// length and two of its letters, in either case. A loop over the rows would cost a
// transaction a twentieth more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "sepa/text/ascii.h"

namespace sepa_internal {

constexpr size_t key_cell_count = 128;
constexpr size_t min_key_length = 2, max_key_length = 11;

// A key beside the number of its row: all that a search reads is in one line of
// the cache.
struct alignas(16) key_cell_t {
    char key[max_key_length + 1];
    uint8_t length;  // 0: no key has this cell
    uint8_t row;
};

struct key_multipliers_t {
    size_t middle, last;
};

struct key_index_t {
    key_multipliers_t multipliers;
    key_cell_t cells[key_cell_count];
    bool good;  // all keys have cells of their own
};

constexpr size_t key_cell_of(const char* key, size_t length, key_multipliers_t by) {
    auto letter = [key](size_t i) { return static_cast<size_t>(static_cast<unsigned char>(key[i]) | 0x20); };
    return (letter(length / 2) * by.middle + letter(length - 1) * by.last + length) % key_cell_count;
}

template <typename Row, size_t Count>
constexpr key_index_t try_key_index(const Row (&rows)[Count], key_multipliers_t by) {
    key_index_t index = {by, {}, true};
    for (size_t i = 0; i < Count && index.good; ++i) {
        std::string_view key = rows[i].key;
        if (key.size() < min_key_length || key.size() > max_key_length) return {};
        key_cell_t& cell = index.cells[key_cell_of(key.data(), key.size(), by)];
        index.good = cell.length == 0;
        for (size_t at = 0; at < key.size(); ++at) cell.key[at] = key[at];
        cell.length = static_cast<uint8_t>(key.size());
        cell.row = static_cast<uint8_t>(i);
    }
    return index;
}

// With the first multipliers that give no two keys the same cell; not good if
// there are none.
template <typename Row, size_t Count>
constexpr key_index_t make_key_index(const Row (&rows)[Count]) {
    for (size_t middle = 1; middle < key_cell_count; ++middle) {
        for (size_t last = 1; last < key_cell_count; ++last)
            if (key_index_t index = try_key_index(rows, {middle, last}); index.good) return index;
    }
    return {};
}

template <typename Word>
bool same_ends(const char* a, const char* b, size_t length) {
    Word first_a, first_b, last_a, last_b;
    memcpy(&first_a, a, sizeof(Word));
    memcpy(&first_b, b, sizeof(Word));
    memcpy(&last_a, a + length - sizeof(Word), sizeof(Word));
    memcpy(&last_b, b + length - sizeof(Word), sizeof(Word));
    return first_a == first_b && last_a == last_b;
}

// memcmp() of 2 to 16 bytes, whose call would cost as much as all else here.
inline bool same_bytes(const char* a, const char* b, size_t length) {
    if (length >= 8) return same_ends<uint64_t>(a, b, length);
    return length >= 4 ? same_ends<uint32_t>(a, b, length) : same_ends<uint16_t>(a, b, length);
}

// Whether two texts are the same in any case.
inline bool same_text(const char* a, const char* b) {
    for (; ascii_upper(*a) == ascii_upper(*b); ++a, ++b)
        if (!*a) return true;
    return false;
}

// The cell of a key in any case, or null.
inline const key_cell_t* find_key(const key_index_t& index, const char* key, size_t length) {
    if (length < min_key_length || length > max_key_length) return nullptr;
    const key_cell_t& cell = index.cells[key_cell_of(key, length, index.multipliers)];
    if (cell.length != length) return nullptr;
    return same_bytes(key, cell.key, length) || same_text(key, cell.key) ? &cell : nullptr;
}

}  // namespace sepa_internal
