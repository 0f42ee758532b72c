// All engine headers, and every difference between engine versions from 7.3
// on. Only this folder includes it.
#pragma once
#pragma GCC system_header  // the engine's headers do not meet our warning flags

// All others need php.h before them.
// clang-format off
#include "php.h"

#include "ext/standard/info.h"
#include "zend_exceptions.h"
#include "zend_interfaces.h"
// clang-format on

#include "sepa/platform/pages.h"

// 7.4 brought ZEND_THIS; 8.0 dropped case-insensitive constants.
#ifndef ZEND_THIS
#define ZEND_THIS (&EX(This))
#endif
#ifndef CONST_CS
#define CONST_CS 0
#endif

// The number of arguments is signed up to 7.4. Written here, since compilers
// say nothing about the macros of such a header.
#define SEPA_PARSE_PARAMETERS(...) zend_parse_parameters(ZEND_NUM_ARGS(), __VA_ARGS__)

// serialize() and unserialize() refuse the objects of a class: by a flag of its
// own from 8.1 on, by handlers before.
inline void sepa_refuse_serialization(zend_class_entry* ce) {
#ifdef ZEND_ACC_NOT_SERIALIZABLE
    ce->ce_flags |= ZEND_ACC_NOT_SERIALIZABLE;
#else
    ce->serialize = zend_class_serialize_deny;
    ce->unserialize = zend_class_unserialize_deny;
#endif
}

// An array that is filled once, in place: room for `count` text keys, and a key
// that it has not yet.
#if PHP_VERSION_ID >= 70400
#define SEPA_NEW_ARRAY(array, count)                  \
    do {                                              \
        array_init_size(array, count);                \
        zend_hash_real_init_mixed(Z_ARRVAL_P(array)); \
    } while (0)
#define SEPA_APPEND(array, key, value) _zend_hash_append(array, key, value)
#else
#define SEPA_NEW_ARRAY(array, count) array_init_size(array, count)
#define SEPA_APPEND(array, key, value) zend_hash_add_new(array, key, value)
#endif

// What a module's start function returns: int, or zend_result from 8.x on.
#include <type_traits>
using module_result_t = std::invoke_result_t<decltype(zend_module_entry::module_startup_func), int, int>;

// "sss|z/" with a by-reference argument. The old value goes last, since
// destroying it can run script code that uses the variable. 7.4 brought
// references with a type, which only the engine can assign to; it destroys
// first, so there the old value is held until that is done.
#if PHP_VERSION_ID >= 70400
#define SEPA_ASSIGN_TYPED(reference, value, old)                                 \
    if (Z_ISREF_P(reference) && ZEND_REF_HAS_TYPE_SOURCES(Z_REF_P(reference))) { \
        ZVAL_COPY(&old, Z_REFVAL_P(reference));                                  \
        zend_try_assign_typed_ref_long(Z_REF_P(reference), value);               \
        zval_ptr_dtor(&old);                                                     \
        break;                                                                   \
    }
#else
#define SEPA_ASSIGN_TYPED(reference, value, old)
#endif
#define SEPA_ASSIGN_LONG(reference, value)              \
    do {                                                \
        zval* sepa_target = (reference);                \
        zval sepa_old;                                  \
        SEPA_ASSIGN_TYPED(sepa_target, value, sepa_old) \
        ZVAL_DEREF(sepa_target);                        \
        ZVAL_COPY_VALUE(&sepa_old, sepa_target);        \
        ZVAL_LONG(sepa_target, (value));                \
        zval_ptr_dtor(&sepa_old);                       \
    } while (0)

// Some engines, Debian's 8.2 among them, let an extension's allocations go
// beyond the memory limit, end the request when the call returns, and end the
// whole process at twice the limit. There a large text is asked for in a way
// that may fail, which gives null and ends the request too, and a loop that
// builds a large array looks at the limit itself.
#ifdef femalloc
#define SEPA_NEW_BLOCK(size) femalloc(size, true)
#define SEPA_NEW_STRING(text, length) zend_string_finit(text, length, false, true)
#define SEPA_KEEP_MEMORY_LIMIT()                                                                     \
    do {                                                                                             \
        if (PG(memory_limit) > 0 && zend_memory_usage(true) > static_cast<size_t>(PG(memory_limit))) \
            zend_error_noreturn(E_ERROR, "Allowed memory size of " ZEND_LONG_FMT " bytes exhausted", \
                                PG(memory_limit));                                                   \
    } while (0)
#else
#define SEPA_NEW_BLOCK(size) emalloc(size)
#define SEPA_NEW_STRING(text, length) zend_string_init(text, length, 0)
#define SEPA_KEEP_MEMORY_LIMIT() \
    do {                         \
    } while (0)
#endif

// A string for a document, whose bytes are the caller's to fill. Its pages are
// prepared before anything is there, hence before the string's own head, since
// a page of 2 MB can only be had where nothing is. A fifth of the time of a message.
#ifndef GC_STRING  // 7.x
#define GC_STRING IS_STRING
#endif
inline zend_string* sepa_new_document(size_t length) {
    size_t size = ZEND_MM_ALIGNED_SIZE(_ZSTR_STRUCT_SIZE(length));
    auto string = static_cast<zend_string*>(SEPA_NEW_BLOCK(size));
    if (!string) return nullptr;
    sepa_internal::prepare_pages(string, size);
    GC_SET_REFCOUNT(string, 1);
    GC_TYPE_INFO(string) = GC_STRING;
    ZSTR_H(string) = 0;
    ZSTR_LEN(string) = length;
    return string;
}
