// The IBAN rules, in the order of their numbers: each one's function, and the version
// that it was written from, as the rule words of the bank lists (number x 100 +
// version) tell it. Who changes a rule changes its version; the generator of the
// bank directory warns of others.
#pragma once

#include <cstdint>

#include "sepa/iban/iban.h"

namespace sepa_internal {

// No list has named the rule so far: any version is news.
constexpr int8_t unseen = -1;

// From 0 on, five a line. Rule 45 is rule 0.
// clang-format off
#define SEPA_IBAN_RULES(RULE) \
    RULE(rule_00, 0) RULE(rule_01, 0) RULE(rule_02, unseen) RULE(rule_03, unseen) RULE(rule_04, 0) \
    RULE(rule_05, 3) RULE(rule_06, 0) RULE(rule_07, 0) RULE(rule_08, 0) RULE(rule_09, unseen)      \
    RULE(rule_10, 1) RULE(rule_11, 0) RULE(rule_12, 1) RULE(rule_13, 1) RULE(rule_14, 0)           \
    RULE(rule_15, 1) RULE(rule_16, 0) RULE(rule_17, 0) RULE(rule_18, 0) RULE(rule_19, unseen)      \
    RULE(rule_20, 2) RULE(rule_21, 1) RULE(rule_22, 0) RULE(rule_23, 0) RULE(rule_24, 0)           \
    RULE(rule_25, unseen) RULE(rule_26, 0) RULE(rule_27, 0) RULE(rule_28, 0) RULE(rule_29, 0)      \
    RULE(rule_30, unseen) RULE(rule_31, unseen) RULE(rule_32, 0) RULE(rule_33, 1) RULE(rule_34, 0) \
    RULE(rule_35, 1) RULE(rule_36, 0) RULE(rule_37, 0) RULE(rule_38, 0) RULE(rule_39, 0)           \
    RULE(rule_40, unseen) RULE(rule_41, 0) RULE(rule_42, 1) RULE(rule_43, unseen) RULE(rule_44, 0) \
    RULE(rule_00, unseen) RULE(rule_46, 0) RULE(rule_47, 0) RULE(rule_48, unseen) RULE(rule_49, 1) \
    RULE(rule_50, 0) RULE(rule_51, 0) RULE(rule_52, unseen) RULE(rule_53, 0) RULE(rule_54, unseen) \
    RULE(rule_55, unseen) RULE(rule_56, unseen) RULE(rule_57, 0)
// clang-format on

#define SEPA_RULE_VERSION(rule, version) version,
constexpr int8_t rule_versions[] = {SEPA_IBAN_RULES(SEPA_RULE_VERSION)};
#undef SEPA_RULE_VERSION
static_assert(sizeof rule_versions / sizeof rule_versions[0] == IBAN_RULE_COUNT, "a number of a rule has no row");

}  // namespace sepa_internal
