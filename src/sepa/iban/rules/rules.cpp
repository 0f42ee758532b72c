#include "sepa/iban/rules/rules.h"

using namespace sepa_internal;

// clang-format off
const iban_rule_fn iban_rules[] = {
    rule_00, rule_01, rule_02, rule_03, rule_04, rule_05, rule_06, rule_07, rule_08, rule_09,
    rule_10, rule_11, rule_12, rule_13, rule_14, rule_15, rule_16, rule_17, rule_18, rule_19,
    rule_20, rule_21, rule_22, rule_23, rule_24, rule_25, rule_26, rule_27, rule_28, rule_29,
    rule_30, rule_31, rule_32, rule_33, rule_34, rule_35, rule_36, rule_37, rule_38, rule_39,
    rule_40, rule_41, rule_42, rule_43, rule_44, rule_00, rule_46, rule_47, rule_48, rule_49,
    rule_50, rule_51, rule_52, rule_53, rule_54, rule_55, rule_56, rule_57,
};
// clang-format on
static_assert(sizeof iban_rules / sizeof iban_rules[0] == IBAN_RULE_COUNT, "iban_rules lacks a rule");
