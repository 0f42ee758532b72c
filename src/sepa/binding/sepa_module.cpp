#include "sepa/binding/sepa_module.h"

#include <cstddef>

#include "sepa/binding/sepa_methods.h"
#include "sepa/binding/statement_class.h"
#include "sepa/directory/bank_directory.h"
#include "sepa/statement/mt940.h"

zend_class_entry* sepa_ce;
zend_class_entry* sepa_exception_ce;
zend_object_handlers sepa_object_handlers;

// clang-format off
const zend_function_entry sepa_methods[] = {
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

static const struct {
    const char* name;
    zend_long value;
} constants[] = {
    {"SEPA_DDTYPE_CORE", SEPA_DDTYPE_CORE},
    {"SEPA_DDTYPE_COR1", SEPA_DDTYPE_COR1},
    {"SEPA_DDTYPE_B2B", SEPA_DDTYPE_B2B},
    {"SEPA_MSGTYPE_CTI", SEPA_MSGTYPE_CTI},
    {"SEPA_MSGTYPE_DDI", SEPA_MSGTYPE_DDI},
    {"SEPA_INIT_RULEBOOK", SEPA_INIT_RULEBOOK},
    {"SEPA_SCL_SCT", SEPA_SCL_SCT},
    {"SEPA_SCL_SDD", SEPA_SCL_SDD},
    {"SEPA_SCL_COR1", SEPA_SCL_COR1},
    {"SEPA_SCL_B2B", SEPA_SCL_B2B},
};
// clang-format on

static void register_constant(const char* name, zend_long value, int module_number) {
    zend_register_long_constant(name, strlen(name), value, CONST_CS | CONST_PERSISTENT, module_number);
}

static module_result_t sepa_module_startup(int, int module_number) {
    zend_class_entry ce;
    INIT_CLASS_ENTRY(ce, "SEPA", sepa_methods);
    sepa_ce = zend_register_internal_class(&ce);
    sepa_ce->create_object = sepa_object_create;
    sepa_refuse_serialization(sepa_ce);

    sepa_object_handlers = std_object_handlers;
    sepa_object_handlers.offset = offsetof(sepa_object_t, std);
    sepa_object_handlers.free_obj = sepa_object_free;
    sepa_object_handlers.dtor_obj = sepa_object_dtor;
    sepa_object_handlers.clone_obj = nullptr;

    INIT_CLASS_ENTRY(ce, "SEPAException", nullptr);
    sepa_exception_ce = zend_register_internal_class_ex(&ce, zend_ce_exception);

    for (const auto& constant : constants) register_constant(constant.name, constant.value, module_number);
    statement_class_register();
    register_constant("SEPA_STMT_FORMAT_MT940", SEPA_STMT_FORMAT_MT940, module_number);
    return SUCCESS;
}

static void sepa_module_info(zend_module_entry*) {
    php_info_print_table_start();
    php_info_print_table_header(2, "zalvora", "enabled");
    php_info_print_table_row(2, "Version", SEPA_VERSION);
    php_info_print_table_end();
}

static zend_module_entry sepa_module_entry = {
    STANDARD_MODULE_HEADER,
    "SEPA",
    nullptr,
    sepa_module_startup,
    nullptr,
    nullptr,
    nullptr,
    sepa_module_info,
    SEPA_VERSION,
    STANDARD_MODULE_PROPERTIES,
};

extern "C" {
ZEND_GET_MODULE(sepa)
}
