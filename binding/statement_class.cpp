#include "binding/statement_class.h"

#include <cstddef>
#include <ctime>
#include <iterator>

#include "binding/sepa_module.h"
#include "statement/mt940.h"

// A script object. The handle stands in front of the engine's part, which is
// followed by the property table and so must stay last.
struct statement_object_t {
    sepa_stmt_parser_t* handle;  // null until __construct has succeeded
    zend_object std;
};

static zend_object_handlers statement_object_handlers;

// Keys of the result arrays. Their texts are made once, so that the arrays of a
// large file share them.
enum result_key_t : size_t {
    key_ref,
    key_account,
    key_number,
    key_page,
    key_open_saldo,
    key_open_currency,
    key_open_date,
    key_close_saldo,
    key_close_currency,
    key_close_date,
    key_tx,
    key_valuta,
    key_booked,
    key_amount,
    key_code,
    key_bankref,
    key_gvc,
    key_extcode,
    key_txtext,
    key_primanota,
    key_bank,
    key_name,
    key_purpose,
    key_eref,
    key_kref,
    key_mref,
    key_cred,
    key_debt,
    key_purp,
    key_coam,
    key_oamt,
    key_svwz,
    key_abwa,
    key_abwe,
    key_count,
};
static const char* const key_texts[] = {
    "ref",        "account",       "number",    "page",    "openSaldo", "openCurrency", "openDate",
    "closeSaldo", "closeCurrency", "closeDate", "tx",      "valuta",    "booked",       "amount",
    "code",       "bankref",       "gvc",       "extcode", "txtext",    "primanota",    "bank",
    "name",       "purpose",       "eref",      "kref",    "mref",      "cred",         "debt",
    "purp",       "coam",          "oamt",      "svwz",    "abwa",      "abwe",
};
static_assert(std::size(key_texts) == key_count);
static zend_string* keys[key_count];

// Room for the keys that most records have.
static constexpr uint32_t statement_size = 16, transaction_size = 16;

static void add(zval* array, result_key_t key, zval* value) { zend_hash_add_new(Z_ARRVAL_P(array), keys[key], value); }

static void add_integer(zval* array, result_key_t key, uint32_t number) {
    zval value;
    ZVAL_LONG(&value, static_cast<zend_long>(number));
    add(array, key, &value);
}

static void add_float(zval* array, result_key_t key, double number) {
    zval value;
    ZVAL_DOUBLE(&value, number);
    add(array, key, &value);
}

// From this length on a text can pass the memory limit by itself.
static constexpr size_t large_text = 64 * 1024;

// Null where the engine is to end the request for the text's size.
static zend_string* make_string(const char* text) {
    size_t length = strlen(text);
    if (!length) return ZSTR_EMPTY_ALLOC();
    if (length < large_text) return zend_string_init(text, length, 0);
    SEPA_KEEP_MEMORY_LIMIT();
    return SEPA_NEW_STRING(text, length);
}

static void add_string(zval* array, result_key_t key, zend_string* string) {
    if (!string) return;
    zval value;
    ZVAL_STR(&value, string);
    add(array, key, &value);
}

static void add_text(zval* array, result_key_t key, const char* text) {
    if (text) add_string(array, key, make_string(text));
}

// In a malformed file the references of thousands of transactions, in as many
// statements, can be the same megabytes. One place in the text makes one string.
// Places of references never fall from one transaction of a file to the next,
// so the latest is all that has to be remembered; no other text has two owners.
struct latest_reference_t {
    const char* place;    // null before the first
    zend_string* string;  // owned by the arrays that have it
};

static void add_reference(zval* array, const char* place, latest_reference_t* latest) {
    if (!place) return;
    if (place != latest->place) {
        latest->place = place;
        latest->string = make_string(place);
    } else if (latest->string) {
        latest->string = zend_string_copy(latest->string);
    }
    add_string(array, key_ref, latest->string);
}

// Dates are shown as the file has them, also the thirteenth month.
static void add_date(zval* array, result_key_t key, const struct tm* date) {
    char text[11];
    size_t length = strftime(text, sizeof text, "%Y-%m-%d", date);
    zval value;
    ZVAL_STRINGL(&value, text, length);
    add(array, key, &value);
}

static void make_transaction(zval* array, const sepa_stmt_tx_t* tx, latest_reference_t* latest) {
    array_init_size(array, transaction_size);
    add_date(array, key_valuta, &tx->valuta);
    if (tx->booked.tm_year > 0) add_date(array, key_booked, &tx->booked);
    add_float(array, key_amount, tx->amount);
    add_text(array, key_code, tx->code);
    add_reference(array, tx->ref, latest);
    add_text(array, key_bankref, tx->bankref);
    add_integer(array, key_gvc, static_cast<uint32_t>(tx->gvc));
    if (tx->extcode) add_integer(array, key_extcode, static_cast<uint32_t>(tx->extcode));
    add_text(array, key_txtext, tx->txtext);
    add_text(array, key_primanota, tx->primanota);
    add_text(array, key_bank, tx->bank);
    add_text(array, key_account, tx->account);
    add_text(array, key_name, tx->name);
    add_text(array, key_purpose, tx->purpose);
    add_text(array, key_eref, tx->eref);
    add_text(array, key_kref, tx->kref);
    add_text(array, key_mref, tx->mref);
    add_text(array, key_cred, tx->cred);
    add_text(array, key_debt, tx->debt);
    add_text(array, key_purp, tx->purp);
    add_text(array, key_coam, tx->coam);
    add_text(array, key_oamt, tx->oamt);
    add_text(array, key_svwz, tx->svwz);
    add_text(array, key_abwa, tx->abwa);
    add_text(array, key_abwe, tx->abwe);
}

