// The script class SEPAException.
#pragma once

#include "sepa/binding/php_engine.h"

// Code of exceptions that constructors raise, and of an unknown statement format.
constexpr zend_long SEPA_CODE_CONSTRUCTOR = 42;

// The one way in which a failure becomes a SEPAException.
void sepa_throw(const char* message, zend_long code);

// Registers the class; called once, by the module's start.
void sepa_exception_register();
