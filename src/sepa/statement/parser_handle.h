// What parsing and loading change in the handle beside its records.
#pragma once

#include <new>

#include "sepa/platform/record_arena.h"
#include "sepa/statement/mt940.h"

namespace sepa_internal {

// Writes the handle's error text, cut at its capacity, and returns 0.
__attribute__((format(printf, 2, 3))) int parser_error(sepa_stmt_parser_t* handle, const char* format, ...);

// A zeroed record in the handle's memory, or null.
template <typename Record>
Record* new_record(sepa_stmt_parser_t* handle) {
    void* block = arena_take(&handle->records, sizeof(Record));
    return block ? new (block) Record{} : nullptr;
}

// Releases all records of the handle and leaves its list empty.
void drop_statements(sepa_stmt_parser_t* handle);

}  // namespace sepa_internal
