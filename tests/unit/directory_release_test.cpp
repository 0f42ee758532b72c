// The compiled-in release against its lists: every row is found and equal, and
// nothing else is found.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>

#include "sepa/directory/bank_codes.h"
#include "sepa/directory/bank_directory.h"
#include "sepa/directory/directory_tables.h"
#include "tests/unit/fixed_clock.h"
#include "tests/unit/test_files.h"

using namespace sepa_internal;

namespace {

const std::string folder = SEPA_DIRECTORY_DATA;

// Columns of de.csv.
enum { VALID_FROM, CODE, FLAG, METHOD, RULE, SUCCESSOR, BIC, NAME, POSTAL_CODE, CITY, COUNTRY };

using german_rows_t = std::map<std::string, csv_row>;

// German rows of each period, by bank code.
const std::map<std::string, german_rows_t>& german_periods() {
    static const std::map<std::string, german_rows_t> periods = [] {
        std::map<std::string, german_rows_t> by_date;
        for (const csv_row& row : csv_rows(folder + "/de.csv")) by_date[row[VALID_FROM]][row[CODE]] = row;
        return by_date;
    }();
    return periods;
}

const german_rows_t& later_period() { return german_periods().rbegin()->second; }

csv_row texts(const bank_record_t& r) { return {r.bic, r.name, r.postal_code, r.city, r.country}; }

// Keys in the order that the directory tells.
std::vector<std::string> expected_keys() {
    std::vector<std::string> keys;
    for (const csv_row& row : csv_rows(folder + "/bic.csv")) keys.push_back(row[0]);
    for (const csv_row& row : csv_rows(folder + "/at.csv")) keys.push_back("_AT" + row[0]);
    for (const csv_row& row : csv_rows(folder + "/ch.csv")) keys.push_back("_CH" + row[0]);
    for (const auto& [code, row] : later_period()) keys.push_back("_DE" + code);
    return keys;
}

void expect_german(const german_rows_t& period, time_t now) {
    fixed_now = now;
    for (const auto& [code, later] : later_period()) {
        auto found = period.find(code);
        const csv_row& row = found == period.end() ? later : found->second;
        bank_record_t record;
        ASSERT_EQ(bank_lookup("DE", code.c_str(), &record), 1) << code;
        EXPECT_EQ(texts(record), csv_row(row.begin() + BIC, row.end())) << code;
        EXPECT_EQ(record.successor, row[SUCCESSOR]) << code;
        EXPECT_EQ(record.flag, std::stoul(row[FLAG])) << code;
        EXPECT_EQ(record.method, std::stoul(row[METHOD], nullptr, 16)) << code;
        EXPECT_EQ(record.rule, std::stol(row[RULE])) << code;
        EXPECT_EQ(record.bank_flags, 0) << code;

        const bank_code_t* bank = find_bank_code(code.c_str());
        ASSERT_NE(bank, nullptr) << code;
        EXPECT_EQ(bank->code, std::stoul(code));
        EXPECT_EQ(bank->method, record.method) << code;
        EXPECT_EQ(bank->rule, record.rule) << code;
        EXPECT_STREQ(bank_code_bics[bank->bic], record.bic) << code;
        EXPECT_STREQ(bank_code_successors[bank->successor], record.successor) << code;
        EXPECT_EQ(bank->entry, directory_hash(("_DE" + code).c_str())) << code;
    }
}

TEST(Release, EveryGermanRow) {
    ASSERT_FALSE(german_periods().empty());
    EXPECT_EQ(directory_switch_time == 0, german_periods().size() == 1);
    expect_german(german_periods().begin()->second, static_cast<time_t>(directory_switch_time - 1));
    expect_german(later_period(), static_cast<time_t>(directory_switch_time));
    for (const auto& [code, row] : german_periods().begin()->second) {
        bank_record_t record;
        EXPECT_EQ(bank_lookup("DE", code.c_str(), &record), static_cast<int>(later_period().count(code))) << code;
    }
}

TEST(Release, EveryAustrianAndSwissRow) {
    for (const char* country : {"AT", "CH"}) {
        for (const csv_row& row : csv_rows(folder + (*country == 'A' ? "/at.csv" : "/ch.csv"))) {
            bank_record_t record;
            ASSERT_EQ(bank_lookup(country, row[0].c_str(), &record), 1) << row[0];
            EXPECT_EQ(texts(record), csv_row(row.begin() + 1, row.end())) << row[0];
            EXPECT_EQ(record.successor, nullptr);
            EXPECT_EQ(record.flag + record.method + record.rule + record.bank_flags, 0) << row[0];
        }
    }
}

TEST(Release, EveryBicRow) {
    for (const csv_row& row : csv_rows(folder + "/bic.csv")) {
        bank_record_t record;
        ASSERT_EQ(bic_lookup(row[0].c_str(), &record), 1) << row[0];
        EXPECT_EQ(record.bic, row[0]);
        EXPECT_EQ(record.name, row[5]);
        EXPECT_EQ(record.country, row[0].substr(4, 2));
        int flags = (row[1] == "1") + 2 * (row[2] == "1") + 4 * (row[3] == "1") + 8 * (row[4] == "1");
        EXPECT_EQ(record.bank_flags, flags) << row[0];
        bic_name_t found;
        ASSERT_EQ(bic_name(row[0].c_str(), &found), 1) << row[0];
        EXPECT_EQ(found.name, row[5]);
        EXPECT_EQ(found.length, row[5].size());
        EXPECT_EQ(found.flags, flags) << row[0];
    }
}

TEST(Release, EntriesStandInOrder) {
    std::vector<std::string> keys = expected_keys();
    ASSERT_EQ(static_cast<size_t>(directory_count), keys.size());
    EXPECT_TRUE(std::is_sorted(keys.end() - directory_de_count, keys.end()));
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.begin() + directory_bic_count));
    for (size_t index = 0; index < keys.size(); ++index) {
        const std::string& key = keys[index];
        EXPECT_EQ(directory_hash(key.c_str()), static_cast<int32_t>(index)) << key;
        EXPECT_EQ(memcmp(directory_entries[static_cast<int32_t>(index)], key.data(), key.size()), 0) << key;
    }
}

// Looks a key of the directory's shape up by the function that is meant for it.
bool is_found(const std::string& key) {
    bank_record_t record;
    if (key[0] != '_') return bic_lookup(key.c_str(), &record) == 1;
    bool found = bank_lookup(key.substr(1, 2).c_str(), key.c_str() + 3, &record) == 1;
    EXPECT_TRUE(key[1] != 'D' || (find_bank_code(key.c_str() + 3) != nullptr) == found) << key;
    return found;
}

TEST(Release, ChangedKeysAreMissed) {
    std::vector<std::string> keys = expected_keys();
    std::set<std::string> known(keys.begin(), keys.end());
    std::mt19937 random(11);
    for (const std::string& key : keys) {
        for (size_t i = key[0] == '_' ? 3 : 0; i < key.size(); ++i) {
            std::string changed = key;
            changed[i] = static_cast<char>(random() % 2 ? '0' + random() % 10 : ' ' + random() % 95);
            std::string capitals = changed;
            if (key[0] != '_') std::transform(changed.begin(), changed.end(), capitals.begin(), toupper);
            if (changed[0] == '_' && key[0] != '_') continue;  // has become the other kind
            ASSERT_EQ(is_found(changed), known.count(capitals) == 1) << key << " as " << changed;
        }
    }
}

}  // namespace
