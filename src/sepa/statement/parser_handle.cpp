#include "sepa/statement/parser_handle.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace sepa_internal {

int parser_error(sepa_stmt_parser_t* handle, const char* format, ...) {
    va_list args;
    va_start(args, format);
    vsnprintf(handle->error, sizeof handle->error, format, args);
    va_end(args);
    return 0;
}

void drop_statements(sepa_stmt_parser_t* handle) {
    handle->first = handle->last = nullptr;
    arena_free(&handle->records, [](void* piece, size_t) { free(piece); });
}

}  // namespace sepa_internal

sepa_stmt_parser_t* sepa_stmt_parser_new() {
    return static_cast<sepa_stmt_parser_t*>(calloc(1, sizeof(sepa_stmt_parser_t)));
}

void sepa_stmt_parser_free(sepa_stmt_parser_t* handle) {
    if (!handle) return;
    sepa_internal::drop_statements(handle);
    if (handle->parser) free(handle->parser->text);
    free(handle->parser);
    free(handle);
}
