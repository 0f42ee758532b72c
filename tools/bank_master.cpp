#include "bank_master.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>

#include "sepa/text/ascii.h"

using namespace sepa_internal;
using nlohmann::json;

namespace {

// -------------------------------------------------------------- entries ----

// The keys of an entry that are read, in the order of `keys`.
enum {
    IID,
    VALID_ON,
    ENTRY_TYPE,
    SIC_IID,
    HEAD_QUARTERS,
    IID_TYPE,
    NAME,
    TOWN,
    POST_CODE,
    COUNTRY,
    BIC,
    NEW_IID,
    KEY_COUNT
};

struct key_t {
    const char* name;
    enum { ID, TEXT, OPTIONAL } kind;  // a bank may lack what is optional, but not all banks
};

constexpr key_t keys[] = {{"iid", key_t::ID},
                          {"validOn", key_t::TEXT},
                          {"entryType", key_t::TEXT},
                          {"sicIid", key_t::TEXT},
                          {"headQuarters", key_t::ID},
                          {"iidType", key_t::TEXT},
                          {"bankOrInstitutionName", key_t::TEXT},
                          {"townName", key_t::OPTIONAL},
                          {"postCode", key_t::OPTIONAL},
                          {"country", key_t::TEXT},
                          {"bic", key_t::OPTIONAL},
                          {"newIid", key_t::ID}};
static_assert(std::size(keys) == KEY_COUNT);

constexpr uint64_t SMALLEST_ID = 100, LARGEST_ID = 99999;

struct master_entry_t {
    row_t row;  // a field for each key
    std::bitset<KEY_COUNT> has;

    const std::string& operator[](size_t key) const { return row.fields[key]; }
    bool is_merged() const { return row.fields[ENTRY_TYPE] == "BankMasterConcatenated"; }
};

struct master_t {
    std::vector<master_entry_t> entries;
    std::map<std::string, size_t> by_id;
};

void require(const master_entry_t& entry, std::initializer_list<size_t> wanted) {
    for (size_t key : wanted) {
        if (!entry.has[key]) stop(entry.row, std::string("no ") + keys[key].name);
    }
}

void check_choice(const master_entry_t& entry, size_t key, std::initializer_list<const char*> choices) {
    std::string names;
    for (const char* choice : choices) {
        if (entry[key] == choice) return;
        names += std::string(names.empty() ? "" : ", ") + choice;
    }
    stop(entry.row, std::string(keys[key].name) + " is none of " + names);
}

bool is_date(const std::string& text) {
    return text.size() == 10 && is_digits(text.substr(0, 4), 4) && text[4] == '-' && is_digits(text.substr(5, 2), 2) &&
           text[7] == '-' && is_digits(text.substr(8), 2);
}

bool is_country(const std::string& text) { return text.size() == 2 && is_capital(text[0]) && is_capital(text[1]); }

// Judges the last entry, whose keys are all read, and finds it a place among
// the ids.
void close_entry(master_t* master) {
    const master_entry_t& entry = master->entries.back();
    require(entry, {IID, VALID_ON, ENTRY_TYPE});
    if (!is_date(entry[VALID_ON])) stop(entry.row, "validOn is no date yyyy-mm-dd");
    if (entry[VALID_ON] != master->entries[0][VALID_ON]) stop(entry.row, "validOn differs from that of other entries");
    check_choice(entry, ENTRY_TYPE, {"BankMaster", "BankMasterConcatenated"});
    if (entry.is_merged()) {
        require(entry, {NEW_IID});
    } else {
        require(entry, {SIC_IID, HEAD_QUARTERS, IID_TYPE, NAME, COUNTRY});
        check_choice(entry, IID_TYPE, {"HEADQUARTERS", "MAIN_BRANCH", "QR_IID"});
        if (!is_country(entry[COUNTRY])) stop(entry.row, "country is not two capital letters");
    }
    if (!master->by_id.emplace(entry[IID], master->entries.size() - 1).second) stop(entry.row, "stands twice");
}

// ----------------------------------------------------------------- JSON ----

// Walks over a text and counts the lines that it has come to.
struct line_walk_t {
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    const char* at;
    size_t* line;

