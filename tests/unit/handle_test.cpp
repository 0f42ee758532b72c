// The handle and its rulebook, and what message files (message_test.cpp) cannot
// ask for.
#include <malloc.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <random>
#include <set>
#include <thread>

#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_helpers.h"

static bool memory_is_out;
static int growths_left = -1;           // of a buffer; below 0 for any number
static std::atomic<int> secrets_freed;  // blocks with this word in them

static std::atomic<int> next_rulebook = RULEBOOK_NONE;  // which "another thread" chooses in the midst of an add

// The linker sends the program's calls of these functions here.
extern "C" {
size_t __real_strnlen(const char* text, size_t limit);
size_t __wrap_strnlen(const char* text, size_t limit);
size_t __wrap_strnlen(const char* text, size_t limit) {
    if (int chosen = next_rulebook.exchange(RULEBOOK_NONE); chosen != RULEBOOK_NONE) current_rulebook = chosen;
    return __real_strnlen(text, limit);
}
void* __real_realloc(void* block, size_t size);
void* __wrap_realloc(void* block, size_t size);
void* __wrap_realloc(void* block, size_t size) {
    if (growths_left == 0) return nullptr;
    if (growths_left > 0) --growths_left;
    return __real_realloc(block, size);
}
char* __real_strdup(const char* text);
char* __wrap_strdup(const char* text);
char* __wrap_strdup(const char* text) { return memory_is_out ? nullptr : __real_strdup(text); }
void __real_free(void* block);
void __wrap_free(void* block);
void __wrap_free(void* block) {
    if (block && memmem(block, malloc_usable_size(block), "secret", strlen("secret"))) ++secrets_freed;
    __real_free(block);
}
}

