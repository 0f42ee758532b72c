#include <cstring>

#include "sepa/statement/fields.h"
#include "sepa/statement/parse_run.h"
#include "sepa/text/ascii.h"
#include "sepa/text/scan.h"
#include "sepa/text/utf8.h"

namespace sepa_internal {

// A full line of 27 runs on in the next one without a blank. After a keyword
// of five characters a full line leaves 22.
static constexpr size_t full_line = 27;
static constexpr size_t full_line_after_keyword = full_line - keyword_length;

static constexpr int name_continued = 33;
static constexpr size_t marker_numbers = 100;
static constexpr bool is_purpose(int number) {
    return (number >= 20 && number <= 29) || (number >= 60 && number <= 63);
}

// The row of each subfield's number, or null.
static constexpr auto rows_by_number = [] {
    std::array<const field_row_t*, marker_numbers> rows{};
    for (const field_row_t& row : transaction_fields)
        if (row.source.subfield >= 0) rows[static_cast<size_t>(row.source.subfield)] = &row;
    return rows;
}();

namespace {
// One ":86:" field while its subfields are read.
struct field_t {
    sepa_stmt_tx_t* tx;
    char* end;         // NUL after the unfolded field
    char* target;      // the text that a purpose fragment continues; null before the first
    char* target_end;  // its NUL
    bool target_is_purpose;
    size_t last_continuation;  // length of the last fragment that continued a text
};
}  // namespace

// The number of the marker at a "?", or -1 if that is no marker.
static int marker_number(const char* at) {
    if (!is_digit(at[1]) || !is_digit(at[2])) return -1;
    return (at[1] - '0') * 10 + (at[2] - '0');
}

static char* find_question(char* from, const char* end) {
    return static_cast<char*>(memchr(from, '?', static_cast<size_t>(end - from)));
}

static const field_row_t* find_keyword(const char* text, size_t length) {
    if (length < keyword_length || text[keyword_length - 1] != '+') return nullptr;
    for (const field_row_t& row : transaction_fields)
        if (!memcmp(text, row.source.keyword, keyword_length)) return &row;
    return nullptr;
}

static void start_target(field_t* field, const char** member, char* text, char* end) {
    *member = field->target = text;
    field->target_end = end;
    *end = '\0';
}

// Moves the fragment down to the text that it continues. The marker's three
// bytes between them leave room for the separator.
static void continue_target(field_t* field, const char* text, size_t length) {
    auto so_far = static_cast<size_t>(field->target_end - field->target);
    if (field->target_is_purpose) {
        *field->target_end++ = '\n';
    } else if (field->last_continuation < full_line && so_far != full_line_after_keyword) {
        *field->target_end++ = ' ';
    }
    memmove(field->target_end, text, length);
    field->target_end += length;
    *field->target_end = '\0';
    field->last_continuation = length;
}

static void add_purpose(field_t* field, char* text, char* end) {
    auto length = static_cast<size_t>(end - text);
    const field_row_t* row = find_keyword(text, length);
    if (!row && field->target) {
        continue_target(field, text, length);
        return;
    }
    field->target_is_purpose = !row;
    if (!row) {
        start_target(field, &field->tx->purpose, text, end);
        return;
    }
    char* value = text + keyword_length;
    if (row->source.is_amount) {
        auto* comma = static_cast<char*>(memchr(value, ',', static_cast<size_t>(end - value)));
        if (comma) *comma = '.';
    }
    start_target(field, row->member.in<const char*>(field->tx), value, end);
}

static void continue_name(sepa_stmt_tx_t* tx, const char* text, size_t length) {
    size_t used = strlen(tx->name);
    if (used < full_line) tx->name[used++] = ' ';
    store_cut(tx->name, sizeof tx->name, used, text, length);
}

static void read_member(sepa_stmt_tx_t* tx, const member_t& member, char* text, char* end) {
    if (member.type == member_type_t::text) {
        *member.in<const char*>(tx) = text;
        *end = '\0';
    } else if (member.type == member_type_t::copy) {
        store_cut(member.in<char>(tx), member.size, 0, text, static_cast<size_t>(end - text));
    } else if (member.type == member_type_t::integer) {
        const char* at = text;
        scan_number(&at, 3, member.in<int32_t>(tx));
    }
}

static void read_subfield(field_t* field, int number, char* text, char* end) {
    if (is_purpose(number)) {
        add_purpose(field, text, end);
    } else if (number == name_continued) {
        continue_name(field->tx, text, static_cast<size_t>(end - text));
    } else if (const field_row_t* row = rows_by_number[static_cast<size_t>(number)]) {
        read_member(field->tx, row->member, text, end);
    }
}

// Numbers of markers rise; what does not rise is text. The marker that ends the
// text of subfield `number`, or null: where the number's successor stands
// further on, all before it is text too.
static char* next_marker(char* const* last_marker, char* text, const char* end, int number) {
    char* at = find_question(text, end);
    while (at && marker_number(at) <= number) at = find_question(at + 1, end);
    if (!at) return nullptr;
    char* successor = last_marker[number + 1];
    return successor && successor > at ? successor : at;
}

static void read_falling_subfields(field_t* field, char* marker) {
    char* last_marker[marker_numbers] = {};  // of the field, for each number
    for (char* at = marker; at; at = find_question(at + 1, field->end)) {
        int number = marker_number(at);
        if (number >= 0) last_marker[number] = at;
    }
    while (marker) {
        int number = marker_number(marker);
        char* text = marker + 3;
        marker = next_marker(last_marker, text, field->end, number);
        read_subfield(field, number, text, marker ? marker : field->end);
    }
}

// Most fields have numbers that rise from one marker to the next. There each
// marker ends the text before it, and one pass is enough.
static void read_subfields(field_t* field, char* marker) {
    // A first "?" that is no marker leaves the field without subfields.
    if (!marker || marker_number(marker) < 0) return;
    char* markers[marker_numbers + 1];
    int numbers[marker_numbers];
    size_t count = 0;
    for (char* at = marker; at; at = find_question(at + 1, field->end)) {
        int number = marker_number(at);
        if (number < 0) continue;
        if (count && number <= numbers[count - 1]) return read_falling_subfields(field, marker);
        markers[count] = at;
        numbers[count++] = number;
    }
    markers[count] = field->end;
    for (size_t i = 0; i < count; ++i) read_subfield(field, numbers[i], markers[i] + 3, markers[i + 1]);
}

// The CR LF before the next line that begins with ":", or null.
static char* find_field_end(char* line_end, const char* end) {
    while (line_end && line_end[2] != ':') line_end = find_line_end(line_end + 2, end);
    return line_end;
}

// Deletes every CR LF of the field and returns the NUL after what is left. A
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
        // Not after the field: a ":20:" right there must be found.
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

}  // namespace sepa_internal
