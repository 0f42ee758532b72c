// Row types of the IBAN rule tables, and what proves a table at compile time.
#pragma once

#include <cstddef>
#include <cstdint>

#include "sepa/text/ascii.h"

namespace sepa_internal {

// Rows hold their texts as published: bank codes of 8 digits, account numbers
// of 10.
struct account_row_t {
    char account[11];
};

struct account_pair_t {
    char old_account[11];
    char new_account[11];
};

struct bank_row_t {
    char bank[9];
};

struct bank_account_pair_t {
    char bank[9];
    char old_account[11];
    char new_account[11];
};

struct account_pair_bank_t {
    char old_account[11];
    char new_account[11];
    char bank[9];
};

struct branch_list_t {
    char bank[9];
    const char* branches;  // three-digit numbers, ", " between them
};

// What has been seen of a table: whether its texts are digits that fill their
// column, and the 64-bit FNV-1a checksum over all texts.
struct table_proof_t {
    bool digits_only = true;
    uint64_t checksum = 0xcbf29ce484222325;

    constexpr void text(const char* text) {
        for (; *text; ++text) checksum = (checksum ^ static_cast<uint8_t>(*text)) * 0x100000001b3;
    }

    template <size_t N>
    constexpr void digits(const char (&column)[N]) {
        for (size_t i = 0; i + 1 < N; ++i) digits_only = digits_only && is_digit(column[i]);
        text(column);
    }
};

constexpr void add_row(table_proof_t& proof, const account_row_t& row) { proof.digits(row.account); }

constexpr void add_row(table_proof_t& proof, const account_pair_t& row) {
    proof.digits(row.old_account);
    proof.digits(row.new_account);
}

constexpr void add_row(table_proof_t& proof, const bank_row_t& row) { proof.digits(row.bank); }

constexpr void add_row(table_proof_t& proof, const bank_account_pair_t& row) {
    proof.digits(row.bank);
    proof.digits(row.old_account);
    proof.digits(row.new_account);
}

constexpr void add_row(table_proof_t& proof, const account_pair_bank_t& row) {
    proof.digits(row.old_account);
    proof.digits(row.new_account);
    proof.digits(row.bank);
}

constexpr void add_row(table_proof_t& proof, const branch_list_t& row) {
    proof.digits(row.bank);
    proof.text(row.branches);
}

// Whether a table has `count` rows, nothing but digits of the right width in
// them, and the checksum of the published texts.
template <typename Row, size_t N>
constexpr bool proven(const Row (&rows)[N], size_t count, uint64_t checksum) {
    table_proof_t proof;
    for (const Row& row : rows) add_row(proof, row);
    return N == count && proof.digits_only && proof.checksum == checksum;
}

}  // namespace sepa_internal
