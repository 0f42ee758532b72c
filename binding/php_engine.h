// All engine headers, and every difference between engine versions from 7.3
// to 8.4. Only this folder includes it.
#pragma once
#pragma GCC system_header  // the engine's headers do not meet our warning flags

#include "php.h"

#include "ext/standard/info.h"
#include "zend_exceptions.h"
#include "zend_interfaces.h"

// 7.4 brought ZEND_THIS; 8.0 dropped case-insensitive constants.
#ifndef ZEND_THIS
#define ZEND_THIS (&EX(This))
#endif
#ifndef CONST_CS
#define CONST_CS 0
#endif

// What a module's start function returns: int, or zend_result from 8.x on.
#include <type_traits>
using module_result_t = std::invoke_result_t<decltype(zend_module_entry::module_startup_func), int, int>;
