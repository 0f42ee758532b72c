// A document's memory in a text buffer.
#pragma once

#include "sepa/message/sepa.h"

namespace sepa_internal {

// Room after the text of a buffer, which counts as used once it is taken.
sepa_room_t room_in(xmlbuf_t* buffer);

}  // namespace sepa_internal
