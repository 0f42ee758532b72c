// The compiled-in release against its lists: every row is found and equal, and
// nothing else is found.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>

#include "directory/bank_codes.h"
#include "directory/bank_directory.h"
#include "directory/directory_tables.h"
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
    std::set<uint32_t> reached;
    for (size_t index = 0; index < keys.size(); index++) {
        const std::string& key = keys[index];
        EXPECT_EQ(directory_hash(key.c_str()), static_cast<int32_t>(index)) << key;
        EXPECT_EQ(memcmp(directory_entries[static_cast<int32_t>(index)], key.data(), key.size()), 0) << key;
        for (const uint32_t* table : {directory_t1, directory_t2, directory_t3}) {
            uint32_t sum = 0;
            for (size_t i = 0; i < key.size(); i++) sum += table[75 * i + static_cast<size_t>(key[i] - '0')];
            reached.insert(sum % static_cast<uint32_t>(directory_cells));
        }
    }
    for (uint32_t cell = 0; cell < static_cast<uint32_t>(directory_cells); cell++)
        EXPECT_EQ(directory_g[cell] == -1, reached.count(cell) == 0) << cell;
}

// All bank codes that differ from a listed one in one character.
TEST(Release, NeighboursOfBankCodes) {
    for (const auto& [code, row] : later_period())
        for (size_t at = 0; at < code.size(); ++at)
            for (char byte : {'/', '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', ':'}) {
                std::string changed = code;
                changed[at] = byte;
                const bank_code_t* bank = find_bank_code(changed.c_str());
                ASSERT_EQ(bank != nullptr, later_period().count(changed) == 1) << changed;
                if (bank) {
                    EXPECT_EQ(bank->code, std::stoul(changed));
                }
            }
}

// Looks a key of the directory's shape up by the function that is meant for it.
bool is_found(const std::string& key) {
    bank_record_t record;
    if (key[0] != '_') return bic_lookup(key.c_str(), &record) == 1;
    return bank_lookup(key.substr(1, 2).c_str(), key.c_str() + 3, &record) == 1;
}

TEST(Release, ChangedKeysAreMissed) {
    std::vector<std::string> keys = expected_keys();
    std::set<std::string> known(keys.begin(), keys.end());
    std::mt19937 random(11);
    for (const std::string& key : keys) {
        for (size_t i = key[0] == '_' ? 3 : 0; i < key.size(); i++) {
            std::string changed = key;
            changed[i] = static_cast<char>(random() % 2 ? '0' + random() % 10 : ' ' + random() % 95);
            std::string capitals = changed;
            if (key[0] != '_') std::transform(changed.begin(), changed.end(), capitals.begin(), toupper);
            if (changed[0] == '_' && key[0] != '_') continue;  // has become the other kind
            ASSERT_EQ(is_found(changed), known.count(capitals) == 1) << key << " as " << changed;
        }
    }
}

TEST(Release, RandomNonKeysAreMissed) {
    std::vector<std::string> keys = expected_keys();
    std::set<std::string> known(keys.begin(), keys.end());
    std::mt19937 random(13);
    const char* prefixes[] = {"", "_AT", "_CH", "_DE"};
    for (int i = 0; i < 1000000; i++) {
        std::string key = prefixes[i % 4];
        size_t length = i % 4 == 0 || i % 4 == 3 ? 11 : 8;
        while (key.size() < length)
            key += static_cast<char>(i % 4 == 0 && key.size() < 8 ? 'A' + random() % 26 : '0' + random() % 10);
        ASSERT_EQ(is_found(key), known.count(key) == 1) << key;
    }
}

// Facts about the release that is the default one.
TEST(DefaultRelease, Sums) {
    if (folder.substr(folder.size() - 7) != "2025-03") GTEST_SKIP() << "another release is compiled in";
    EXPECT_EQ(directory_bic_count, 4689);
    EXPECT_EQ(directory_at_count, 870);
    EXPECT_EQ(directory_ch_count, 1148);
    EXPECT_EQ(directory_de_count, 3527);
    EXPECT_EQ(directory_cells, 12588);
    EXPECT_EQ(directory_switch_time, 1740956400);

    std::set<csv_row> sub_records;
    for (const auto& [code, later] : later_period()) {
        for (const auto& [date, period] : german_periods()) {
            auto found = period.find(code);
            csv_row row = found == period.end() ? later : found->second;
            row.erase(row.begin());
            sub_records.insert(row);
        }
    }
    EXPECT_EQ(sub_records.size(), 3527u + 20u);
    int successors = 0, other_flags = 0, rule_2002 = 0;
    std::set<int> rules;
    for (const csv_row& row : sub_records) {
        bool successor = !row[SUCCESSOR - 1].empty(), flag = row[FLAG - 1] == "1";
        EXPECT_TRUE(!successor || flag) << row[CODE - 1];
        successors += successor;
        other_flags += !successor && flag;
        rule_2002 += row[RULE - 1] == "2002";
        rules.insert(std::stoi(row[RULE - 1]) / 100);
    }
    EXPECT_EQ(successors, 34);
    EXPECT_EQ(other_flags, 49);
    EXPECT_EQ(rule_2002, 373);
    EXPECT_EQ(rules.size(), 43u);
}

// Banks that have to read as they always did.
TEST(DefaultRelease, TellingEntries) {
    if (folder.substr(folder.size() - 7) != "2025-03") GTEST_SKIP() << "another release is compiled in";
    const struct {
        time_t now;
        const char *country, *bank_id, *text;
    } rows[] = {
        {1740956400, "DE", "10000000", "|MARKDEF1100|Bundesbank|10591|Berlin|DE 0 9 4201"},
        {1740956400, "DE", "50040000", "|COBADEFFXXX|Commerzbank|60005|Frankfurt am Main|DE 0 19 503"},
        {1740956400, "DE", "25050299", "25050180||Sparkasse Hannover -alt-|30056|Hannover|DE 1 163 2800"},
        {1740956399, "DE", "10020890", "|HYVEDEMM488|UniCredit Bank - HypoVereinsbank|10896|Berlin|DE 0 153 3200"},
        {1740956400, "DE", "10020890", "|HYVEDEMM488|UniCredit Bank - HypoVereinsbank|10117|Berlin|DE 0 153 3200"},
        {1740956400, "AT", "11000", "|BKAUATWWXXX|UniCredit Bank Austria AG|1020|Wien|AT 0 0 0"},
        {1740956400, "CH", "110", "|SNBZCHZZXXX|Schweizerische Nationalbank|3003|Bern| 0 0 0"},
    };
    for (const auto& row : rows) {
        fixed_now = row.now;
        bank_record_t record;
        ASSERT_EQ(bank_lookup(row.country, row.bank_id, &record), 1) << row.bank_id;
        std::string text = record.successor ? record.successor : "";
        for (const std::string& field : texts(record)) text += "|" + field;
        for (int number : {int{record.flag}, int{record.method}, record.rule}) text += " " + std::to_string(number);
        EXPECT_EQ(text, row.text);
    }
}

}  // namespace
