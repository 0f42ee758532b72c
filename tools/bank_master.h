// The Swiss bank master 3.0: JSON, an entry for each bank id.
#pragma once

#include <vector>

#include "list_text.h"

// Whether a text can only be this form: it begins with a bracket or a brace.
bool is_bank_master(const list_text_t& text);

// The rows id, BIC, name, postal code, city and country of all entries, in the
// order of the list, a BIC as it stands there. An id that was merged into
// another has a row with what the other one has. Keys may stand in any order,
// and unknown ones are passed over; everything else that the list may not hold
// goes to stop. Time and memory grow with the list alone, however it is nested.
std::vector<row_t> read_bank_master(const list_text_t& text);
