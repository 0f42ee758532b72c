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
    key_iid,
    key_valid_on,
    key_entry_type,
    key_sic_iid,
    key_head_quarters,
    key_iid_type,
    key_name,
    key_town,
    key_post_code,
    key_country,
    key_bic,
    key_new_iid,
    key_count
};

struct key_t {
    const char* name;
    enum { id, text, optional } kind;  // a bank may lack what is optional, but not all banks
};

constexpr key_t keys[] = {{"iid", key_t::id},
                          {"validOn", key_t::text},
                          {"entryType", key_t::text},
                          {"sicIid", key_t::text},
                          {"headQuarters", key_t::id},
                          {"iidType", key_t::text},
                          {"bankOrInstitutionName", key_t::text},
                          {"townName", key_t::optional},
                          {"postCode", key_t::optional},
                          {"country", key_t::text},
                          {"bic", key_t::optional},
                          {"newIid", key_t::id}};
static_assert(std::size(keys) == key_count);

constexpr uint64_t smallest_id = 100, largest_id = 99999;

struct master_entry_t {
    row_t row;  // a field for each key
    std::bitset<key_count> has;

    const std::string& operator[](size_t key) const { return row.fields[key]; }
    bool is_merged() const { return row.fields[key_entry_type] == "BankMasterConcatenated"; }
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
    require(entry, {key_iid, key_valid_on, key_entry_type});
    if (!is_date(entry[key_valid_on])) stop(entry.row, "validOn is no date yyyy-mm-dd");
    if (entry[key_valid_on] != master->entries[0][key_valid_on])
        stop(entry.row, "validOn differs from that of other entries");
    check_choice(entry, key_entry_type, {"BankMaster", "BankMasterConcatenated"});
    if (entry.is_merged()) {
        require(entry, {key_new_iid});
    } else {
        require(entry, {key_sic_iid, key_head_quarters, key_iid_type, key_name, key_country});
        check_choice(entry, key_iid_type, {"HEADQUARTERS", "MAIN_BRANCH", "QR_IID"});
        if (!is_country(entry[key_country])) stop(entry.row, "country is not two capital letters");
    }
    if (!master->by_id.emplace(entry[key_iid], master->entries.size() - 1).second) stop(entry.row, "stands twice");
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

    bool null() { return place() == in_value && keys[key_].kind == key_t::optional ? true : refuse(); }
    bool boolean(bool) { return refuse(); }
    bool number_integer(json::number_integer_t) { return refuse(); }
    bool number_float(json::number_float_t, const std::string&) { return refuse(); }
    bool binary(json::binary_t&) { return refuse(); }

    bool number_unsigned(json::number_unsigned_t number) {
        bool taken =
            place() == in_value && keys[key_].kind == key_t::id && number >= smallest_id && number <= largest_id;
        if (!taken) return refuse();
        std::string digits = std::to_string(largest_id + 1 + number).substr(1);
        if (key_ == key_iid) entry().row.entry = "iid " + digits;
        entry().row.fields[key_] = digits;
        return true;
    }

    bool string(const std::string& text) {
        if (place() != in_value || keys[key_].kind == key_t::id) return refuse();
        check_characters(entry().row, text);
        entry().row.fields[key_] = trimmed(text);
        return true;
    }

    bool start_object(size_t) {
        place_t where = place();
        if (where == in_entry) {
            std::string name = "entry " + std::to_string(master_.entries.size() + 1);
            master_.entries.push_back({{file_, line_, std::vector<std::string>(key_count), name}, {}});
        } else if (where != in_envelope) {
            refuse();
        }
        ++depth_;
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
        if (key_ == key_count) return true;
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
        if (where != in_envelope && where != in_list) refuse();
        ++depth_;
        if (where == in_envelope || where == in_list) list_depth_ = depth_, has_list_ = true;
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
    enum place_t { in_envelope, in_list, in_entry, in_value, in_nothing_known };

    // Where the value stands that comes next.
    place_t place() const {
        if (depth_ == 0) return in_envelope;
        if (list_depth_ == 0) return depth_ == 1 && at_list_ ? in_list : in_nothing_known;
        if (depth_ == list_depth_) return in_entry;
        return depth_ == list_depth_ + 1 && key_ < key_count ? in_value : in_nothing_known;
    }

    // A value of the wrong type, unless it stands where nothing is read.
    bool refuse() const {
        switch (place()) {
            case in_list: stop(file_, line_, "entries is not a list");
            case in_entry:
                stop(file_, line_, "entry " + std::to_string(master_.entries.size() + 1) + " is not an object");
            case in_value:
                stop(master_.entries.back().row,
                     std::string(keys[key_].name) + (keys[key_].kind == key_t::id
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
    size_t key_ = key_count;
    bool at_list_ = false, has_list_ = false;
};

// --------------------------------------------------------- merged banks ----

// For each entry the one that holds its bank's texts: itself, or where the ids
// that it was merged into lead in the end. No entry is passed twice.
std::vector<size_t> final_entries(const master_t& master) {
    constexpr size_t unknown = SIZE_MAX, on_the_way = SIZE_MAX - 1;
    std::vector<size_t> ends(master.entries.size(), unknown), way;
    for (size_t start = 0; start < ends.size(); ++start) {
        size_t at = start;
        for (way.clear(); ends[at] == unknown && master.entries[at].is_merged();) {
            const master_entry_t& entry = master.entries[at];
            auto next = master.by_id.find(entry[key_new_iid]);
            if (next == master.by_id.end()) stop(entry.row, "newIid " + entry[key_new_iid] + " is not in the list");
            ends[at] = on_the_way;
            way.push_back(at);
            at = next->second;
        }
        if (ends[at] == on_the_way) {
            stop(master.entries[at].row, "newIid " + master.entries[at][key_new_iid] + " leads in a circle");
        }
        if (ends[at] == unknown) ends[at] = at;
        for (size_t passed : way) ends[passed] = ends[at];
    }
    return ends;
}

// A key that no bank has is called otherwise in this list.
void check_optional_keys(const std::string& file, const std::vector<master_entry_t>& entries) {
    for (size_t key = 0; key < key_count; ++key) {
        auto has = [key](const master_entry_t& entry) { return !entry[key].empty(); };
        if (keys[key].kind == key_t::optional && std::none_of(entries.begin(), entries.end(), has)) {
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
    for (size_t i = 0; i < ends.size(); ++i) {
        const master_entry_t &entry = master.entries[i], &end = master.entries[ends[i]];
        const std::string country = end[key_country] == "CH" ? "" : end[key_country];
        rows.push_back({text.file,
                        entry.row.line,
                        {entry[key_iid], end[key_bic], end[key_name], end[key_post_code], end[key_town], country},
                        entry.row.entry});
    }
    return rows;
}
