#include "sepa/binding/key_list.h"

#include <cmath>
#include <cstdlib>

static bool reserve(key_list_t* list, uint32_t count) {
    if (count <= small_list) {
        list->pairs = list->small_pairs;
        list->made = list->small_made;
        list->number_keys = list->small_number_keys;
        return true;
    }
    list->pairs = static_cast<sepa_pair_t*>(malloc(count * sizeof(sepa_pair_t)));
    list->made = static_cast<zend_string**>(malloc(count * sizeof(zend_string*)));
    list->number_keys = static_cast<char(*)[number_key_size]>(malloc(count * size_t{number_key_size}));
    return list->pairs && list->made && list->number_keys;
}

static void free_storage(key_list_t* list) {
    if (list->pairs == list->small_pairs) return;
    free(list->pairs);
    free(list->made);
    free(list->number_keys);
}

// Whether turning a value into text runs no script code, on any engine. All
// else might: a __toString, an error handler that is told of an array and, from
// 8.5 on, of NAN, and whatever a coming engine warns about.
static bool is_plain(const zval* value) {
    switch (Z_TYPE_P(value)) {
        case IS_STRING:
        case IS_LONG:
        case IS_NULL:
        case IS_FALSE:
        case IS_TRUE: return true;
        case IS_DOUBLE: return std::isfinite(Z_DVAL_P(value));
        default: return false;
    }
}

// A copy of `array` whose values are texts, each as its turn in the walk found
// it. A script that runs in mid-walk could change the array under the walk, or
// the variable behind a reference, even while that is turned into text; and it
// could be a fiber that never comes back, so that no memory but the engine's
// may be held here. Stops when the script has thrown.
static zend_array* with_texts(zend_array* array) {
    zend_array* copy = zend_array_dup(array);
    zval* value;
    ZEND_HASH_FOREACH_VAL_IND(copy, value) {
        zval held, old, *plain = value;
        ZVAL_DEREF(plain);
        ZVAL_COPY(&held, plain);
        zend_string* text = zval_get_string(&held);
        zval_ptr_dtor(&held);
        ZVAL_COPY_VALUE(&old, value);
        ZVAL_STR(value, text);
        zval_ptr_dtor(&old);
        if (EG(exception)) break;
    }
    ZEND_HASH_FOREACH_END();
    return copy;
}

static void add_pair(key_list_t* list, zend_ulong number, zend_string* key, zval* value) {
    sepa_pair_t* pair = &list->pairs[list->count];
    zend_string* text = Z_TYPE_P(value) == IS_STRING ? Z_STR_P(value) : zval_get_string(value);
    if (Z_TYPE_P(value) != IS_STRING) list->made[list->made_count++] = text;
    pair->value = ZSTR_VAL(text);
    if (key) {
        pair->key = ZSTR_VAL(key);
        pair->key_length = ZSTR_LEN(key);
    } else {
        char* digits = list->number_keys[list->count];
        ap_php_snprintf(digits, number_key_limit, "%ld", static_cast<long>(number));
        pair->key = digits;
        pair->key_length = strlen(digits);
    }
    list->count += 1;
}

// False at the first value that is not plain.
static bool fill(key_list_t* list, zend_array* array) {
    zend_ulong number;
    zend_string* key;
    zval* value;
    ZEND_HASH_FOREACH_KEY_VAL_IND(array, number, key, value) {
        ZVAL_DEREF(value);
        if (!is_plain(value)) return false;
        add_pair(list, number, key, value);
    }
    ZEND_HASH_FOREACH_END();
    return true;
}

// The engine leaves a request by longjmp; it knows nothing of malloc. A
// function of its own, so that no local of the caller lives across the setjmp.
[[gnu::noinline]] static bool fill_or_free(key_list_t* list, zend_array* array) {
    volatile bool filled = false;
    zend_try { filled = fill(list, array); }
    zend_catch {
        free_storage(list);
        zend_bailout();
    }
    zend_end_try();
    return filled;
}

enum taken_t { all_taken, not_plain, no_memory };

static taken_t take(key_list_t* list, zend_array* array) {
    list->count = list->made_count = 0;
    if (!reserve(list, zend_hash_num_elements(array))) return no_memory;
    bool filled = list->pairs == list->small_pairs ? fill(list, array) : fill_or_free(list, array);
    return filled ? all_taken : not_plain;
}

bool key_list_from_array(key_list_t* list, zend_array* array) {
    list->owned_array = nullptr;
    taken_t taken = take(list, array);
    if (taken == not_plain) {
        key_list_free(list);
        list->made_count = 0;
        list->pairs = list->small_pairs;
        list->owned_array = with_texts(array);
        if (!EG(exception)) taken = take(list, list->owned_array);
    }
    if (taken == all_taken && !EG(exception)) return true;
    key_list_free(list);
    return false;
}

void key_list_free(key_list_t* list) {
    for (uint32_t i = 0; i < list->made_count; ++i) zend_string_release(list->made[i]);
    free_storage(list);
    if (list->owned_array) zend_array_destroy(list->owned_array);
}
