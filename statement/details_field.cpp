#include <cstring>
#include <iterator>

#include "statement/parse_run.h"
#include "text/utf8.h"

// A full line of 27 runs on in the next one without a blank. Behind a keyword
// of five characters a full line leaves 22.
static constexpr size_t full_line = 27;
static constexpr size_t full_line_behind_keyword = 22;

using slot_t = const char* sepa_stmt_tx_t::*;

struct keyword_t {
    char text[6];
    slot_t slot;
    bool is_amount;
};

static constexpr size_t keyword_length = 5;
static constexpr keyword_t keywords[] = {
    {"EREF+", &sepa_stmt_tx_t::eref, false}, {"KREF+", &sepa_stmt_tx_t::kref, false},
    {"MREF+", &sepa_stmt_tx_t::mref, false}, {"CRED+", &sepa_stmt_tx_t::cred, false},
    {"DEBT+", &sepa_stmt_tx_t::debt, false}, {"PURP+", &sepa_stmt_tx_t::purp, false},
    {"COAM+", &sepa_stmt_tx_t::coam, true},  {"OAMT+", &sepa_stmt_tx_t::oamt, true},
    {"SVWZ+", &sepa_stmt_tx_t::svwz, false}, {"ABWA+", &sepa_stmt_tx_t::abwa, false},
    {"ABWE+", &sepa_stmt_tx_t::abwe, false},
};
static_assert(std::size(keywords) == 11);

// One ":86:" field while its subfields are read.
struct field_t {
    sepa_stmt_tx_t* tx;
    char* end;               // NUL behind the unfolded field
    char* last_marker[100];  // the last "?NN" of the field for each number, or null
    char* target;            // the text that a purpose fragment continues; null before the first
    char* target_end;        // its NUL
    bool target_is_purpose;
    size_t last_continuation;  // length of the last fragment that continued a text
};

// The number of the marker at a "?", or -1 if that is no marker.
static int marker_number(const char* at) {
    if (!is_digit(at[1]) || !is_digit(at[2])) return -1;
    return (at[1] - '0') * 10 + (at[2] - '0');
}

static char* find_question(char* from, const char* end) {
    return static_cast<char*>(memchr(from, '?', static_cast<size_t>(end - from)));
}

// The marker that ends the text of subfield `number`, or null. Numbers rise;
// what does not rise is text. Where the number's successor stands further on,
// all in front of it is text too.
static char* next_marker(const field_t* field, char* text, int number) {
    char* at = find_question(text, field->end);
    while (at && marker_number(at) <= number) at = find_question(at + 1, field->end);
    if (!at) return nullptr;
    char* successor = field->last_marker[number + 1];
    return successor && successor > at ? successor : at;
}

static const keyword_t* find_keyword(const char* text, size_t length) {
    if (length < keyword_length || text[keyword_length - 1] != '+') return nullptr;
    for (const keyword_t& keyword : keywords)
        if (!memcmp(text, keyword.text, keyword_length)) return &keyword;
    return nullptr;
}

static void start_target(field_t* field, slot_t slot, char* text, char* end) {
    field->tx->*slot = field->target = text;
    field->target_end = end;
    *end = '\0';
}

// Moves the fragment down to the text that it continues. The marker's three
// bytes between them leave room for the separator.
static void continue_target(field_t* field, const char* text, size_t length) {
    auto so_far = static_cast<size_t>(field->target_end - field->target);
    if (field->target_is_purpose) {
        *field->target_end++ = '\n';
    } else if (field->last_continuation < full_line && so_far != full_line_behind_keyword) {
        *field->target_end++ = ' ';
    }
    memmove(field->target_end, text, length);
    field->target_end += length;
    *field->target_end = '\0';
    field->last_continuation = length;
}

static void add_purpose(field_t* field, char* text, char* end) {
    auto length = static_cast<size_t>(end - text);
    const keyword_t* keyword = find_keyword(text, length);
    if (!keyword && field->target) {
        continue_target(field, text, length);
        return;
    }
    field->target_is_purpose = !keyword;
    if (!keyword) {
        start_target(field, &sepa_stmt_tx_t::purpose, text, end);
        return;
    }
    char* value = text + keyword_length;
    if (keyword->is_amount) {
        auto* comma = static_cast<char*>(memchr(value, ',', static_cast<size_t>(end - value)));
        if (comma) *comma = '.';
    }
    start_target(field, keyword->slot, value, end);
}

static void add_name(sepa_stmt_tx_t* tx, const char* text, size_t length) {
    size_t used = strlen(tx->name);
    if (used < full_line) tx->name[used++] = ' ';
    store_cut(tx->name, sizeof tx->name, used, text, length);
}

static void read_subfield(field_t* field, int number, char* text, char* end) {
    sepa_stmt_tx_t* tx = field->tx;
    auto length = static_cast<size_t>(end - text);
    if ((number >= 20 && number <= 29) || (number >= 60 && number <= 63)) return add_purpose(field, text, end);
    switch (number) {
        case 0:
            tx->txtext = text;
            *end = '\0';
            break;
        case 10:
            tx->primanota = text;
            *end = '\0';
            break;
        case 30: store_cut(tx->bank, sizeof tx->bank, 0, text, length); break;
        case 31: store_cut(tx->account, sizeof tx->account, 0, text, length); break;
        case 32: store_cut(tx->name, sizeof tx->name, 0, text, length); break;
        case 33: add_name(tx, text, length); break;
        case 34: {
            const char* at = text;
            scan_number(&at, 3, &tx->extcode);
            break;
        }
        default: break;
    }
}

static void read_subfields(field_t* field, char* marker) {
    // A first "?" that is no marker leaves the field without subfields.
    if (!marker || marker_number(marker) < 0) return;
    for (char* at = marker; at; at = find_question(at + 1, field->end)) {
        int number = marker_number(at);
        if (number >= 0) field->last_marker[number] = at;
    }
    while (marker) {
        int number = marker_number(marker);
        char* text = marker + 3;
        marker = next_marker(field, text, number);
        read_subfield(field, number, text, marker ? marker : field->end);
    }
}

// The CR LF in front of the next line that begins with ":", or null.
static char* find_field_end(char* line_end, const char* end) {
    while (line_end && line_end[2] != ':') line_end = find_line_end(line_end + 2, end);
    return line_end;
}

// Deletes every CR LF of the field and returns the NUL behind what is left. A
// CR LF that only a deletion brings together stays.
static char* unfold(char* line_end, char* field_end) {
    char* to = line_end;
    while (line_end != field_end) {
        char* line = line_end + 2;
        line_end = find_line_end(line, field_end);
        if (!line_end) line_end = field_end;
        auto length = static_cast<size_t>(line_end - line);
        memmove(to, line, length);
        to += length;
    }
    *to = '\0';
    return to;
}

bool read_details(parse_run_t* run) {
    char* line_end = run->line_end;
    run->line_end = find_field_end(line_end, run->end);
    if (!run->tx) {
        // Not behind the field: a ":20:" right there must be found.
        if (run->line_end) run->at = run->line_end;
        return false;
    }
    const char* code = run->at + 4;
    char* field_end = run->line_end ? unfold(line_end, run->line_end) : nullptr;
    scan_number(&code, 3, &run->tx->gvc);
    if (!field_end) return false;
    field_t field{};
    field.tx = run->tx;
    field.end = field_end;
    read_subfields(&field, find_question(run->at + 4, field_end));
    return true;
}
