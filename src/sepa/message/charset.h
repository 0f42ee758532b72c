// The character test of an add, whose rulebook stays the same to its end.
#pragma once

#include "sepa/message/record_text.h"
#include "sepa/message/rulebook.h"

namespace sepa_internal {

// As sepa_check_charset, under `rulebook`, for a text of known length. Adds
// up what escaping adds.
bool check_charset(const rulebook_t& rulebook, text_t* text, char* bad, int level);

}  // namespace sepa_internal
