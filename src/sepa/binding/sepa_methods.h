// Handlers and argument information of class SEPA, kept in step with
// sepa.stub.php by hand.
#pragma once

#include "sepa/binding/php_engine.h"

// clang-format off
#define SEPA_ONE_ARGUMENT(method, argument)                   \
    ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_##method, 0, 0, 1)    \
        ZEND_ARG_INFO(0, argument)                            \
    ZEND_END_ARG_INFO()
// clang-format on

SEPA_ONE_ARGUMENT(construct, msgtype)
SEPA_ONE_ARGUMENT(iban, iban)
SEPA_ONE_ARGUMENT(bic, bic)
SEPA_ONE_ARGUMENT(name, name)
SEPA_ONE_ARGUMENT(identifier, identifier)
SEPA_ONE_ARGUMENT(date, date)
SEPA_ONE_ARGUMENT(type, type)
SEPA_ONE_ARGUMENT(batchbooking, batchbooking)
SEPA_ONE_ARGUMENT(msgid, msgid)

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_add, 0, 0, 1)
ZEND_ARG_ARRAY_INFO(0, tx, 0)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_none, 0, 0, 0)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_init, 0, 0, 2)
ZEND_ARG_INFO(0, option)
ZEND_ARG_INFO(0, value)
ZEND_END_ARG_INFO()

// All four count as required; that the status may be left out is the parameter
// parser's business.
ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_iban_convert, 0, 0, 4)
ZEND_ARG_INFO(0, country)
ZEND_ARG_INFO(0, account)
ZEND_ARG_INFO(0, bank_id)
ZEND_ARG_INFO(1, status)
ZEND_END_ARG_INFO()

ZEND_METHOD(SEPA, __construct);
ZEND_METHOD(SEPA, setIBAN);
ZEND_METHOD(SEPA, setBIC);
ZEND_METHOD(SEPA, setName);
ZEND_METHOD(SEPA, setCreditorIdentifier);
ZEND_METHOD(SEPA, setDate);
ZEND_METHOD(SEPA, setDDType);
ZEND_METHOD(SEPA, setBatchBooking);
ZEND_METHOD(SEPA, setMessageId);
ZEND_METHOD(SEPA, add);
ZEND_METHOD(SEPA, toXML);
ZEND_METHOD(SEPA, init);
ZEND_METHOD(SEPA, IBAN_convert);
ZEND_METHOD(SEPA, IBAN_getBIC);
ZEND_METHOD(SEPA, IBAN_check);
ZEND_METHOD(SEPA, BIC_getBankName);
ZEND_METHOD(SEPA, BIC_getBankFlags);

// Registers the class; called once, by the module's start.
void sepa_class_register();
