// The records of a statement file as script arrays.
#pragma once

#include "sepa/binding/php_engine.h"
#include "sepa/statement/mt940.h"

// Makes the texts of the arrays' keys; called once, by the module's start.
void statement_arrays_startup();

// Makes the list of all statements of `handle`, which has some.
void statement_arrays_return(zval* return_value, const sepa_stmt_parser_t* handle);
