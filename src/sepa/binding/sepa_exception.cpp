#include "sepa/binding/sepa_exception.h"

static zend_class_entry* sepa_exception_ce;

void sepa_throw(const char* message, zend_long code) {
    zend_throw_exception(sepa_exception_ce, message ? message : "", code);
}

void sepa_exception_register() {
    zend_class_entry ce;
    INIT_CLASS_ENTRY(ce, "SEPAException", nullptr);
    sepa_exception_ce = zend_register_internal_class_ex(&ce, zend_ce_exception);
}
