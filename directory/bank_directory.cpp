#include "directory/bank_directory.h"

#include <cstdlib>
#include <cstring>

#include "directory/directory_tables.h"
#include "platform/clock.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverlength-strings"
#include "generated/directory_tables.inc"
#pragma GCC diagnostic pop

// The generator and this file have to agree on form and meaning of the tables.
static_assert(directory_format == 1, "tables of another generator: build them anew");
static_assert(directory_bic_count + directory_at_count + directory_ch_count + directory_de_count == directory_count);
static_assert(directory_cells == (directory_count * 123 + 99) / 100);
static_assert(sizeof directory_t1 == sizeof(uint32_t) * DIRECTORY_POSITIONS * DIRECTORY_CHARACTERS);
static_assert(sizeof directory_t2 == sizeof directory_t1 && sizeof directory_t3 == sizeof directory_t1);
static_assert(sizeof directory_g == sizeof(int32_t) * directory_cells);
static_assert(sizeof directory_offsets == sizeof(uint32_t) * directory_count);

static constexpr size_t BIC_LENGTH = 11;
static constexpr uint32_t MIN_KEY_LENGTH = 6;

int32_t directory_hash(const char* key) {
    uint32_t s1 = 0, s2 = 0, s3 = 0;
    uint32_t length = 0;
    for (; key[length]; length++) {
        auto character = static_cast<uint32_t>(static_cast<unsigned char>(key[length])) - '0';
        if (character >= DIRECTORY_CHARACTERS || length >= DIRECTORY_POSITIONS) return -1;
        uint32_t at = DIRECTORY_CHARACTERS * length + character;
        s1 += directory_t1[at];
        s2 += directory_t2[at];
        s3 += directory_t3[at];
    }
    if (length < MIN_KEY_LENGTH) return -1;
    constexpr uint32_t cells = directory_cells;
    return (directory_g[s1 % cells] + directory_g[s2 % cells] + directory_g[s3 % cells]) % directory_count;
}

// The entry whose first `length` bytes are `key`, or null.
static const char* find_entry(const char* key, size_t length) {
    int32_t index = directory_hash(key);
    if (index < 0) return nullptr;
    const char* entry = directory_entries[index];
    return memcmp(entry, key, length) == 0 ? entry : nullptr;
}

// Copies the text at `from` into the record, cuts it at its bars and lets
// `fields` point at the pieces. Returns the position behind the last field's
// bar, or 0 if the text ends earlier; fields that it lacks stay as they are.
static size_t cut_fields(const char* from, bank_record_t* record, const char** fields, size_t count) {
    size_t field = 0;
    fields[0] = record->text;
    for (size_t i = 0; i < BANK_TEXT_SIZE - 1 && from[i]; i++) {
        if (from[i] != '|') {
            record->text[i] = from[i];
            continue;
        }
        if (++field == count) return i + 1;
        fields[field] = record->text + i + 1;
    }
    return 0;
}

static size_t decode_national(const char* from, bank_record_t* record) {
    const char* fields[5] = {};
    size_t end = cut_fields(from, record, fields, 5);
    record->bic = fields[0];
    record->name = fields[1];
    record->postal_code = fields[2];
    record->city = fields[3];
    record->country = fields[4];
    return end;
}

static size_t decode_german(const char* from, bank_record_t* record) {
    auto byte = [from](size_t i) { return static_cast<uint8_t>(from[i]); };
    record->flag = byte(0);
    record->method = byte(1);
    record->rule = byte(2) << 8 | byte(3);
    const char* fields[6] = {};
    size_t end = cut_fields(from + 4, record, fields, 6);
    record->successor = fields[0];
    record->bic = fields[1];
    record->name = fields[2];
    record->postal_code = fields[3];
    record->city = fields[4];
    record->country = fields[5];
    return end == 0 ? 0 : end + 4;
}

struct bank_id_width_t {
    const char* country;
    size_t width;
};

static const bank_id_width_t bank_id_widths[] = {{"AT", 5}, {"CH", 5}, {"DE", 8}, {"LI", 5}, {nullptr, 0}};

static const bank_id_width_t* find_width(const char* country) {
    for (const bank_id_width_t* row = bank_id_widths; row->country; row++) {
        if (row->country[0] == country[0] && row->country[1] == country[1] && country[2] == 0) return row;
    }
    return nullptr;
}

int bank_lookup(const char* country, const char* bank_id, bank_record_t* record) {
    if (!country || !bank_id || !*bank_id) return 0;
    const bank_id_width_t* row = find_width(country);
    if (!row) return 0;
    size_t length = strnlen(bank_id, row->width + 1);
    if (length > row->width) return 0;

    bool liechtenstein = country[0] == 'L';  // its banks are in the Swiss list
    char key[12] = {'_', liechtenstein ? 'C' : country[0], liechtenstein ? 'H' : country[1]};
    memset(key + 3, '0', row->width - length);
    memcpy(key + 3 + row->width - length, bank_id, length);
    const char* from = find_entry(key, 3 + row->width);
    if (!from) return 0;
    from += 3 + row->width;

    *record = {};
    if (country[0] != 'D') {
        decode_national(from, record);
        return 1;
    }
    for (;;) {
        size_t next = decode_german(from, record);
        if (next == 0 || clock_now() < directory_switch_time) return 1;
        from += next;
        *record = {};
    }
}

int bic_lookup(const char* bic, bank_record_t* record) {
    if (!bic) return 0;
    size_t length = strnlen(bic, BIC_LENGTH + 1);
    if (length != 8 && length != BIC_LENGTH) return 0;
    char key[BIC_LENGTH + 1] = "XXXXXXXXXXX";
    for (size_t i = 0; i < length; i++) {
        char c = bic[i];
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        if (!(c >= '0' && c <= '9') && !(c >= 'A' && c <= 'Z')) return 0;
        key[i] = c;
    }
    const char* entry = find_entry(key, BIC_LENGTH);
    if (!entry) return 0;

    *record = {};
    const char* name = entry + BIC_LENGTH + 1;
    size_t name_size = strlen(name) + 1;
    memcpy(record->text, key, sizeof key);
    memcpy(record->text + sizeof key, name, name_size);
    memcpy(record->text + sizeof key + name_size, key + 4, 2);
    record->bic = record->text;
    record->name = record->text + sizeof key;
    record->country = record->text + sizeof key + name_size;
    record->bank_flags = static_cast<uint8_t>(entry[BIC_LENGTH]);
    return 1;
}

static size_t text_size(const char* text) { return text ? strlen(text) + 1 : 0; }

// Copies `text` to `*place`, which moves behind the copy.
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
