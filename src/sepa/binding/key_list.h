// Turns a script array into the key list that the library takes.
#pragma once

#include "sepa/binding/php_engine.h"
#include "sepa/message/sepa.h"

constexpr uint32_t small_list = 32;  // entries that need no allocation

// A number key as text. It is cut to 8 characters, sign included: no key of the
// library is a number, but a refusal quotes it, and scripts compare that.
constexpr size_t number_key_size = 10, number_key_limit = 9;

// The list, and what its texts live in. Plain storage on the caller's frame.
struct key_list_t {
    sepa_pair_t* pairs;  // keys point into the array or `number_keys`
    uint32_t count;
    zend_string** made;  // texts made of values that were none, one reference each
    uint32_t made_count;
    char (*number_keys)[number_key_size];
    zend_array* owned_array;  // the copy that was walked, or null
    sepa_pair_t small_pairs[small_list];
    zend_string* small_made[small_list];
    char small_number_keys[small_list][number_key_size];
};

// Fills `list` from `array`, in the array's order, by the engine's rules of
// conversion, which can run script code. Texts stay the array's: no script may
// run before key_list_free. Returns false, with nothing to free,
// if that left EG(exception) set or else if memory ran out. Otherwise release
// with key_list_free.
bool key_list_from_array(key_list_t* list, zend_array* array);
void key_list_free(key_list_t* list);
