// The document of a direct debit message.
#pragma once

#include <string_view>

#include "sepa/message/sepa.h"

namespace sepa_internal {

// Writes a direct debit message as pain.008 after `head`. Returns 1, or 0 with the reason in last_error.
int write_direct_debit(sepa_t* handle, std::string_view head, const sepa_room_t& room);

}  // namespace sepa_internal
