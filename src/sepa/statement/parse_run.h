// The state of one mt940_parse, shared by the handlers of its lines.
#pragma once

#include "sepa/statement/mt940.h"
#include "sepa/statement/text_search.h"

namespace sepa_internal {

struct parse_run_t {
    char* at;        // the cursor
    char* end;       // the text's NUL; a cut before the cursor makes the text end there
    char* line_end;  // CR LF after the line, or the ":86:" field, at the cursor; null if there is none
    sepa_stmt_parser_t* handle;
    sepa_statement_t* statement;
    sepa_stmt_tx_t* tx;  // of the latest ":61:" line, whichever statement that was in
    bool out_of_memory;
    // What a ":61:" line looks for without regard to its end.
    first_place_t comma{","}, type{"N"}, slashes{"//"};

    // The byte `count` after the cursor, or the text's NUL.
    char* ahead(size_t count) const { return static_cast<size_t>(end - at) > count ? at + count : end; }
};

// The handlers stand at the start of their line and return false where it ends
// the statement.
bool read_transaction(parse_run_t* run);  // ":61:"
bool read_details(parse_run_t* run);      // ":86:"

}  // namespace sepa_internal
