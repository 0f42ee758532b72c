// The logic of the lookups, on tests/data/frozen_directory. No release of the
// real lists touches these tests.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "sepa/directory/bank_directory.h"
#include "sepa/directory/directory_tables.h"
#include "sepa/iban/iban.h"
#include "tests/unit/fixed_clock.h"
#include "tests/unit/test_files.h"

using namespace std::string_literals;

namespace {

constexpr time_t SWITCH = 1740956400;  // 3 March 2025, 00:00 in Germany

// A record full of rubbish, so that whatever a lookup leaves is seen.
bank_record_t rubbish() {
    bank_record_t record;
    memset(static_cast<void*>(&record), 0xA5, sizeof record);
    return record;
}

int look_up(const std::string& country, const char* key, bank_record_t* record) {
    return country == "BIC" ? bic_lookup(key, record) : bank_lookup(country.c_str(), key, record);
}

// All fields of the record that is found, in one line, or "none"; a miss has
// to leave the record alone.
std::string found(const std::string& country, const char* key) {
    bank_record_t r = rubbish(), again = rubbish();
    if (look_up(country, key, &r) != 1) return memcmp(&r, &again, sizeof r) == 0 ? "none" : "a touched record";
    again = {};
    look_up(country, key, &again);
    EXPECT_EQ(memcmp(r.text, again.text, BANK_TEXT_SIZE), 0) << "what stood in the storage is not cleared";
    std::string line;
    for (const char* text : {r.successor, r.bic, r.name, r.postal_code, r.city, r.country})
        line += "|" + std::string(text ? text : "(null)");
    char numbers[64];
    snprintf(numbers, sizeof numbers, " flag=%u method=%02X rule=%d bank_flags=%u", r.flag, r.method, r.rule,
             r.bank_flags);
    return line.substr(1) + numbers;
}

// The last rows have the longest texts that fit.
TEST(Lookup, Records) {
    ASSERT_EQ(directory_switch_time, SWITCH);
    for (const csv_row& row :
         csv_rows(TEST_DATA "/frozen_directory/records.csv", "country,key,record,record_after_switch")) {
        for (time_t now : {time_t{0}, SWITCH - 1, SWITCH, SWITCH + 1}) {
            fixed_now = now;
            EXPECT_EQ(found(row[0], row[1].c_str()), now < SWITCH || row[3].empty() ? row[2] : row[3]) << row[1];
        }
    }
    EXPECT_EQ(bank_check_method("10000099"), -1);
    EXPECT_EQ(found("BIC", nullptr), "none");
    EXPECT_EQ(found("DE", nullptr), "none");
    bank_record_t record;
    EXPECT_EQ(bank_lookup(nullptr, "10000000", &record), 0);
    for (const std::string& no_key : {""s, "_DE10"s, "_DE1000000/"s, "_DE1000000{"s, std::string(34, '0')})
        EXPECT_EQ(directory_hash(no_key.c_str()), -1) << no_key;
}

// The caller may hand in a text out of the very record that is to be filled.
TEST(Lookup, KeyInsideTheRecord) {
    fixed_now = SWITCH;
    bank_record_t record;
    ASSERT_EQ(bank_lookup("DE", "10000004", &record), 1);
    ASSERT_EQ(bank_lookup("DE", record.successor, &record), 1);
    EXPECT_STREQ(record.successor, "");
    ASSERT_EQ(bic_lookup(record.bic, &record), 1);
    EXPECT_STREQ(record.name, "Frozen Bank, Berlin");
}

TEST(BankInfo, OneBlock) {
    bank_info_t* info = nullptr;
    ASSERT_EQ(bank_info_get("frozdeff", &info), 1);
    EXPECT_EQ(std::string(info->name) + "|" + info->country + "|" + info->bic, "Frozen Bank, Berlin|DE|FROZDEFFXXX");
    EXPECT_TRUE(!info->postal_code && !info->city);
    EXPECT_EQ(info->flags, 11);
    EXPECT_EQ(info->name, reinterpret_cast<char*>(info + 1));
    free(info);
    EXPECT_EQ(bank_info_get("FROZDEFF", nullptr), 1);
    for (const char* unknown : {"FROZDEFX", static_cast<const char*>(nullptr)}) {
        bank_info_t* untouched = nullptr;
        EXPECT_EQ(bank_info_get(unknown, &untouched), -2);
        EXPECT_EQ(untouched, nullptr);
        EXPECT_EQ(bank_info_get(unknown, nullptr), -2);
    }
}

TEST(IbanGetBic, Banks) {
    std::vector<csv_row> rows = csv_rows(TEST_DATA "/frozen_directory/iban_bics.csv", "iban,result,bic,what");
    for (const csv_row& row : rows) {
        char bic[BIC_BUFFER_SIZE];
        memset(bic, 'x', sizeof bic);
        EXPECT_EQ(IBAN_getBIC(row[0].c_str(), bic), std::stoi(row[1])) << row[0];
        EXPECT_EQ(std::string(bic, sizeof bic), row[2] + std::string(sizeof bic - row[2].size(), '\0')) << row[3];
    }
    char bic[BIC_BUFFER_SIZE] = "FROZDEFFXXX";
    EXPECT_EQ(IBAN_getBIC(nullptr, bic), 0);
    EXPECT_STREQ(bic, "");
}

}  // namespace
