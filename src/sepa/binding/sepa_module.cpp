#include "sepa/binding/sepa_module.h"

#include "sepa/binding/sepa_exception.h"
#include "sepa/binding/sepa_methods.h"
#include "sepa/binding/statement_class.h"
#include "sepa/directory/bank_directory.h"
#include "sepa/message/sepa.h"
#include "sepa/statement/mt940.h"

// clang-format off
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
    sepa_class_register();
    sepa_exception_register();
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