    reference operator*() const { return *at; }
    line_walk_t& operator++() {
        *line += *at++ == '\n';
        return *this;
    }
    bool operator==(const line_walk_t& other) const { return at == other.at; }
    bool operator!=(const line_walk_t& other) const { return at != other.at; }
};

// Takes the parts of the text as the parser comes to them, so that nothing is
// kept but entries. Its functions are those that the parser calls; each value
// is judged by the place where it stands.
class master_reader_t {
public:
    master_reader_t(const std::string& file, const size_t& line) : file_(file), line_(line) {}

    bool null() { return place() == VALUE && keys[key_].kind == key_t::OPTIONAL ? true : refuse(); }
    bool boolean(bool) { return refuse(); }
    bool number_integer(json::number_integer_t) { return refuse(); }
    bool number_float(json::number_float_t, const std::string&) { return refuse(); }
    bool binary(json::binary_t&) { return refuse(); }

    bool number_unsigned(json::number_unsigned_t number) {
        bool taken = place() == VALUE && keys[key_].kind == key_t::ID && number >= SMALLEST_ID && number <= LARGEST_ID;
        if (!taken) return refuse();
        std::string digits = std::to_string(LARGEST_ID + 1 + number).substr(1);
        if (key_ == IID) entry().row.entry = "iid " + digits;
        entry().row.fields[key_] = digits;
        return true;
    }

    bool string(const std::string& text) {
        if (place() != VALUE || keys[key_].kind == key_t::ID) return refuse();
        check_characters(entry().row, text);
        entry().row.fields[key_] = trimmed(text);
        return true;
    }

    bool start_object(size_t) {
        place_t where = place();
        if (where == ENTRY) {
            std::string name = "entry " + std::to_string(master_.entries.size() + 1);
            master_.entries.push_back({{file_, line_, std::vector<std::string>(KEY_COUNT), name}, {}});
        } else if (where != ENVELOPE) {
            refuse();
        }
        depth_++;
        return true;
    }

    bool key(const std::string& name) {
        if (depth_ == 1 && list_depth_ == 0) {
            at_list_ = name == "entries";
            if (at_list_ && has_list_) stop(file_, line_, "entries stands twice");
        }
        if (list_depth_ == 0 || depth_ != list_depth_ + 1) return true;
        key_ = static_cast<size_t>(
            std::find_if(std::begin(keys), std::end(keys), [&](const key_t& key) { return name == key.name; }) - keys);
        if (key_ == KEY_COUNT) return true;
        if (entry().has[key_]) stop(entry().row, name + " stands twice");
        entry().has.set(key_);
        return true;
    }

    bool end_object() {
        if (--depth_ == list_depth_ && list_depth_ != 0) close_entry(&master_);
        return true;
    }

    bool start_array(size_t) {
        place_t where = place();
        if (where != ENVELOPE && where != LIST) refuse();
        depth_++;
        if (where == ENVELOPE || where == LIST) list_depth_ = depth_, has_list_ = true;
        return true;
    }

    bool end_array() {
        if (depth_-- == list_depth_) list_depth_ = 0;
        return true;
    }

    bool parse_error(size_t position, const std::string&, const json::exception&) {
        stop(file_, line_, "broken JSON, or no UTF-8, at byte " + std::to_string(position));
    }

    const master_t& master() const {
        if (!has_list_) stop(file_, 1, "neither a list nor an object with entries");
        if (master_.entries.empty()) stop(file_, 1, "the list is empty");
        return master_;
    }

private:
    enum place_t { ENVELOPE, LIST, ENTRY, VALUE, ELSEWHERE };

    // Where the value stands that comes next.
    place_t place() const {
        if (depth_ == 0) return ENVELOPE;
        if (list_depth_ == 0) return depth_ == 1 && at_list_ ? LIST : ELSEWHERE;
        if (depth_ == list_depth_) return ENTRY;
        return depth_ == list_depth_ + 1 && key_ < KEY_COUNT ? VALUE : ELSEWHERE;
    }

