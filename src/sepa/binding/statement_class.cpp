#include "sepa/binding/statement_class.h"

#include <cstddef>

#include "sepa/binding/sepa_module.h"
#include "sepa/binding/statement_arrays.h"

// A script object. The handle stands before the engine's part, which the
// property table follows and which so must stay last.
struct statement_object_t {
    sepa_stmt_parser_t* handle;  // null until __construct has succeeded
    zend_object std;
};

static zend_object_handlers statement_object_handlers;

// An object's handle, to read or to replace.
static sepa_stmt_parser_t*& handle_of(zend_object* object) {
    auto start = reinterpret_cast<char*>(object) - offsetof(statement_object_t, std);
    return reinterpret_cast<statement_object_t*>(start)->handle;
}

// The handle of `$this`; null, with the exception raised, if it has none.
static sepa_stmt_parser_t* checked_handle(zval* self) {
    sepa_stmt_parser_t* handle = handle_of(Z_OBJ_P(self));
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
    sepa_stmt_parser_t*& handle = handle_of(object);
    sepa_stmt_parser_free(handle);
    handle = nullptr;
    zend_object_std_dtor(object);
}

static ZEND_METHOD(SEPAStatementParser, __construct) {
    (void)return_value;
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    if (!handle) {
        sepa_throw("can't create SEPAStatementParser object", SEPA_CODE_CONSTRUCTOR);
        return;
    }
    sepa_stmt_parser_t*& held = handle_of(Z_OBJ_P(ZEND_THIS));
    sepa_stmt_parser_free(held);
    held = handle;
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
    sepa_stmt_parser_t* handle = checked_handle(ZEND_THIS);
    if (!handle) return;
    if (!sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, filename)) {
        sepa_throw(handle->error, 0);
        return;
    }
    RETURN_TRUE;
}

static ZEND_METHOD(SEPAStatementParser, getStatements) {
    sepa_stmt_parser_t* handle = checked_handle(ZEND_THIS);
    if (handle && handle->first) statement_arrays_return(return_value, handle);
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
    statement_arrays_startup();

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
