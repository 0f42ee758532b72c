// The document of a credit transfer message.
#pragma once

#include <string_view>

#include "sepa/message/sepa.h"

namespace sepa_internal {

// Writes a credit transfer message as pain.001 after `head`. Returns 1, or 0 with the reason in last_error.
int write_credit_transfer(sepa_t* handle, std::string_view head, const sepa_room_t& room);

}  // namespace sepa_internal
