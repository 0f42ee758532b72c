#include "sepa/directory/bank_directory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "sepa/directory/bank_codes.h"
#include "sepa/directory/directory_tables.h"
#include "sepa/platform/clock.h"
#include "sepa/text/ascii.h"
#include "sepa/text/words.h"

using namespace sepa_internal;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverlength-strings"
#include "generated/directory_tables.inc"
#pragma GCC diagnostic pop

// The generator and this file have to agree on layout and meaning of the tables.
static_assert(directory_format == tables_format, "tables of another generator: build them anew");
static_assert(directory_bic_count + directory_at_count + directory_ch_count + directory_de_count == directory_count);
static_assert(directory_cells == directory_cells_of(directory_count));
static_assert(sizeof directory_t1 == sizeof(uint32_t) * directory_positions * directory_characters);
static_assert(sizeof directory_t2 == sizeof directory_t1 && sizeof directory_t3 == sizeof directory_t1);
static_assert(sizeof directory_g == sizeof(int32_t) * directory_cells);
static_assert(sizeof directory_offsets == sizeof(uint32_t) * (directory_count + 1));

static constexpr size_t min_key_length = 6;
static constexpr size_t bic_length = 11;
static constexpr size_t prefix_length = 3;                        // "_DE" and its like before a bank id
static constexpr size_t national_key_length = prefix_length + 5;  // of Austria and Switzerland
static constexpr size_t sub_record_head = 4;                      // flag, method and rule before its text

// Hash of the `length` characters at `key`, at most DIRECTORY_POSITIONS of them.
static int32_t hash_of(const char* key, size_t length) {
    uint32_t s1 = 0, s2 = 0, s3 = 0;
    for (size_t i = 0; i < length; ++i) {
        size_t character = static_cast<size_t>(static_cast<unsigned char>(key[i])) - directory_first_character;
        if (character >= directory_characters) return -1;
        size_t at = directory_characters * i + character;
        s1 += directory_t1[at];
        s2 += directory_t2[at];
        s3 += directory_t3[at];
    }
    constexpr uint32_t cells = directory_cells;
    return (directory_g[s1 % cells] + directory_g[s2 % cells] + directory_g[s3 % cells]) % directory_count;
}

int32_t directory_hash(const char* key) {
    size_t length = strnlen(key, directory_positions + 1);
    if (length < min_key_length || length > directory_positions) return -1;
    return hash_of(key, length);
}

using text_field_t = const char* bank_record_t::*;

// The fields of an entry's text in their order; Austrian and Swiss ones lack
// the first.
static constexpr text_field_t german_fields[] = {
    &bank_record_t::successor,   &bank_record_t::bic,  &bank_record_t::name,
    &bank_record_t::postal_code, &bank_record_t::city, &bank_record_t::country,
};
static constexpr const text_field_t* national_fields = german_fields + 1;
static constexpr const text_field_t* fields_end = german_fields + 6;

// Copies the text from `from` to `end` into the record, as much of it as fits,
// and cuts it there at its bars: the record's fields from `field` on point at
// the pieces, and fields that the text lacks stay as they are. Returns the
// position after the last field's bar, or 0 if there is no such bar. The bars
// are looked for a word at a time; this is half the time of a lookup.
static size_t cut_fields(const char* from, const char* end, const text_field_t* field, bank_record_t* record) {
    size_t size = std::min(static_cast<size_t>(end - from), BANK_TEXT_SIZE);
    char* text = record->text;
    memcpy(text, from, size);
    memset(text + size, 0, BANK_TEXT_SIZE - size);
    record->*(*field++) = text;
    for (size_t at = 0; at < size; at += sizeof(uint64_t)) {
        uint64_t bars = zero_bytes(load_word(text + at) ^ every_byte('|'));
        for (; bars != 0; bars &= bars - 1) {
            size_t bar = at + static_cast<size_t>(__builtin_ctzll(bars)) / 8;
            text[bar] = 0;
            if (field == fields_end) return bar + 1;
            record->*(*field++) = text + bar + 1;
        }
    }
    return 0;
}
static_assert(BANK_TEXT_SIZE % sizeof(uint64_t) == 0, "the last word has to end with the text");

// Clears all of the record but `text`, which has to be filled to its end.
static void clear_fields(bank_record_t* record) { memset(record, 0, offsetof(bank_record_t, text)); }

static void decode_national(const char* from, const char* end, bank_record_t* record) {
    clear_fields(record);
    cut_fields(from, end, national_fields, record);
}

// Decodes the sub-record at `from` of an entry that ends at `end`. Returns the
// one after it, or null if it is the last.
static const char* decode_german(const char* from, const char* end, bank_record_t* record) {
    auto byte = [from](size_t i) { return static_cast<uint8_t>(from[i]); };
    clear_fields(record);
    record->flag = byte(0);
    record->method = byte(1);
    record->rule = byte(2) << 8 | byte(3);
    const char* text = from + sub_record_head;
    size_t distance = cut_fields(text, end, german_fields, record);
    return distance == 0 ? nullptr : text + distance;
}

namespace {
struct bank_id_width_t {
    const char* country;
    size_t width;
};
}  // namespace

