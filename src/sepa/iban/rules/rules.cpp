#include "sepa/iban/rules/rules.h"

using namespace sepa_internal;

#define SEPA_RULE_FUNCTION(rule, version) rule,
const iban_rule_fn iban_rules[] = {SEPA_IBAN_RULES(SEPA_RULE_FUNCTION)};
#undef SEPA_RULE_FUNCTION
static_assert(sizeof iban_rules / sizeof iban_rules[0] == IBAN_RULE_COUNT);
