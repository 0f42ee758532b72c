// The fields of the records as rows: where a text comes from, what it becomes,
// and how scripts see it. A field is one row here beside its member in mt940.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "sepa/statement/mt940.h"

namespace sepa_internal {

// What a member is: a place in the file's text, a copy of fixed size, a number
// of 32 bits, an amount or a date.
enum class member_type_t : uint8_t { text, copy, integer, amount, date };

template <typename Member, typename... Types>
constexpr bool is_one_of = (std::is_same_v<Member, Types> || ...);

template <typename Member>
constexpr member_type_t type_of() {
    static_assert(std::is_array_v<Member> || is_one_of<Member, const char*, double, struct tm, int32_t, uint32_t>);
    if (std::is_same_v<Member, const char*>) return member_type_t::text;
    if (std::is_array_v<Member>) return member_type_t::copy;
    if (std::is_same_v<Member, double>) return member_type_t::amount;
    if (std::is_same_v<Member, struct tm>) return member_type_t::date;
    return member_type_t::integer;
}

struct member_t {
    member_type_t type;
    uint16_t offset, size;  // in the record

    template <typename Value>
    Value* in(void* record) const {
        return reinterpret_cast<Value*>(static_cast<char*>(record) + offset);
    }
    template <typename Value>
    const Value* in(const void* record) const {
        return reinterpret_cast<const Value*>(static_cast<const char*>(record) + offset);
    }
};

// Whether an array has the field's key: always, or unless the member is null,
// 0 or a date that was never read.
enum class shown_t : uint8_t { always, if_set };

// Where a field comes from: read by code of its own, or from a subfield
// of ":86:" by its number, a text within the purpose subfields by its keyword.
struct source_t {
    int8_t subfield;
    char keyword[6];
    bool is_amount;  // the first comma becomes a point
};
constexpr source_t own_code = {-1, "", false};
constexpr source_t subfield(int8_t number) { return {number, {}, false}; }  // g++ 10 takes no "" here
constexpr source_t keyword(const char (&text)[6], bool is_amount = false) {
    return {-1, {text[0], text[1], text[2], text[3], text[4], '\0'}, is_amount};
}
constexpr size_t keyword_length = 5;

struct field_row_t {
    const char* key;  // of the array
    member_t member;
    shown_t shown;
    source_t source;
};

// Both tables are in the order of the arrays' keys.
#define SEPA_MEMBER(record, member) \
    { type_of<decltype(record::member)>(), offsetof(record, member), sizeof(record::member) }
#define MEMBER(member) SEPA_MEMBER(sepa_statement_t, member)
constexpr field_row_t statement_fields[] = {
    {"ref", MEMBER(ref), shown_t::if_set, own_code},
    {"account", MEMBER(account), shown_t::if_set, own_code},
    {"number", MEMBER(number), shown_t::if_set, own_code},
    {"page", MEMBER(page), shown_t::if_set, own_code},
    {"openSaldo", MEMBER(open_saldo), shown_t::always, own_code},
    {"openCurrency", MEMBER(open_currency), shown_t::always, own_code},
    {"openDate", MEMBER(open_date), shown_t::always, own_code},
    {"closeSaldo", MEMBER(close_saldo), shown_t::always, own_code},
    {"closeCurrency", MEMBER(close_currency), shown_t::always, own_code},
    {"closeDate", MEMBER(close_date), shown_t::always, own_code},
};
#undef MEMBER

#define MEMBER(member) SEPA_MEMBER(sepa_stmt_tx_t, member)
constexpr field_row_t transaction_fields[] = {
    {"valuta", MEMBER(valuta), shown_t::always, own_code},
    {"booked", MEMBER(booked), shown_t::if_set, own_code},
    {"amount", MEMBER(amount), shown_t::always, own_code},
    {"code", MEMBER(code), shown_t::always, own_code},
    {"ref", MEMBER(ref), shown_t::if_set, own_code},
    {"bankref", MEMBER(bankref), shown_t::if_set, own_code},
    {"gvc", MEMBER(gvc), shown_t::always, own_code},
    {"extcode", MEMBER(extcode), shown_t::if_set, subfield(34)},
    {"txtext", MEMBER(txtext), shown_t::if_set, subfield(0)},
    {"primanota", MEMBER(primanota), shown_t::if_set, subfield(10)},
    {"bank", MEMBER(bank), shown_t::always, subfield(30)},
    {"account", MEMBER(account), shown_t::always, subfield(31)},
    {"name", MEMBER(name), shown_t::always, subfield(32)},    // and what subfield 33 adds
    {"purpose", MEMBER(purpose), shown_t::if_set, own_code},  // purpose subfields without a keyword
    {"eref", MEMBER(eref), shown_t::if_set, keyword("EREF+")},
    {"kref", MEMBER(kref), shown_t::if_set, keyword("KREF+")},
    {"mref", MEMBER(mref), shown_t::if_set, keyword("MREF+")},
    {"cred", MEMBER(cred), shown_t::if_set, keyword("CRED+")},
    {"debt", MEMBER(debt), shown_t::if_set, keyword("DEBT+")},
    {"purp", MEMBER(purp), shown_t::if_set, keyword("PURP+")},
    {"coam", MEMBER(coam), shown_t::if_set, keyword("COAM+", true)},
    {"oamt", MEMBER(oamt), shown_t::if_set, keyword("OAMT+", true)},
    {"svwz", MEMBER(svwz), shown_t::if_set, keyword("SVWZ+")},
    {"abwa", MEMBER(abwa), shown_t::if_set, keyword("ABWA+")},
    {"abwe", MEMBER(abwe), shown_t::if_set, keyword("ABWE+")},
};
#undef MEMBER
#undef SEPA_MEMBER

// Keys, numbers and keywords stand in one row each, and keywords end in "+".
template <size_t Count>
constexpr bool rows_differ(const field_row_t (&rows)[Count]) {
    for (size_t i = 0; i < Count; ++i) {
        const source_t& source = rows[i].source;
        if (*source.keyword && source.keyword[keyword_length - 1] != '+') return false;
        for (size_t other = 0; other < i; ++other) {
            if (std::string_view(rows[other].key) == rows[i].key) return false;
            if (source.subfield >= 0 && rows[other].source.subfield == source.subfield) return false;
            if (*source.keyword && std::string_view(rows[other].source.keyword) == source.keyword) return false;
        }
    }
    return true;
}
static_assert(rows_differ(statement_fields) && rows_differ(transaction_fields));

}  // namespace sepa_internal
