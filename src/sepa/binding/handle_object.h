// A script object around a handle of the library: what both classes share.
#pragma once

#include <cstddef>

#include "sepa/binding/php_engine.h"

// The handle stands before the engine's part, which the property table follows
// and which so must stay last.
template <typename Handle, void (*release)(Handle*)>
struct handle_object_t {
    Handle* handle;  // null until __construct has succeeded
    zend_object std;

    // An object's handle, to read or to replace.
    static Handle*& handle_of(zend_object* object) {
        auto start = reinterpret_cast<char*>(object) - offsetof(handle_object_t, std);
        return reinterpret_cast<handle_object_t*>(start)->handle;
    }

    // A handle that has been made takes the place of an earlier construction's.
    static void replace(zval* self, Handle* made) {
        Handle*& held = handle_of(Z_OBJ_P(self));
        release(held);
        held = made;
    }

    static void register_class(const char* name, const zend_function_entry* methods) {
        zend_class_entry ce;
        INIT_CLASS_ENTRY_EX(ce, name, strlen(name), methods);
        zend_class_entry* registered = zend_register_internal_class(&ce);
        registered->create_object = create;
        sepa_refuse_serialization(registered);
        handlers = std_object_handlers;
        handlers.offset = offsetof(handle_object_t, std);
        handlers.free_obj = free;
        handlers.clone_obj = nullptr;
    }

private:
    static inline zend_object_handlers handlers;

    static zend_object* create(zend_class_entry* ce) {
        auto object =
            static_cast<handle_object_t*>(ecalloc(1, sizeof(handle_object_t) + zend_object_properties_size(ce)));
        zend_object_std_init(&object->std, ce);
        object_properties_init(&object->std, ce);
        object->std.handlers = &handlers;
        return &object->std;
    }

    static void free(zend_object* object) {
        Handle*& handle = handle_of(object);
        release(handle);
        handle = nullptr;
        zend_object_std_dtor(object);
    }
};
