#include "binding/sepa_methods.h"
#include "iban/iban.h"

ZEND_METHOD(SEPA, init) {
    zend_long option;
    char* value;
    size_t length;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "ls", &option, &value, &length) == FAILURE) return;
    RETURN_BOOL(sepa_init(option, value));
}

ZEND_METHOD(SEPA, IBAN_check) {
    char* iban;
    size_t length;
    if (zend_parse_parameters(ZEND_NUM_ARGS(), "s", &iban, &length) == FAILURE) return;
    RETURN_BOOL(IBAN_check(iban, nullptr));
}
