// The version of each IBAN rule that this code was written from, as the rule
// words of the bank lists (number x 100 + version) tell it. Who changes a rule
// changes its version here; the generator of the bank directory warns of
// others.
#pragma once

#include <cstdint>

#include "sepa/iban/iban.h"

// No list has named the rule so far: any version is news.
constexpr int8_t unseen = -1;

// clang-format off
constexpr int8_t rule_versions[] = {
    // 0       1       2       3       4       5       6       7       8       9
       0,      0, unseen, unseen,      0,      3,      0,      0,      0, unseen,  //  0
       1,      0,      1,      1,      0,      1,      0,      0,      0, unseen,  // 10
       2,      1,      0,      0,      0, unseen,      0,      0,      0,      0,  // 20
  unseen, unseen,      0,      1,      0,      1,      0,      0,      0,      0,  // 30
  unseen,      0,      1, unseen,      0, unseen,      0,      0, unseen,      1,  // 40
       0,      0, unseen,      0, unseen, unseen, unseen,      0,                  // 50
};
// clang-format on
static_assert(sizeof rule_versions / sizeof rule_versions[0] == IBAN_RULE_COUNT, "a rule lacks its version");