    // A value of the wrong type, unless it stands where nothing is read.
    bool refuse() const {
        switch (place()) {
            case LIST: stop(file_, line_, "entries is not a list");
            case ENTRY: stop(file_, line_, "entry " + std::to_string(master_.entries.size() + 1) + " is not an object");
            case VALUE:
                stop(master_.entries.back().row,
                     std::string(keys[key_].name) + (keys[key_].kind == key_t::ID
                                                         ? " is not an integer of three to five digits"
                                                         : " is not a text"));
            default: return true;
        }
    }

    master_entry_t& entry() { return master_.entries.back(); }

    const std::string& file_;
    const size_t& line_;
    master_t master_;
    size_t depth_ = 0;       // brackets and braces that are open
    size_t list_depth_ = 0;  // those that are open between entries; 0 outside of their list
    size_t key_ = KEY_COUNT;
    bool at_list_ = false, has_list_ = false;
};

// --------------------------------------------------------- merged banks ----

// For each entry the one that holds its bank's texts: itself, or where the ids
// that it was merged into lead in the end. No entry is passed twice.
std::vector<size_t> final_entries(const master_t& master) {
    constexpr size_t UNKNOWN = SIZE_MAX, ON_THE_WAY = SIZE_MAX - 1;
    std::vector<size_t> ends(master.entries.size(), UNKNOWN), way;
    for (size_t start = 0; start < ends.size(); start++) {
        size_t at = start;
        for (way.clear(); ends[at] == UNKNOWN && master.entries[at].is_merged();) {
            const master_entry_t& entry = master.entries[at];
            auto next = master.by_id.find(entry[NEW_IID]);
            if (next == master.by_id.end()) stop(entry.row, "newIid " + entry[NEW_IID] + " is not in the list");
            ends[at] = ON_THE_WAY;
            way.push_back(at);
            at = next->second;
        }
        if (ends[at] == ON_THE_WAY) {
            stop(master.entries[at].row, "newIid " + master.entries[at][NEW_IID] + " leads in a circle");
        }
        if (ends[at] == UNKNOWN) ends[at] = at;
        for (size_t passed : way) ends[passed] = ends[at];
    }
    return ends;
}

// A key that no bank has is called otherwise in this list.
void check_optional_keys(const std::string& file, const std::vector<master_entry_t>& entries) {
    for (size_t key = 0; key < KEY_COUNT; key++) {
        auto has = [key](const master_entry_t& entry) { return !entry[key].empty(); };
        if (keys[key].kind == key_t::OPTIONAL && std::none_of(entries.begin(), entries.end(), has)) {
            stop(file, 1, std::string("no entry has a ") + keys[key].name);
        }
    }
}

}  // namespace

bool is_bank_master(const list_text_t& text) {
    size_t at = text.content.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    at = text.content.find_first_not_of(" \t\r\n", at);
    return at != std::string::npos && (text.content[at] == '[' || text.content[at] == '{');
}

std::vector<row_t> read_bank_master(const list_text_t& text) {
    size_t line = 1;
    const char* const begin = text.content.data();
    master_reader_t reader(text.file, line);
    json::sax_parse(line_walk_t{begin, &line}, line_walk_t{begin + text.content.size(), &line}, &reader);
    const master_t& master = reader.master();
    const std::vector<size_t> ends = final_entries(master);
    check_optional_keys(text.file, master.entries);
    std::vector<row_t> rows;
    for (size_t i = 0; i < ends.size(); i++) {
        const master_entry_t &entry = master.entries[i], &end = master.entries[ends[i]];
        const std::string country = end[COUNTRY] == "CH" ? "" : end[COUNTRY];
        rows.push_back({text.file,
                        entry.row.line,
                        {entry[IID], end[BIC], end[NAME], end[POST_CODE], end[TOWN], country},
                        entry.row.entry});
    }
    return rows;
}
