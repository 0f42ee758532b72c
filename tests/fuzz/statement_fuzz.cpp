// The statement parser against the plain reading of the unit tests.
#include "statement/mt940.h"
#include "tests/fuzz/fuzz.h"
#include "tests/unit/statement_dump.h"
#include "tests/unit/statement_naive.h"

namespace {

// A handle with its format's state, as a load would make it.
sepa_stmt_parser_t* new_handle() {
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    return handle;
}

}  // namespace

FUZZ_TARGET(statement) {
    std::string file(reinterpret_cast<const char*>(data), strnlen(reinterpret_cast<const char*>(data), size));
    exact_text_t text(file);
    sepa_stmt_parser_t* handle = new_handle();
    expect(mt940_parse(handle, text.get()) == (file.empty() ? 0 : 1), "a text is parsed unless it is empty");
    expect(!*handle->error, "no text is a failure");

    // Columns are read up to fifteen bytes behind a line's start.
    exact_text_t roomy(file + std::string(64, '\0'));
    sepa_stmt_parser_t* plain = new_handle();
    naive_parser_t(plain).parse(roomy.get());
    expect(dump(handle) == dump(plain), "the plain reading gives other records");
    sepa_stmt_parser_free(handle);
    sepa_stmt_parser_free(plain);
}
