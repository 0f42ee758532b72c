// The character test of an add, whose rulebook stays the same to its end.
#pragma once

#include "message/rulebook.h"

namespace sepa_internal {

// As sepa_check_charset, under `rulebook`. `text` is not null.
bool check_charset(const rulebook_t& rulebook, const char* text, char* bad, int level);

}  // namespace sepa_internal
