// Tables sorted for the search of their rules.
#pragma once

#include "sepa/iban/rules/rule_tables.h"

namespace sepa_internal {

// What digits_value gives for a text with any character but digits: a number
// that no row and no range of accounts has.
constexpr uint64_t no_value = UINT64_MAX;

// The `count` digits at `text`, 18 at most, as a number.
constexpr uint64_t digits_value(const char* text, size_t count) {
    uint64_t value = 0;
    for (size_t i = 0; i < count; ++i) {
        if (!is_digit(text[i])) return no_value;
        value = value * 10 + static_cast<uint64_t>(text[i] - '0');
    }
    return value;
}

// One number for a bank code and an account number.
constexpr uint64_t bank_account_key(uint64_t bank, uint64_t account) { return bank * 10000000000 + account; }

constexpr uint64_t key_of(const account_row_t& row) { return digits_value(row.account, 10); }
constexpr uint64_t key_of(const account_pair_t& row) { return digits_value(row.old_account, 10); }
constexpr uint64_t key_of(const bank_row_t& row) { return digits_value(row.bank, 8); }
constexpr uint64_t key_of(const bank_account_pair_t& row) {
    return bank_account_key(digits_value(row.bank, 8), digits_value(row.old_account, 10));
}
constexpr uint64_t key_of(const account_pair_bank_t& row) { return digits_value(row.old_account, 10); }

// Rows in ascending order of their keys; the keys stand apart, so that a
// search touches nothing else.
template <typename Row>
struct rule_list_t {
    const uint64_t* keys;
    const Row* rows;
    size_t size;

    // The row of `key`, the first one published if several have it; or null.
    const Row* find(uint64_t key) const {
        // Without a branch in each step, which would be wrong half the time.
        size_t first = 0;
        for (size_t left = size; left > 0;) {
            size_t half = left / 2;
            bool after = keys[first + half] < key;
            first = after ? first + half + 1 : first;
            left = after ? left - half - 1 : half;
        }
        return first < size && keys[first] == key ? rows + first : nullptr;
    }
};

template <typename Row, size_t N>
struct sorted_rows_t {
    uint64_t keys[N];
    Row rows[N];

    constexpr operator rule_list_t<Row>() const { return {keys, rows, N}; }
    const Row* find(uint64_t key) const { return rule_list_t<Row>(*this).find(key); }
};

// Sorts a published table. Rows of equal keys keep their order.
template <typename Row, size_t N>
constexpr sorted_rows_t<Row, N> sorted(const Row (&rows)[N]) {
    sorted_rows_t<Row, N> result{};
    for (size_t i = 0; i < N; ++i) {
        uint64_t key = key_of(rows[i]);
        size_t at = i;
        for (; at > 0 && result.keys[at - 1] > key; --at) {
            result.keys[at] = result.keys[at - 1];
            result.rows[at] = result.rows[at - 1];
        }
        result.keys[at] = key;
        result.rows[at] = rows[i];
    }
    return result;
}

}  // namespace sepa_internal