static void make_transactions(zval* list, const sepa_statement_t* statement, latest_reference_t* latest) {
    array_init(list);
    for (const sepa_stmt_tx_t* tx = statement->tx_first; tx; tx = tx->next) {
        zval item;
        make_transaction(&item, tx, latest);
        add_next_index_zval(list, &item);
        SEPA_KEEP_MEMORY_LIMIT();
    }
}

static void make_statement(zval* array, const sepa_statement_t* statement, latest_reference_t* latest) {
    array_init_size(array, statement_size);
    add_text(array, key_ref, statement->ref);
    add_text(array, key_account, statement->account);
    if (statement->number) add_integer(array, key_number, statement->number);
    if (statement->page) add_integer(array, key_page, statement->page);
    add_float(array, key_open_saldo, statement->open_saldo);
    add_text(array, key_open_currency, statement->open_currency);
    add_date(array, key_open_date, &statement->open_date);
    add_float(array, key_close_saldo, statement->close_saldo);
    add_text(array, key_close_currency, statement->close_currency);
    add_date(array, key_close_date, &statement->close_date);
    zval transactions;
    make_transactions(&transactions, statement, latest);
    add(array, key_tx, &transactions);
}

static sepa_stmt_parser_t** handle_slot(zend_object* object) {
    auto start = reinterpret_cast<char*>(object) - offsetof(statement_object_t, std);
    return &reinterpret_cast<statement_object_t*>(start)->handle;
}

// The handle of `$this`; null, with the exception raised, if it has none.
static sepa_stmt_parser_t* handle_of(zval* self) {
    sepa_stmt_parser_t* handle = *handle_slot(Z_OBJ_P(self));
    if (!handle) sepa_throw("invalid sepa_stmt_parser_t handle", 0);
    return handle;
}

static zend_object* statement_object_create(zend_class_entry* ce) {
    auto object =
        static_cast<statement_object_t*>(ecalloc(1, sizeof(statement_object_t) + zend_object_properties_size(ce)));
    zend_object_std_init(&object->std, ce);
    object_properties_init(&object->std, ce);
    object->std.handlers = &statement_object_handlers;
    return &object->std;
}

static void statement_object_free(zend_object* object) {
    sepa_stmt_parser_t** slot = handle_slot(object);
    sepa_stmt_parser_free(*slot);
    *slot = nullptr;
    zend_object_std_dtor(object);
}

static ZEND_METHOD(SEPAStatementParser, __construct) {
    (void)return_value;
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    if (!handle) {
        sepa_throw("can't create SEPAStatementParser object", SEPA_CODE_CONSTRUCTOR);
        return;
    }
    sepa_stmt_parser_t** slot = handle_slot(Z_OBJ_P(ZEND_THIS));
    sepa_stmt_parser_free(*slot);
    *slot = handle;
}

static ZEND_METHOD(SEPAStatementParser, load) {
    zend_long format;
    char* filename;
    size_t length;
    if (SEPA_PARSE_PARAMETERS("ls", &format, &filename, &length) == FAILURE) return;
    if (format != SEPA_STMT_FORMAT_MT940) {
        sepa_throw("invalid/unknown statement format", SEPA_CODE_CONSTRUCTOR);
        return;
    }
    sepa_stmt_parser_t* handle = handle_of(ZEND_THIS);
    if (!handle) return;
    if (!sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, filename)) {
        sepa_throw(handle->error, 0);
        return;
    }
    RETURN_TRUE;
}

static ZEND_METHOD(SEPAStatementParser, getStatements) {
    sepa_stmt_parser_t* handle = handle_of(ZEND_THIS);
    if (!handle || !handle->first) return;
    array_init(return_value);
    latest_reference_t latest = {};
    for (const sepa_statement_t* statement = handle->first; statement; statement = statement->next) {
        zval item;
        make_statement(&item, statement, &latest);
        add_next_index_zval(return_value, &item);
        SEPA_KEEP_MEMORY_LIMIT();
    }
}

ZEND_BEGIN_ARG_INFO_EX(arginfo_statement_none, 0, 0, 0)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_statement_load, 0, 0, 2)
ZEND_ARG_INFO(0, format)
ZEND_ARG_INFO(0, filename)
ZEND_END_ARG_INFO()

// clang-format off
static const zend_function_entry statement_methods[] = {
    ZEND_ME(SEPAStatementParser, __construct, arginfo_statement_none, ZEND_ACC_PUBLIC | ZEND_ACC_CTOR)
    ZEND_ME(SEPAStatementParser, load, arginfo_statement_load, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPAStatementParser, getStatements, arginfo_statement_none, ZEND_ACC_PUBLIC)
    ZEND_FE_END
};
// clang-format on

void statement_class_register() {
    for (size_t i = 0; i < key_count; ++i) keys[i] = zend_string_init_interned(key_texts[i], strlen(key_texts[i]), 1);

    zend_class_entry ce;
    INIT_CLASS_ENTRY(ce, "SEPAStatementParser", statement_methods);
    zend_class_entry* registered = zend_register_internal_class(&ce);
    registered->create_object = statement_object_create;
    sepa_refuse_serialization(registered);

    statement_object_handlers = std_object_handlers;
    statement_object_handlers.offset = offsetof(statement_object_t, std);
    statement_object_handlers.free_obj = statement_object_free;
    statement_object_handlers.clone_obj = nullptr;
}
