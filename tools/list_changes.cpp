#include "list_changes.h"

#include <algorithm>
#include <map>

namespace {

using rows_by_key_t = std::map<std::string, const row_t*>;

rows_by_key_t rows_by_key(const list_t& list, size_t key) {
    rows_by_key_t rows;
    for (const row_t& row : list.rows) rows[row.fields[key]] = &row;
    return rows;
}

// Changes of one kind.
struct kind_t {
    std::string what, lines;
    size_t count = 0;

    explicit kind_t(const std::string& name) : what(name) {}

    void add(const std::string& bank, const std::string& text) {
        ++count;
        lines += "  " + bank + " " + what + ": " + text + "\n";
    }
};

}  // namespace

list_changes_t list_changes(const std::string& name, const list_t& before, const list_t& after,
                            const std::string& header, size_t key) {
    const std::vector<std::string> columns = split_fields(name, 1, header, ',');
    auto name_column = static_cast<size_t>(std::find(columns.begin(), columns.end(), "name") - columns.begin());

    const rows_by_key_t old_rows = rows_by_key(before, key), new_rows = rows_by_key(after, key);
    kind_t removed("removed"), added("added");
    std::vector<kind_t> changed(columns.begin(), columns.end());
    for (const auto& [bank, row] : old_rows) {
        if (!new_rows.count(bank)) removed.add(bank, row->fields[name_column]);
    }
    for (const auto& [bank, row] : new_rows) {
        auto found = old_rows.find(bank);
        if (found == old_rows.end()) {
            added.add(bank, row->fields[name_column]);
            continue;
        }
        for (size_t column = key + 1; column < columns.size(); ++column) {
            const std::string &was = found->second->fields[column], &is = row->fields[column];
            if (was != is) changed[column].add(bank, (was.empty() ? "-" : was) + " -> " + (is.empty() ? "-" : is));
        }
    }

    changed.insert(changed.begin(), {removed, added});
    std::string sums, lines;
    for (const kind_t& kind : changed) {
        if (kind.count == 0) continue;
        sums += (sums.empty() ? "; " : ", ") + kind.what + " " + std::to_string(kind.count);
        lines += kind.lines;
    }
    std::string counts = std::to_string(new_rows.size()) + " banks, " + std::to_string(old_rows.size()) + " before";
    return {removed.count, name + ": " + counts + (sums.empty() ? "; nothing has changed" : sums) + "\n" + lines};
}