static constexpr size_t max_width = 8;
static const bank_id_width_t bank_id_widths[] = {{"AT", 5}, {"CH", 5}, {"DE", 8}, {"LI", 5}, {nullptr, 0}};

static const bank_id_width_t* find_width(const char* country) {
    for (const bank_id_width_t* row = bank_id_widths; row->country; ++row) {
        if (row->country[0] == country[0] && row->country[1] == country[1] && country[2] == 0) return row;
    }
    return nullptr;
}

// Index of the entry of a bank id that fills its width, or a negative number.
static int32_t find_bank(const char* country, const char* bank_id) {
    if (country[0] == 'D') {
        const bank_code_t* bank = find_bank_code(bank_id);
        return bank ? bank->entry : -1;
    }
    // The banks of Liechtenstein are in the Swiss list.
    const char* listed = country[0] == 'L' ? "CH" : country;
    char key[national_key_length] = {'_', listed[0], listed[1]};
    memcpy(key + prefix_length, bank_id, national_key_length - prefix_length);
    int32_t index = hash_of(key, national_key_length);
    if (index < 0) return index;
    return memcmp(directory_entries[index], key, national_key_length) == 0 ? index : -1;
}

int bank_lookup(const char* country, const char* bank_id, bank_record_t* record) {
    if (!country || !bank_id || !*bank_id) return 0;
    const bank_id_width_t* row = find_width(country);
    if (!row) return 0;
    size_t length = strnlen(bank_id, row->width + 1);
    if (length > row->width) return 0;

    char padded[max_width] = {};
    memset(padded, '0', row->width - length);
    memcpy(padded + row->width - length, bank_id, length);
    int32_t index = find_bank(country, padded);
    if (index < 0) return 0;

    const char* from = directory_entries[index] + prefix_length + row->width;
    const char* end = directory_entries[index + 1];
    if (country[0] != 'D') {
        decode_national(from, end, record);
        return 1;
    }
    while ((from = decode_german(from, end, record))) {
        if (clock_now() < directory_switch_time) break;
    }
    return 1;
}

int bank_check_method(const char* bank_code) {
    const bank_code_t* bank = find_bank_code(bank_code);
    return bank ? bank->method : -1;
}

// Index of the entry of a BIC of 8 or 11 characters in either case, or -1.
static int32_t find_any_bic(const char* bic) {
    if (!bic) return -1;
    size_t length = strnlen(bic, bic_length + 1);
    if (length != 8 && length != bic_length) return -1;
    static constexpr uint64_t no_branch = uint64_t{'X'} << 56 | uint64_t{'X'} << 48 | uint64_t{'X'} << 40;
    bic_words_t words = {load_word(bic), 0};
    words.last = length == 8 ? words.first >> 24 | no_branch : load_word(bic + 3);
    words = {word_upper(words.first), word_upper(words.last)};
    return words.first && words.last ? find_bic(words) : -1;
}

int bic_lookup(const char* bic, bank_record_t* record) {
    int32_t index = find_any_bic(bic);
    if (index < 0) return 0;

    const char* key = directory_entries[index];
    const char* flags = key + bic_length;
    const char* name = flags + 1;
    size_t name_size = static_cast<size_t>(directory_entries[index + 1] - name);
    clear_fields(record);
    char* place = record->text;
    record->bank_flags = static_cast<uint8_t>(*flags);
    record->bic = place;
    memcpy(place, key, bic_length);
    place[bic_length] = 0;
    record->name = place += bic_length + 1;
    memcpy(place, name, name_size);
    record->country = place += name_size;
    memcpy(place, key + 4, 2);
    place += 2;
    memset(place, 0, static_cast<size_t>(record->text + BANK_TEXT_SIZE - place));
    return 1;
}

int bic_name(const char* bic, bic_name_t* found) {
    int32_t index = find_any_bic(bic);
    if (index < 0) return 0;
    const char* flags = directory_entries[index] + bic_length;
    found->flags = static_cast<uint8_t>(*flags);
    found->name = flags + 1;
    found->length = static_cast<size_t>(directory_entries[index + 1] - found->name) - 1;
    return 1;
}

static size_t text_size(const char* text) { return text ? strlen(text) + 1 : 0; }

// Copies `text` to `*place`, which moves to the end of the copy.
static char* put_text(char** place, const char* text) {
    if (!text) return nullptr;
    size_t size = text_size(text);
    char* copy = static_cast<char*>(memcpy(*place, text, size));
    *place += size;
    return copy;
}

int bank_info_get(const char* bic, bank_info_t** info) {
    bank_record_t record;
    if (!bic_lookup(bic, &record)) return -2;
    if (!info) return 1;
    size_t size = sizeof(bank_info_t) + text_size(record.name) + text_size(record.postal_code) +
                  text_size(record.city) + text_size(record.country) + text_size(record.bic);
    auto* block = static_cast<bank_info_t*>(malloc(size));
    if (!block) return -3;
    char* place = reinterpret_cast<char*>(block + 1);
    block->name = put_text(&place, record.name);
    block->postal_code = put_text(&place, record.postal_code);
    block->city = put_text(&place, record.city);
    block->country = put_text(&place, record.country);
    block->bic = put_text(&place, record.bic);
    block->flags = record.bank_flags;
    *info = block;
    return 1;
}
