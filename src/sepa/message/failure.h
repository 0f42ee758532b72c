// How the functions of this folder fail: the reason goes into the handle, and
// the result is 0. Texts that more than one of them gives stand here.
#pragma once

#include "sepa/message/sepa.h"

namespace sepa_internal {

constexpr const char* unknown_instrument = "Unknown/unsupported LocalInstrumentCode (setDDType)";

// Sets last_error to a constant text. Returns 0.
int fail(sepa_t* handle, const char* text);

// Composes last_error in error_buffer, cut to fit. Returns 0.
int fail_with(sepa_t* handle, const char* format, ...) __attribute__((format(printf, 2, 3)));

}  // namespace sepa_internal
