// The statement parser: it finds no more records than the text has tags, and
// what they point at lies within the text.
#include <set>

#include "sepa/statement/mt940.h"
#include "tests/fuzz/fuzz.h"
#include "tests/unit/statement_dump.h"

static size_t count(const std::string& text, const char* tag) {
    size_t found = 0;
    for (size_t at = 0; (at = text.find(tag, at)) != std::string::npos; ++at) ++found;
    return found;
}

void fuzz_statement(const uint8_t* data, size_t size) {
    exact_text_t text(data, strnlen(reinterpret_cast<const char*>(data), size));
    const std::string file = text.get();
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    expect(mt940_parse(handle, text.get()) == (file.empty() ? 0 : 1), "a text is parsed unless it is empty");
    expect(!*handle->error, "no text is a failure");

    // Many transactions may have one place as their reference; its places rise
    // with the file. Any other text is one record's own.
    const char* reference = text.get();
    std::set<const char*> owned;
    auto own = [&](const char* part) { return !part || owned.insert(part).second; };
    auto inside = [&](const char* part) { return !part || (part >= text.get() && part <= text.get() + file.size()); };
    size_t statements = 0, transactions = 0;
    for (const sepa_statement_t* s = handle->first; s; s = s->next, ++statements) {
        expect(inside(s->ref) && inside(s->account), "a text of a statement");
        expect(own(s->ref) && own(s->account), "a statement's text is another's");
        for (const sepa_stmt_tx_t* tx = s->tx_first; tx; tx = tx->next, ++transactions) {
            expect(inside(tx->ref) && (!tx->ref || tx->ref >= reference), "a reference before an earlier one");
            if (tx->ref) reference = tx->ref;
            for (const char* part : {tx->bankref, tx->txtext, tx->primanota, tx->purpose, tx->eref, tx->kref, tx->mref,
                                     tx->cred, tx->debt, tx->purp, tx->coam, tx->oamt, tx->svwz, tx->abwa, tx->abwe})
                expect(inside(part) && own(part), "a text of a transaction");
        }
    }
    expect(statements <= count(file, "\r\n:20:") && transactions <= count(file, ":61:"), "more records than tags");
    expect(dump(handle).empty() == (statements == 0), "every text has its end");
    sepa_stmt_parser_free(handle);
}
