// The functions of the IBAN rules.
#pragma once

#include <type_traits>

#include "sepa/iban/iban.h"
#include "sepa/iban/rules/rule_rows.h"

namespace sepa_internal {

using iban_rule_t = std::remove_pointer_t<iban_rule_fn>;

#define SEPA_DECLARE_RULE(rule, version) iban_rule_t rule;
SEPA_IBAN_RULES(SEPA_DECLARE_RULE)
#undef SEPA_DECLARE_RULE

}  // namespace sepa_internal
