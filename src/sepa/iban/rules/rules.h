// The IBAN rules by number. Rule 45 is rule 0.
#pragma once

#include <type_traits>

#include "sepa/iban/iban.h"

namespace sepa_internal {

using iban_rule_t = std::remove_pointer_t<iban_rule_fn>;

// plain_rules.cpp
iban_rule_t rule_00, rule_01, rule_02, rule_03, rule_04, rule_06, rule_07, rule_08;
iban_rule_t rule_12, rule_13, rule_14, rule_15, rule_16, rule_17, rule_18, rule_19;
iban_rule_t rule_22, rule_23, rule_24, rule_25, rule_26, rule_27, rule_28, rule_30;
iban_rule_t rule_37, rule_38, rule_39, rule_40, rule_44, rule_46, rule_48;
iban_rule_t rule_50, rule_51, rule_55, rule_57;
// rule_05.cpp, rule_20.cpp
iban_rule_t rule_05, rule_20;
// digit_rules.cpp
iban_rule_t rule_09, rule_10, rule_11, rule_21, rule_29, rule_36, rule_41, rule_42, rule_43, rule_47, rule_49;
// branch_rules.cpp
iban_rule_t rule_31, rule_32, rule_33, rule_34, rule_35;
// conversion_rules.cpp
iban_rule_t rule_52, rule_53, rule_54, rule_56;

}  // namespace sepa_internal
