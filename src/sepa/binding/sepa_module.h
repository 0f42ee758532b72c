// The script binding: what its sources share.
//
// Script code can run while a method of ours is under way, in these places alone
// (7.3 to 8.6):
//   - where arguments are parsed. A __toString; warnings, which an error handler
//     or an output callback is told of: half a number (7.x), null and the fraction
//     of a float (from 8.1 on), NAN (from 8.5 on). The call's frame holds the
//     texts; the object's handle is asked for after them.
//   - where the values of an add become texts (key_list.cpp): the same, and the
//     warning of an array.
//   - where the status of IBAN_convert replaces a value: its destructor. The IBAN
//     is on our stack, and nothing else of the script is looked at afterwards.
// Such code can construct the object anew, change every variable, throw, and be
// a fiber that never comes back. Ticks, signals and the garbage collector run
// script code in these places too, and nowhere else in a call. Where memory is
// short the request ends without coming back to us, but for toXML, which has to
// clear up; of that no handler is told, and an output callback up to 7.4.
#pragma once

#include "sepa/binding/php_engine.h"
#include "sepa/message/sepa.h"

#define SEPA_VERSION "2.28"

extern zend_class_entry* sepa_ce;
extern zend_class_entry* sepa_exception_ce;
extern zend_object_handlers sepa_object_handlers;

// Code of exceptions that constructors raise, and of an unknown statement format.
constexpr zend_long SEPA_CODE_CONSTRUCTOR = 42;

// A script object of class SEPA. The handle stands before the engine's
// part, which is followed by the property table and so must stay last.
struct sepa_object_t {
    sepa_t* handle;  // null until __construct has succeeded
    zend_object std;
};

// The handle of an object.
sepa_t*& sepa_handle_of(zend_object* object);

// The one way in which a failure becomes a SEPAException.
void sepa_throw(const char* message, zend_long code);

// The methods of SEPA, in the order that scripts see; sepa_class.cpp has the
// instance methods, sepa_static.cpp the static ones.
extern const zend_function_entry sepa_methods[];

zend_object* sepa_object_create(zend_class_entry* ce);
void sepa_object_dtor(zend_object* object);  // all that it does is the engine's own
void sepa_object_free(zend_object* object);
