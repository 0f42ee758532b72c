#include "sepa/message/failure.h"

#include <cstdarg>
#include <cstdio>

namespace sepa_internal {

int fail(sepa_t* handle, const char* text) {
    handle->last_error = text;
    return 0;
}

int fail_with(sepa_t* handle, const char* format, ...) {
    va_list values;
    va_start(values, format);
    vsnprintf(handle->error_buffer, sizeof handle->error_buffer, format, values);
    va_end(values);
    handle->last_error = handle->error_buffer;
    return 0;
}

}  // namespace sepa_internal
