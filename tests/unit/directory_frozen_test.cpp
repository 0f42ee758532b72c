// The logic of the lookups, on tests/data/frozen_directory. No release of the
// real lists touches these tests.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "directory/bank_directory.h"
#include "directory/directory_tables.h"
#include "iban/iban.h"
#include "tests/unit/fixed_clock.h"

// The linker sends every malloc of this program here.
static bool memory_is_out = false;
static int malloc_calls = 0;
extern "C" void* __real_malloc(size_t size);
extern "C" void* __wrap_malloc(size_t size);
void* __wrap_malloc(size_t size) {
    malloc_calls++;
    return memory_is_out ? nullptr : __real_malloc(size);
}

namespace {

constexpr time_t SWITCH = 1740956400;  // 3 March 2025, 00:00 in Germany

std::string shown(const char* text) { return text ? text : "(null)"; }

// All fields of a record in one line.
std::string shown(const bank_record_t& r) {
    char numbers[64];
    snprintf(numbers, sizeof numbers, " flag=%u method=%02X rule=%d bank_flags=%u", r.flag, r.method, r.rule,
             r.bank_flags);
    return shown(r.successor) + "|" + shown(r.bic) + "|" + shown(r.name) + "|" + shown(r.postal_code) + "|" +
           shown(r.city) + "|" + shown(r.country) + numbers;
}

// A record full of rubbish, so that whatever a lookup leaves is seen.
bank_record_t rubbish() {
    bank_record_t record;
    memset(static_cast<void*>(&record), 0xA5, sizeof record);
    return record;
}

bool untouched(const bank_record_t& record) {
    bank_record_t fresh = rubbish();
    return memcmp(&fresh, &record, sizeof record) == 0;
}

// What bank_lookup finds, or "none"; a miss has to leave the record alone.
std::string bank(const char* country, const char* bank_id) {
    bank_record_t record = rubbish();
    int found = bank_lookup(country, bank_id, &record);
    EXPECT_TRUE(found == 1 || (found == 0 && untouched(record)));
    return found ? shown(record) : "none";
}

// What bank_lookup finds at a time; bank_check_method has to agree.
std::string bank_at(time_t now, const char* bank_code) {
    fixed_now = now;
    bank_record_t record;
    int method = bank_lookup("DE", bank_code, &record) == 1 ? record.method : -1;
    EXPECT_EQ(bank_check_method(bank_code), method) << bank_code;
    return bank("DE", bank_code);
}

std::string bank_of_bic(const char* bic) {
    bank_record_t record = rubbish();
    int found = bic_lookup(bic, &record);
    EXPECT_TRUE(found == 1 || (found == 0 && untouched(record)));
    return found ? shown(record) : "none";
}

TEST(BankLookup, PeriodsDifferInEachField) {
    const struct {
        const char *bank_code, *before, *after;
    } banks[] = {
        {"10000001", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0",
         "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=1 method=09 rule=0"},
        {"10000002", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=00 rule=0",
         "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=7C rule=0"},
        {"10000003", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=124",
         "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=31868"},
        {"10000004", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0",
         "10000000|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0"},
        {"10000005", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0",
         "||Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0"},
        {"10000006", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0",
         "|FROZDEFFXXX|Frozen Bank (vormals \"Eis\")|10115|Berlin|DE flag=0 method=09 rule=0"},
        {"10000007", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0",
         "|FROZDEFFXXX|Frozen Bank||Berlin|DE flag=0 method=09 rule=0"},
        {"10000008", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0",
         "|FROZDEFFXXX|Frozen Bank|10115|Köln|DE flag=0 method=09 rule=0"},
        {"10000009", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0",
         "|FROZDEFFXXX|Frozen Bank|10115|Berlin|AT flag=0 method=09 rule=0"},
        {"10000010", "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=00 rule=0",
         "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=1 method=7C rule=31868"},
    };
    ASSERT_EQ(directory_switch_time, SWITCH);
    for (const auto& row : banks) {
        std::string before = std::string(row.before) + " bank_flags=0";
        std::string after = std::string(row.after) + " bank_flags=0";
        EXPECT_EQ(bank_at(SWITCH - 1, row.bank_code), before) << row.bank_code;
        EXPECT_EQ(bank_at(SWITCH, row.bank_code), after) << row.bank_code;
        EXPECT_EQ(bank_at(SWITCH + 1, row.bank_code), after) << row.bank_code;
        EXPECT_EQ(bank_at(0, row.bank_code), before) << row.bank_code;
    }
}

TEST(BankLookup, OnePeriod) {
    for (time_t now : {SWITCH - 1, SWITCH}) {
        EXPECT_EQ(bank_at(now, "10000000"),
                  "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0 bank_flags=0");
        EXPECT_EQ(bank_at(now, "20000000"), "none") << "a bank code of the earlier period alone";
        EXPECT_EQ(bank_at(now, "20000001"),
                  "|FROZDEFFXXX|Frozen Bank|10115|Berlin|DE flag=0 method=09 rule=0 bank_flags=0");
        EXPECT_EQ(bank_at(now, "20000002"),
                  "99999999||Nachfolger fehlt|10115|Berlin|DE flag=1 method=09 rule=0 bank_flags=0");
        EXPECT_EQ(bank_at(now, "20000003"), "||||| flag=0 method=09 rule=0 bank_flags=0");
    }
}

// 167 bytes and a NUL fill the record, with and without a second sub-record.
TEST(BankLookup, LongestTexts) {
    for (time_t now : {SWITCH - 1, SWITCH}) {
        fixed_now = now;
        bank_record_t record = rubbish();
        ASSERT_EQ(bank_lookup("DE", "10000011", &record), 1);
        EXPECT_EQ(record.country + 3, record.text + BANK_TEXT_SIZE);
        EXPECT_STREQ(record.country, "DE");
        EXPECT_STREQ(record.city, "Berlin");
        EXPECT_EQ(strncmp(record.name, "BB", 2) == 0, now == SWITCH);
        EXPECT_EQ(record.rule, 5700);
    }
    bank_record_t record = rubbish();
    ASSERT_EQ(bank_lookup("AT", "12345", &record), 1);
    EXPECT_EQ(record.country + 3, record.text + BANK_TEXT_SIZE);
    EXPECT_STREQ(record.bic, "");
    EXPECT_STREQ(record.country, "AT");
    ASSERT_EQ(bic_lookup("FROZATWW", &record), 1);
    EXPECT_EQ(record.country + 3, record.text + BANK_TEXT_SIZE);
    EXPECT_EQ(strlen(record.name), 152u);
    EXPECT_STREQ(record.country, "AT");
}

// What an earlier lookup left in the storage is gone, to the last byte of text.
TEST(BankLookup, RecordIsClearedWhole) {
    fixed_now = SWITCH;
    bank_record_t first = {}, again = rubbish();
    ASSERT_EQ(bank_lookup("CH", "100", &first), 1);
    ASSERT_EQ(bank_lookup("CH", "100", &again), 1);
    EXPECT_EQ(memcmp(first.text, again.text, BANK_TEXT_SIZE), 0);
    ASSERT_EQ(bic_lookup("FROZLI22", &first), 1);
    again = rubbish();
    ASSERT_EQ(bic_lookup("FROZLI22", &again), 1);
    EXPECT_EQ(memcmp(first.text, again.text, BANK_TEXT_SIZE), 0);
}

TEST(BankLookup, AustriaSwitzerlandLiechtenstein) {
    const std::string swiss =
        "(null)|FROZCHZZXXX|Gfrorni Nationalbank|8022|Zürich| flag=0 method=00 rule=0 bank_flags=0";
    EXPECT_EQ(bank("CH", "00100"), swiss);
    EXPECT_EQ(bank("CH", "100"), swiss);
    EXPECT_EQ(bank("LI", "100"), swiss);
    EXPECT_EQ(bank("CH", "0"), "(null)|FROZCHZZ000|Bank Null|8000|Zürich| flag=0 method=00 rule=0 bank_flags=0");
    EXPECT_EQ(bank("CH", ""), "none") << "padded, it would be a bank id";
    EXPECT_EQ(bank("AT", "0100"),
              "(null)|FROZATWWXXX|Gefrorene Nationalbank|1010|Wien|AT flag=0 method=00 rule=0 bank_flags=0");
    EXPECT_EQ(bank("LI", "08800"),
              "(null)|FROZLI22XXX|Liechtensteiner Eisbank|9490|Vaduz|LI flag=0 method=00 rule=0 bank_flags=0");
    EXPECT_EQ(bank("CH", "89999"), "(null)|FROZGB2LXXX|Cold Clearing||London|GB flag=0 method=00 rule=0 bank_flags=0");
}

TEST(BankLookup, Misses) {
    const struct {
        const char *country, *bank_id;
    } misses[] = {
        {nullptr, "10000000"}, {"DE", nullptr},    {"DE", ""},         {"", "10000000"},    {"D", "10000000"},
        {"DEU", "10000000"},   {"de", "10000000"}, {"FR", "10000000"}, {"DE", "100000000"}, {"DE", "010000000"},
        {"DE", "1000000"},     {"DE", "1000000 "}, {"DE", "1000000{"}, {"DE", "10000099"},  {"CH", "000100"},
        {"CH", "10000000"},    {"AT", "08800"},    {"CH", "\xFF"},     {"DE", "_DE10000"},  {"CH", "FROZCHZZXXX"},
    };
    for (const auto& miss : misses) EXPECT_EQ(bank(miss.country, miss.bank_id), "none") << shown(miss.bank_id);
}

// The caller may hand in a text out of the very record that is to be filled.
TEST(BankLookup, KeyInsideTheRecord) {
    fixed_now = SWITCH;
    bank_record_t record;
    ASSERT_EQ(bank_lookup("DE", "10000004", &record), 1);
    ASSERT_EQ(bank_lookup("DE", record.successor, &record), 1);
    EXPECT_STREQ(record.successor, "");
    ASSERT_EQ(bic_lookup(record.bic, &record), 1);
    EXPECT_STREQ(record.name, "Frozen Bank, Berlin");
}

TEST(BicLookup, HitsAndMisses) {
    const std::string main_office =
        "(null)|FROZDEFFXXX|Frozen Bank, Berlin|(null)|(null)|DE flag=0 method=00 rule=0 bank_flags=11";
    for (const char* bic : {"FROZDEFF", "frozdeff", "FROZDEFFXXX", "frozdeffxxx", "FrozDeffXxx"}) {
        EXPECT_EQ(bank_of_bic(bic), main_office) << bic;
    }
    EXPECT_EQ(bank_of_bic("FROZDEFF300"),
              "(null)|FROZDEFF300|Branch 300|(null)|(null)|DE flag=0 method=00 rule=0 bank_flags=15");
    EXPECT_EQ(bank_of_bic("FROZJE22"),
              "(null)|FROZJE22XXX|Frozen \"Jersey\" Bank|(null)|(null)|JE flag=0 method=00 rule=0 bank_flags=0");
    EXPECT_EQ(bank_of_bic("FROZLI22"), "(null)|FROZLI22XXX||(null)|(null)|LI flag=0 method=00 rule=0 bank_flags=8");
    const char* misses[] = {nullptr,          "",
                            "FROZDEF",        "FROZDEFFX",
                            "FROZDEFFXX",     "FROZDEFFXXXX",
                            "FROZDEFF301",    "FROZ EFFXXX",
                            "FROZDEFFXX\xFF", "_DE10000000",
                            "FROZDEFF\n00",   "FROZDEF@"};
    for (const char* bic : misses) EXPECT_EQ(bank_of_bic(bic), "none") << shown(bic);
}

TEST(BankInfo, OneBlock) {
    bank_info_t* info = nullptr;
    ASSERT_EQ(bank_info_get("frozdeff", &info), 1);
    EXPECT_STREQ(info->name, "Frozen Bank, Berlin");
    EXPECT_EQ(info->postal_code, nullptr);
    EXPECT_EQ(info->city, nullptr);
    EXPECT_STREQ(info->country, "DE");
    EXPECT_STREQ(info->bic, "FROZDEFFXXX");
    EXPECT_EQ(info->flags, 11);
    EXPECT_EQ(info->name, reinterpret_cast<char*>(info + 1));
    EXPECT_EQ(info->country, info->name + strlen(info->name) + 1);
    EXPECT_EQ(info->bic, info->country + 3);
    free(info);
}

TEST(BankInfo, FailuresAndAllocations) {
    bank_info_t* const before = reinterpret_cast<bank_info_t*>(&memory_is_out);
    bank_info_t* info = before;
    bank_record_t record;
    char bic[12];
    int calls = malloc_calls;
    int results[] = {bank_info_get("FROZDEFF", nullptr),     bank_info_get("FROZDEFX", nullptr),
                     bank_info_get("FROZDEFX", &info),       bank_info_get(nullptr, &info),
                     bank_lookup("DE", "10000001", &record), IBAN_getBIC("DE00100000000000000000", bic)};
    EXPECT_EQ(malloc_calls, calls) << "only a bank_info_t is allocated";
    memory_is_out = true;
    int starved = bank_info_get("FROZDEFF", &info);
    memory_is_out = false;
    EXPECT_EQ(starved, -3);
    EXPECT_EQ(info, before);
    const int expected[] = {1, -2, -2, -2, 1, 1};
    for (size_t i = 0; i < 6; i++) EXPECT_EQ(results[i], expected[i]) << i;
}

// The hash as it is told, with no short cut.
int32_t plain_hash(const std::string& key) {
    uint32_t sums[3] = {};
    for (size_t i = 0; i < key.size(); i++) {
        auto c = static_cast<unsigned char>(key[i]);
        if (c < 48 || c > 122 || i > 14) return -1;
        sums[0] += directory_t1[75 * i + c - 48];
        sums[1] += directory_t2[75 * i + c - 48];
        sums[2] += directory_t3[75 * i + c - 48];
    }
    if (key.size() < 6) return -1;
    int64_t sum = 0;
    for (uint32_t s : sums) sum += directory_g[s % static_cast<uint32_t>(directory_cells)];
    return static_cast<int32_t>(sum % directory_count);
}

TEST(DirectoryHash, AnyText) {
    std::mt19937 random(7);
    int hashed[18] = {};
    for (int i = 0; i < 100000; i++) {
        std::string key(random() % 18, ' ');
        for (char& c : key) c = static_cast<char>('0' + random() % 75);
        if (random() % 4 == 0 && !key.empty()) key[random() % key.size()] = "/{ \xFF\x01_z0"[random() % 8];
        int32_t index = directory_hash(key.c_str());
        ASSERT_EQ(index, plain_hash(key)) << key;
        ASSERT_LT(index, directory_count);
        if (index >= 0) hashed[key.size()]++;
    }
    for (int length = 0; length < 18; length++) {
        EXPECT_EQ(hashed[length] > 0, length >= 6 && length <= 15) << length;
    }
    EXPECT_EQ(directory_hash("_DE10000000"), directory_count - directory_de_count);
}

TEST(IbanGetBic, Banks) {
    const struct {
        const char* iban;
        int result;
        const char* bic;
    } rows[] = {
        {"DE00100000000123456789", 1, "FROZDEFFXXX"},
        {"DE00200000030123456789", 1, ""},
        {"DE00300400000123456789", 1, "COBADEFFXXX"},  // rule 5, a 4 in the fourth place
        {"DE00300401000123456789", 1, "COBADEFFXXX"},  // in another version; 0 and 1 behind the 4
        {"DE00300410000123456789", 1, "COBADEFFXXX"},  // 1 and 0
        {"DE00300411000123456789", 1, "FROZDEFF303"},  // 1 and 1
        {"DE00300800000123456789", 1, "FROZDEFF304"},  // no 4
        {"DE00301400000123456789", 1, "DAAEDEDDXXX"},  // rule 14, without and with a BIC
        {"DE00302400000123456789", 1, "DAAEDEDDXXX"},
        {"DE00303400000123456789", 1, "FROZDEFF306"},
        {"AT000010012345678901", 1, "FROZATWWXXX"},
        {"AT001234512345678901", 1, ""},
        {"CH0000100123456789012", 1, "FROZCHZZXXX"},
        {"LI0008800123456789012", 1, "FROZLI22XXX"},
        {"LI0000100123456789012", 1, "FROZCHZZXXX"},
        {"DE00100000990123456789", -3, ""},
        {"CH00001 0123456789012", -3, ""},
        {"DE0010000000012345678", -1, ""},
        {"DE001000000001234567890", -1, ""},
        {"AT00001001234567890", -1, ""},
        {"AT0000100123456789012", -1, ""},
        {"CH000010012345678901", -1, ""},
        {"LI00088001234567890123", -1, ""},
        {"DE", -1, ""},
        {"de00100000000123456789", 0, ""},
        {"FR00100000000123456789", 0, ""},
        {"D", 0, ""},
        {"", 0, ""},
        {nullptr, 0, ""},
    };
    for (const auto& row : rows) {
        char bic[12];
        memset(bic, 'x', sizeof bic);
        EXPECT_EQ(IBAN_getBIC(row.iban, bic), row.result) << shown(row.iban);
        EXPECT_EQ(std::string(bic, 12), std::string(row.bic) + std::string(12 - strlen(row.bic), '\0'));
    }
}

}  // namespace
