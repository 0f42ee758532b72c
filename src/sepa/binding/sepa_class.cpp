#include "sepa/binding/handle_object.h"
#include "sepa/binding/key_list.h"
#include "sepa/binding/sepa_exception.h"
#include "sepa/binding/sepa_methods.h"

using sepa_object_t = handle_object_t<sepa_t, sepa_free>;

// The handle of `$this`; null, with the exception raised, if it has none.
static sepa_t* checked_handle(zval* self) {
    sepa_t* handle = sepa_object_t::handle_of(Z_OBJ_P(self));
    if (!handle) sepa_throw("Invalid sepa_t handle (NULL)", 0);
    return handle;
}

// true on success, else the exception with the library's reason.
static void return_result(zval* return_value, sepa_t* handle, int result) {
    if (result == 1) {
        ZVAL_TRUE(return_value);
    } else {
        sepa_throw(handle->last_error, 0);
    }
}

ZEND_METHOD(SEPA, __construct) {
    (void)return_value;
    zend_long msgtype;
    if (SEPA_PARSE_PARAMETERS("l", &msgtype) == FAILURE) return;
    if (msgtype != SEPA_MSGTYPE_DDI && msgtype != SEPA_MSGTYPE_CTI) {
        sepa_throw("invalid/unknown message type", SEPA_CODE_CONSTRUCTOR);
        return;
    }
    sepa_t* handle = sepa_new(msgtype);
    if (!handle) {
        sepa_throw("can't create SEPA message object", SEPA_CODE_CONSTRUCTOR);
        return;
    }
    sepa_object_t::replace(ZEND_THIS, handle);
}

// A setter that takes one text.
static void set_text(INTERNAL_FUNCTION_PARAMETERS, int (*setter)(sepa_t*, const char*)) {
    char* text;
    size_t length;
    if (SEPA_PARSE_PARAMETERS("s", &text, &length) == FAILURE) return;
    sepa_t* handle = checked_handle(ZEND_THIS);
    if (handle) return_result(return_value, handle, setter(handle, text));
}

ZEND_METHOD(SEPA, setIBAN) { set_text(INTERNAL_FUNCTION_PARAM_PASSTHRU, sepa_setIBAN); }
ZEND_METHOD(SEPA, setBIC) { set_text(INTERNAL_FUNCTION_PARAM_PASSTHRU, sepa_setBIC); }
ZEND_METHOD(SEPA, setName) { set_text(INTERNAL_FUNCTION_PARAM_PASSTHRU, sepa_setName); }
ZEND_METHOD(SEPA, setCreditorIdentifier) { set_text(INTERNAL_FUNCTION_PARAM_PASSTHRU, sepa_setCreditorIdentifier); }
ZEND_METHOD(SEPA, setDate) { set_text(INTERNAL_FUNCTION_PARAM_PASSTHRU, sepa_setDate); }
ZEND_METHOD(SEPA, setMessageId) { set_text(INTERNAL_FUNCTION_PARAM_PASSTHRU, sepa_setMessageId); }

ZEND_METHOD(SEPA, setDDType) {
    zend_long type;
    if (SEPA_PARSE_PARAMETERS("l", &type) == FAILURE) return;
    sepa_t* handle = checked_handle(ZEND_THIS);
    if (handle) return_result(return_value, handle, sepa_setDDType(handle, type));
}

ZEND_METHOD(SEPA, setBatchBooking) {
    bool batch_booking;
    if (SEPA_PARSE_PARAMETERS("b", &batch_booking) == FAILURE) return;
    sepa_t* handle = checked_handle(ZEND_THIS);
    if (handle) return_result(return_value, handle, sepa_setBatchBooking(handle, batch_booking));
}

ZEND_METHOD(SEPA, add) {
    zval* tx;
    if (SEPA_PARSE_PARAMETERS("a", &tx) == FAILURE) return;
    sepa_t* handle = checked_handle(ZEND_THIS);
    if (!handle) return;
    key_list_t list;
    bool complete = key_list_from_array(&list, Z_ARRVAL_P(tx));
    if (EG(exception)) return;
    if (!complete) {
        sepa_throw(SEPA_OUT_OF_MEMORY, 0);
        return;
    }
    // Converting values can run script code that constructs the object anew.
    handle = sepa_object_t::handle_of(Z_OBJ_P(ZEND_THIS));
    int added = sepa_add_pairs(handle, list.pairs, list.count);
    key_list_free(&list);
    return_result(return_value, handle, added);
}

// A document goes straight into the engine's string.
struct document_room_t {
    zend_string* text;
    bool refused;  // the engine is to end the request for the document's size,
    bool left;     // or has done so by its jump
};

static char* take_document_room(void* context, size_t size) {
    auto room = static_cast<document_room_t*>(context);
    zend_try { room->text = sepa_new_document(size); }
    zend_catch { room->left = true; }
    zend_end_try();
    room->refused = !room->text;
    if (room->refused) return nullptr;
    ZSTR_VAL(room->text)[size] = '\0';
    return ZSTR_VAL(room->text);
}

ZEND_METHOD(SEPA, toXML) {
    sepa_t* handle = checked_handle(ZEND_THIS);
    if (!handle) return;
    // An output callback that is told of too little memory cannot get at it.
    sepa_t*& held = sepa_object_t::handle_of(Z_OBJ_P(ZEND_THIS));
    held = nullptr;
    document_room_t room = {};
    int written = sepa_write_document(handle, {take_document_room, &room});
    sepa_free(held);  // which it may have constructed
    held = handle;
    if (room.left) zend_bailout();
    if (written) {
        RETVAL_STR(room.text);
    } else if (!room.refused) {
        sepa_throw(handle->last_error, 0);
    }
}

// clang-format off
static const zend_function_entry sepa_methods[] = {
    ZEND_ME(SEPA, __construct, arginfo_sepa_construct, ZEND_ACC_PUBLIC | ZEND_ACC_CTOR)
    ZEND_ME(SEPA, setIBAN, arginfo_sepa_iban, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, setBIC, arginfo_sepa_bic, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, setName, arginfo_sepa_name, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, setCreditorIdentifier, arginfo_sepa_identifier, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, setDate, arginfo_sepa_date, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, setDDType, arginfo_sepa_type, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, setBatchBooking, arginfo_sepa_batchbooking, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, setMessageId, arginfo_sepa_msgid, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, add, arginfo_sepa_add, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, toXML, arginfo_sepa_none, ZEND_ACC_PUBLIC)
    ZEND_ME(SEPA, init, arginfo_sepa_init, ZEND_ACC_PUBLIC | ZEND_ACC_STATIC)
    ZEND_ME(SEPA, IBAN_convert, arginfo_sepa_iban_convert, ZEND_ACC_PUBLIC | ZEND_ACC_STATIC)
    ZEND_ME(SEPA, IBAN_getBIC, arginfo_sepa_iban, ZEND_ACC_PUBLIC | ZEND_ACC_STATIC)
    ZEND_ME(SEPA, IBAN_check, arginfo_sepa_iban, ZEND_ACC_PUBLIC | ZEND_ACC_STATIC)
    ZEND_ME(SEPA, BIC_getBankName, arginfo_sepa_bic, ZEND_ACC_PUBLIC | ZEND_ACC_STATIC)
    ZEND_ME(SEPA, BIC_getBankFlags, arginfo_sepa_bic, ZEND_ACC_PUBLIC | ZEND_ACC_STATIC)
    ZEND_FE_END
};
// clang-format on

void sepa_class_register() { sepa_object_t::register_class("SEPA", sepa_methods); }
