#include "binding/statement_arrays.h"

#include <ctime>
#include <iterator>

#include "statement/fields.h"

using namespace sepa_internal;

// Texts of the keys, which all arrays share.
static zend_string* statement_keys[std::size(statement_fields)];
static zend_string* transaction_keys[std::size(transaction_fields)];
static zend_string* transactions_key;

// Room for the keys that most records have.
static constexpr uint32_t usual_size = 16;

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

// Makes the field's value; it stays undefined where the array has no such key.
static void make_value(zval* value, const void* record, const field_row_t& row, latest_t* latest) {
    ZVAL_UNDEF(value);
    zend_string* string = nullptr;
    switch (row.member.type) {
        case member_type_t::INTEGER: {
            uint32_t number = *row.member.in<uint32_t>(record);
            if (number || row.shown == shown_t::ALWAYS) ZVAL_LONG(value, static_cast<zend_long>(number));
            return;
        }
        case member_type_t::AMOUNT: ZVAL_DOUBLE(value, *row.member.in<double>(record)); return;
        case member_type_t::DATE: {
            auto* date = row.member.in<struct tm>(record);
            if (date->tm_year > 0 || row.shown == shown_t::ALWAYS) string = date_text(date, latest);
            break;
        }
        case member_type_t::COPY: string = text_of(row.member.in<char>(record), latest); break;
        case member_type_t::TEXT:
            if (const char* place = *row.member.in<const char*>(record)) string = text_of(place, latest);
            break;
    }
    if (string) ZVAL_STR(value, string);
}

template <size_t Count>
static void make_record(zval* array, const void* record, const field_row_t (&rows)[Count], zend_string* (&keys)[Count],
                        latest_t (&latest)[Count]) {
    array_init_size(array, usual_size);
    for (size_t i = 0; i < Count; ++i) {
        zval value;
        make_value(&value, record, rows[i], &latest[i]);
        if (!Z_ISUNDEF(value)) zend_hash_add_new(Z_ARRVAL_P(array), keys[i], &value);
    }
}

static void make_transactions(zval* list, const sepa_statement_t* statement, latest_fields_t* latest) {
    array_init(list);
    for (const sepa_stmt_tx_t* tx = statement->tx_first; tx; tx = tx->next) {
        zval item;
        make_record(&item, tx, transaction_fields, transaction_keys, latest->transaction);
        add_next_index_zval(list, &item);
        SEPA_KEEP_MEMORY_LIMIT();
    }
}

void statement_arrays_return(zval* return_value, const sepa_stmt_parser_t* handle) {
    latest_fields_t latest = {};
    array_init(return_value);
    for (const sepa_statement_t* statement = handle->first; statement; statement = statement->next) {
        zval item, transactions;
        make_record(&item, statement, statement_fields, statement_keys, latest.statement);
        make_transactions(&transactions, statement, &latest);
        zend_hash_add_new(Z_ARRVAL(item), transactions_key, &transactions);
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
