// Handlers and argument information of class SEPA, kept in step with
// sepa.stub.php by hand.
#pragma once

#include "binding/sepa_module.h"

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_construct, 0, 0, 1)
ZEND_ARG_INFO(0, msgtype)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_iban, 0, 0, 1)
ZEND_ARG_INFO(0, iban)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_bic, 0, 0, 1)
ZEND_ARG_INFO(0, bic)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_name, 0, 0, 1)
ZEND_ARG_INFO(0, name)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_identifier, 0, 0, 1)
ZEND_ARG_INFO(0, identifier)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_date, 0, 0, 1)
ZEND_ARG_INFO(0, date)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_type, 0, 0, 1)
ZEND_ARG_INFO(0, type)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_batchbooking, 0, 0, 1)
ZEND_ARG_INFO(0, batchbooking)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sepa_msgid, 0, 0, 1)
ZEND_ARG_INFO(0, msgid)
ZEND_END_ARG_INFO()

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
