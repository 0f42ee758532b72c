// The readers of the bank lists. Input: the four lists of a release, a NUL
// behind each; a list without a header gets its own, since no engine guesses
// it. Or a list as it is published: '<', the first letter of its name, the list.
#include "sepa/directory/bank_directory.h"
#include "tests/fuzz/fuzz.h"
#include "tools/bank_lists.h"
#include "tools/published_lists.h"

namespace {

struct fault_t {};

list_text_t list_of(const char* file, const char* header, std::string& rest) {
    size_t end = rest.find('\0');
    std::string text = rest.substr(0, end);
    rest.erase(0, end == std::string::npos ? end : end + 1);
    bool rows_alone = text.empty() || (text[0] >= '0' && text[0] <= '9') || (text[0] >= 'A' && text[0] <= 'Z');
    return {file, rows_alone ? std::string(header) + "\n" + text : text};
}

// What the lookups rely on, since the tables are read without a test.
void check_entry(const entry_t& entry) {
    expect(entry.key.size() == 8 || entry.key.size() == 11, "length of a key");
    expect(entry.key.find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_") == std::string::npos, "a key");
    expect(!entry.body.empty() && entry.body.back() == '\0', "an entry ends with its NUL");
    bool german = entry.key.compare(0, 3, "_DE") == 0;
    bool bic = entry.key[0] != '_';
    size_t binary = german ? 4 : bic ? 1 : 0;
    expect(entry.body.size() > binary, "an entry has its binary bytes");
    if (!german) expect(entry.body.find('\0', binary) == entry.body.size() - 1, "one NUL");
    if (bic) expect(entry.body.size() - 2 + 12 + 1 + 3 <= BANK_TEXT_SIZE, "a name that fits");
}

lists_t released(std::string rest) {
    return read_lists({
        list_of("de.csv", german_header, rest),
        list_of("bic.csv", bic_header, rest),
        list_of("at.csv", national_header, rest),
        list_of("ch.csv", national_header, rest),
    });
}

lists_t published(char list, const list_text_t& text) {
    lists_t lists;
    if (list == 'd') lists.de = read_german_banks(text, "2026-09-07");
    if (list == 'b') lists.bic = read_providers(text);
    if (list == 'a') lists.at = read_austrian_banks(text);
    if (list == 'c') lists.ch = read_swiss_banks(text);
    for (row_t& row : lists.de.rows) {
        if (row.fields[de_rule].empty()) row.fields[de_rule] = "0";
    }
    return lists;
}

}  // namespace

void stop(const std::string&, size_t line, const std::string& reason) {
    expect(line > 0 && !reason.empty(), "a fault has a line and a reason");
    throw fault_t{};
}

void fuzz_bank_lists(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    try {
        lists_t lists = size > 1 && input[0] == '<' ? published(input[1], {"list", input.substr(2)}) : released(input);
        directory_t directory = make_directory(lists, false);
        expect(directory.entries.size() ==
                   directory.bic_count + directory.at_count + directory.ch_count + directory.de_count,
               "the entries are counted");
        for (const entry_t& entry : directory.entries) check_entry(entry);
    } catch (const fault_t&) {
    }
}
