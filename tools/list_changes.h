// What is different between two states of a list.
#pragma once

#include <string>

#include "list_text.h"

struct list_changes_t {
    size_t removed;      // keys of the earlier list that the later one lacks
    std::string report;  // a line of sums, then a line for each change, kind by kind
};

// Compares the rows of `before` and `after`, lists with the columns of
// `header`, by the column `key`. `name` heads the report.
list_changes_t list_changes(const std::string& name, const list_t& before, const list_t& after,
                            const std::string& header, size_t key);