namespace {

TEST(Rulebook, IsChosenByTheLocalDate) {
    constexpr time_t day = 1713312000;  // 2024-04-17 00:00:00, as 2023-12-31, 2025-01-01 and 2100-01-01 below
    const std::pair<time_t, int> rows[] = {{day - 1, RULEBOOK_DE_3_5},    {day, RULEBOOK_DE_3_7},
                                           {0, RULEBOOK_DE_3_5},          {1704067199, RULEBOOK_DE_3_5},
                                           {1735689600, RULEBOOK_DE_3_7}, {4102444800, RULEBOOK_DE_3_7}};
    for (long offset : {7200L, -36000L, 0L})
        for (auto [local, rulebook] : rows) {
            fixed_local_offset = offset;
            fixed_now = local - offset;
            current_rulebook = RULEBOOK_NONE;
            EXPECT_EQ(sepa_new(0), nullptr) << "a failure chooses too";
            EXPECT_EQ(current_rulebook, rulebook) << local << " " << offset;
        }
    use_rulebook("AT-6");
    EXPECT_TRUE(new_message(SEPA_MSGTYPE_DDI));
    EXPECT_EQ(current_rulebook, RULEBOOK_AT_6) << "the clock is not read again";
}

TEST(Rulebook, Init) {
    for (int id = 0; id < RULEBOOK_COUNT; ++id) {
        use_rulebook(rulebook_names[id]);
        EXPECT_EQ(current_rulebook, id) << rulebook_names[id];
    }
    for (long option : {0L, 1L, 2L, 4L, -3L, (1L << 32) + 3}) EXPECT_EQ(sepa_init(option, "DE-2.6"), 0) << option;
    for (const char* unknown : {"", "de-2.7", "DE-2.7 ", " DE-2.7", "DE-3", "DE-3.50", "DE-3.6", "9"})
        EXPECT_EQ(sepa_init(3, unknown), 0) << unknown;
    EXPECT_EQ(sepa_init(3, nullptr), 0);
    EXPECT_EQ(current_rulebook, RULEBOOK_DE_3_7);
}

TEST(Handle, NewAndAddByKind) {
    for (long unknown : {0L, 3L, -1L, (1L << 32) + 1, (1L << 32) + 2}) EXPECT_EQ(sepa_new(unknown), nullptr) << unknown;
    for (long kind : {SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI}) {
        message_t message = new_message(kind);
        sepa_t expected;
        memset(&expected, 0, sizeof expected);
        expected.msgtype = static_cast<int32_t>(kind);
        expected.batch_booking = 1;
        EXPECT_EQ(memcmp(message.get(), &expected, sizeof expected), 0);

        bool debit = kind == SEPA_MSGTYPE_DDI;
        EXPECT_EQ((debit ? ddi_add : cti_add)(message.get(), nullptr), 0);
        EXPECT_STREQ(message->last_error, "No key-value list submitted");
        EXPECT_EQ((debit ? cti_add : ddi_add)(message.get(), nullptr), 0);
        EXPECT_STREQ(message->last_error, debit ? "No CTI message" : "No DDI message");
    }
    sepa_free(nullptr);
}

TEST(Handle, ASetterWithoutMemoryEmptiesItsField) {
    const struct {
        int (*set)(sepa_t*, const char*);
        char* sepa_t::*field;
        const char *value, *error;
    } rows[] = {
        {sepa_setIBAN, &sepa_t::iban, austrian_iban, "strdup() failed"},
        {sepa_setBIC, &sepa_t::bic, "DEUTDEFF", "sepa_setBIC: strdup() failed"},
        {sepa_setName, &sepa_t::name, "Other", "sepa_setName: strdup() failed"},
        {sepa_setCreditorIdentifier, &sepa_t::creditor_id, "DE98abc09999999999", "strdup() failed"},
        {sepa_setDate, &sepa_t::date, "2026-12-01", "strdup() failed"},
    };
    for (const auto& row : rows) {
        message_t message = ready_message(SEPA_MSGTYPE_DDI), same = ready_message(SEPA_MSGTYPE_DDI);
        EXPECT_EQ(sepa_setDate(message.get(), "2026-11-30") + sepa_setDate(same.get(), "2026-11-30"), 2);
        memory_is_out = true;
        EXPECT_EQ(row.set(message.get(), row.value), 0);
        memory_is_out = false;
        EXPECT_STREQ(message->last_error, row.error);
        EXPECT_EQ(message.get()->*row.field, nullptr);
        free(same.get()->*row.field);
        same.get()->*row.field = nullptr;
        EXPECT_TRUE(snapshot_t(message.get()) == snapshot_t(same.get())) << "another field, too";
    }
}

// Whatever held a payment is overwritten before it goes.
TEST(Handle, NothingIsFreedWithItsContents) {
    free(strdup("secret"));
    ASSERT_EQ(secrets_freed, 1);
    keys_t keys = {{"iban", austrian_iban}, {"amount", "1"}, {"bic", "BKAUATWW"}, {"addrCC", "AT"}};
    for (const char* key : {"id", "name", "ref"}) keys.push_back({key, "secret"});
    const keys_t lines = {{"addrLine1", "secret"}, {"addrLine2", "secret"}};
    const keys_t debit = {{"seq", "frst"}, {"mref", "secret"}, {"old_mref", "secret"}, {"mdate", "2024-01-01"}};
    keys_t parts;
    for (const char* part : {"addrDept", "addrSubDept", "addrStreet", "addrNum", "addrBldg", "addrFloor", "addrPoBox",
                             "addrRoom", "addrCode", "addrTown", "addrLoc", "addrDstrct", "addrCtrySub"})
        parts.push_back({part, "secret"});
    for (const char* rulebook : {"DE-3.5", "DE-3.7"})
        for (long kind : {SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI}) {
            use_rulebook(rulebook);
            message_t message = ready_message(kind);
            EXPECT_EQ(sepa_setName(message.get(), "secret"), 1);
            EXPECT_EQ(sepa_setMessageId(message.get(), "secret"), 1);
            keys_t list = keys;
            const keys_t& address = current_rulebook == RULEBOOK_DE_3_7 ? parts : lines;
            list.insert(list.end(), address.begin(), address.end());
            if (kind == SEPA_MSGTYPE_DDI) list.insert(list.end(), debit.begin(), debit.end());
            EXPECT_EQ(add(message, list), 1) << message->last_error;
            list.insert(list.end(), {{"name", "another secret"}, {"ref", "another secret"}});
            EXPECT_EQ(add(message, list), 1) << "a key that comes twice";
            list.push_back({"date", "secret day"});
            EXPECT_EQ(add(message, list), 1) << "the items of the sort have dates";
            growths_left = 0;
            EXPECT_EQ(sepa_toXML(message.get()), nullptr) << "a document that finds no memory";
            growths_left = -1;
            list.push_back({"name", ""});
            EXPECT_EQ(add(message, list), 0);
            EXPECT_EQ(sepa_setName(message.get(), "another secret") + sepa_setMessageId(message.get(), "secret 2"), 2)
                << "a value replaced";
        }
    EXPECT_EQ(secrets_freed, 1);
}

TEST(Handle, AnAddIsOfOneRulebook) {
    use_rulebook("DE-2.6");
    message_t message = new_message(SEPA_MSGTYPE_CTI);
    next_rulebook = RULEBOOK_AT_6;
    EXPECT_EQ(add(message, {{"iban", austrian_iban}, {"amount", "1"}, {"name", "ä"}}), 0);
    EXPECT_EQ(current_rulebook, RULEBOOK_AT_6);
    EXPECT_STREQ(message->last_error, "Invalid character '\xC3' in creditor name");
}

// Another thread may choose another rulebook at any time; a document is of one
// all the same, and no message id is given twice.
TEST(Handle, InThreads) {
    message_t message = ready_message(SEPA_MSGTYPE_CTI);
    add(message, {{"iban", austrian_iban}, {"amount", "1"}, {"bic", "BKAUATWW"}, {"name", "Name"}});
    message->msgid = strdup("ID");
    std::set<std::string> possible;
    for (const char* rulebook : {"DE-2.7", "DE-3.7"}) {
        use_rulebook(rulebook);
        possible.insert(document_of(message));
    }
    ASSERT_EQ(possible.size(), 2u);
    std::atomic<bool> done{false};
    std::thread chooser([&done] {
        for (int i = 0; !done; ++i) use_rulebook(i % 2 ? "DE-2.7" : "DE-3.7");
    });
    std::vector<std::thread> writers(4);
    std::vector<std::set<std::string>> ids(writers.size());
    for (size_t i = 0; i < writers.size(); ++i)
        writers[i] = std::thread([&, i] {
            message_t mine = ready_message(SEPA_MSGTYPE_CTI);
            add(mine, {{"iban", austrian_iban}, {"amount", "1"}, {"bic", "BKAUATWW"}, {"name", "Name"}});
            for (int n = 0; n < 500; ++n) {
                document_of(mine);
                EXPECT_TRUE(ids[i].insert(mine->msgid).second);
                free(mine->msgid);
                mine->msgid = strdup("ID");
                EXPECT_TRUE(possible.count(document_of(mine)));
                free(mine->msgid);
                mine->msgid = nullptr;
            }
        });
    for (std::thread& writer : writers) writer.join();
    done = true;
    chooser.join();
    for (size_t i = 1; i < ids.size(); ++i) ids[0].insert(ids[i].begin(), ids[i].end());
    EXPECT_EQ(ids[0].size(), 500 * writers.size());
}

// The scan agrees with the system's on 300,000 texts made of what matters.
TEST(Handle, DateScansAsTheSystemDoes) {
    message_t message = new_message(SEPA_MSGTYPE_CTI);
    std::mt19937 random(20240417);
    const std::string bytes = "0123456789----+ \tx";
    for (int i = 0; i < 300000; ++i) {
        std::string text = "2024-05-06";
        for (auto changes = random() % 6 + 1; changes; --changes) text[random() % 10] = bytes[random() % bytes.size()];
        unsigned year, month, day;
        bool expected = sscanf(text.c_str(), "%04u-%02u-%02u", &year, &month, &day) == 3;
        ASSERT_EQ(sepa_setDate(message.get(), text.c_str()), expected) << text;
    }
}

TEST(NonEeaBic, Countries) {
    const std::string listed = "AD BL CH GB GG GI IM JE MC NC PF PM SM TF VA WF ";
    for (char first = 'A'; first <= 'Z'; ++first)
        for (char second = 'A'; second <= 'Z'; ++second) {
            std::string country = {first, second, ' '}, bic = "ABCD" + country.substr(0, 2) + "22";
            int expected = listed.find(country) != std::string::npos;
            EXPECT_EQ(is_non_eea_bic(bic.c_str()), expected) << bic;
            for (char& c : bic) c = static_cast<char>(c | 0x20);
            EXPECT_EQ(is_non_eea_bic((bic + "xxx").c_str()), expected) << bic;
        }
    for (const char* other : {"CHCHDE22", "ABCDC\xC8xxx", "ABCD\x03\x08xx", "ABCD   CH"})
        EXPECT_EQ(is_non_eea_bic(other), 0);
    for (const char* brief : {"", "ABCDCH2"}) EXPECT_EQ(is_non_eea_bic(brief), -1);
}

}  // namespace
