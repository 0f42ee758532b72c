#include "sepa/binding/statement_arrays.h"

#include <ctime>
#include <iterator>
#include <utility>

#include "sepa/binding/array_pages.h"
#include "sepa/statement/fields.h"

using namespace sepa_internal;

// Texts of the keys, which all arrays share.
static zend_string* statement_keys[std::size(statement_fields)];
static zend_string* transaction_keys[std::size(transaction_fields)];
static zend_string* transactions_key;

// From this length on a text can pass the memory limit by itself.
static constexpr size_t large_text = 64 * 1024;

// What a field was in the latest record that had it, and the string made of
// it, which that record's array owns. A field that is the same again has the
// same string: one place in the file makes one string. In a malformed file the
// references of thousands of transactions, in as many statements, can be the
// same megabytes; but their places never fall from one transaction to the
// next, and no other text has two owners.
struct latest_t {
    const char* place;
    struct tm date;
    zend_string* string;  // null at first, and where there was no memory
};

struct latest_fields_t {
    latest_t statement[std::size(statement_fields)];
    latest_t transaction[std::size(transaction_fields)];
    array_pages_t pages;
};

// Null where the engine is to end the request for the text's size.
static zend_string* make_string(const char* text, size_t length) {
    if (!length) return ZSTR_EMPTY_ALLOC();
    if (length < large_text) return zend_string_init(text, length, 0);
    SEPA_KEEP_MEMORY_LIMIT();
    return SEPA_NEW_STRING(text, length);
}

static zend_string* text_of(const char* place, latest_t* latest) {
    if (latest->string && (place == latest->place || !strcmp(place, ZSTR_VAL(latest->string))))
        return zend_string_copy(latest->string);
    latest->place = place;
    return latest->string = make_string(place, strlen(place));
}

static bool same_day(const struct tm& a, const struct tm& b) {
    return a.tm_year == b.tm_year && a.tm_mon == b.tm_mon && a.tm_mday == b.tm_mday;
}

// Dates are shown as the file has them, also the thirteenth month.
static zend_string* date_text(const struct tm* date, latest_t* latest) {
    if (latest->string && same_day(*date, latest->date)) return zend_string_copy(latest->string);
    char text[11];
    size_t length = strftime(text, sizeof text, "%Y-%m-%d", date);
    latest->date = *date;
    return latest->string = make_string(text, length);
}

// Whether the record's array has the key of row I.
template <const auto& Rows, size_t I>
static bool is_shown(const void* record) {
    constexpr const field_row_t& row = Rows[I];
    if constexpr (row.shown == shown_t::always) return true;
    if constexpr (row.member.type == member_type_t::text) return *row.member.in<const char*>(record);
    if constexpr (row.member.type == member_type_t::integer) return *row.member.in<uint32_t>(record);
    if constexpr (row.member.type == member_type_t::date) return row.member.in<struct tm>(record)->tm_year > 0;
    return true;
}

template <const auto& Rows, size_t I>
static zend_string* string_of(const void* record, latest_t* latest) {
    constexpr const member_t& member = Rows[I].member;
    if constexpr (member.type == member_type_t::date) return date_text(member.in<struct tm>(record), latest);
    if constexpr (member.type == member_type_t::copy) return text_of(member.in<char>(record), latest);
    if constexpr (member.type == member_type_t::text) return text_of(*member.in<const char*>(record), latest);
    return nullptr;
}

// Where the engine's integers have 32 bits, larger numbers are floats, as in
// scripts.
static void set_number(zval* value, uint32_t number) {
    if (sizeof(zend_long) == sizeof number && number > INT32_MAX) {
        ZVAL_DOUBLE(value, number);
    } else {
        ZVAL_LONG(value, static_cast<zend_long>(number));
    }
}

template <const auto& Rows, size_t I>
static void add_field(HashTable* array, zend_string* key, const void* record, latest_t* latest) {
    if (!is_shown<Rows, I>(record)) return;
    constexpr const member_t& member = Rows[I].member;
    zval value;
    if constexpr (member.type == member_type_t::integer) {
        set_number(&value, *member.in<uint32_t>(record));
    } else if constexpr (member.type == member_type_t::amount) {
        ZVAL_DOUBLE(&value, *member.in<double>(record));
    } else {
        zend_string* string = string_of<Rows, I>(record, latest);
        if (!string) return;
        ZVAL_STR(&value, string);
    }
    SEPA_APPEND(array, key, &value);
}

// Makes the array of a record, with room for `more` keys after those of the
// rows. Code for each row is made of the table, since a loop over rows took
// half of all time outside the engine.
template <const auto& Rows, size_t... I>
static HashTable* make_record(zval* array, const void* record, zend_string* const* keys, latest_t* latest,
                              uint32_t more, std::index_sequence<I...>) {
    uint32_t count = (more + ... + static_cast<uint32_t>(is_shown<Rows, I>(record)));
    SEPA_NEW_ARRAY(array, count);
    (add_field<Rows, I>(Z_ARRVAL_P(array), keys[I], record, &latest[I]), ...);
    return Z_ARRVAL_P(array);
}

static void make_transactions(zval* list, const sepa_statement_t* statement, latest_fields_t* latest) {
    array_init(list);
    for (const sepa_stmt_tx_t* tx = statement->tx_first; tx; tx = tx->next) {
        zval item;
        make_record<transaction_fields>(&item, tx, transaction_keys, latest->transaction, 0,
                                        std::make_index_sequence<std::size(transaction_fields)>());
        latest->pages.reach(Z_ARRVAL(item)->arData);
        add_next_index_zval(list, &item);
        SEPA_KEEP_MEMORY_LIMIT();
    }
}

void statement_arrays_return(zval* return_value, const sepa_stmt_parser_t* handle) {
    latest_fields_t latest = {};
    array_init(return_value);
    for (const sepa_statement_t* statement = handle->first; statement; statement = statement->next) {
        zval item, transactions;
        HashTable* array = make_record<statement_fields>(&item, statement, statement_keys, latest.statement, 1,
                                                         std::make_index_sequence<std::size(statement_fields)>());
        make_transactions(&transactions, statement, &latest);
        SEPA_APPEND(array, transactions_key, &transactions);
        add_next_index_zval(return_value, &item);
        SEPA_KEEP_MEMORY_LIMIT();
    }
}

static zend_string* make_key(const char* text) { return zend_string_init_interned(text, strlen(text), 1); }

void statement_arrays_startup() {
    for (size_t i = 0; i < std::size(statement_fields); ++i) statement_keys[i] = make_key(statement_fields[i].key);
    for (size_t i = 0; i < std::size(transaction_fields); ++i)
        transaction_keys[i] = make_key(transaction_fields[i].key);
    transactions_key = make_key("tx");
}
