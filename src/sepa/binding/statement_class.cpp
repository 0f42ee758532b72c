#include "sepa/binding/statement_class.h"

#include "sepa/binding/handle_object.h"
#include "sepa/binding/sepa_exception.h"
#include "sepa/binding/statement_arrays.h"

using statement_object_t = handle_object_t<sepa_stmt_parser_t, sepa_stmt_parser_free>;

// The handle of `$this`; null, with the exception raised, if it has none.
static sepa_stmt_parser_t* checked_handle(zval* self) {
    sepa_stmt_parser_t* handle = statement_object_t::handle_of(Z_OBJ_P(self));
    if (!handle) sepa_throw("invalid sepa_stmt_parser_t handle", 0);
    return handle;
}

static ZEND_METHOD(SEPAStatementParser, __construct) {
    (void)return_value;
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    if (!handle) {
        sepa_throw("can't create SEPAStatementParser object", SEPA_CODE_CONSTRUCTOR);
        return;
    }
    statement_object_t::replace(ZEND_THIS, handle);
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
    statement_object_t::register_class("SEPAStatementParser", statement_methods);
}
