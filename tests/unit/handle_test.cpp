// The handle and its rulebook, and what message files (message_test.cpp) cannot
// ask for.
#include <malloc.h>

#include <atomic>
#include <cstring>
#include <set>
#include <thread>

#include "sepa/platform/record_arena.h"
#include "tests/unit/message_helpers.h"

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
static void look_for_secrets(void* block) {
    if (block && memmem(block, malloc_usable_size(block), "secret", strlen("secret"))) ++secrets_freed;
}
void* __wrap_realloc(void* block, size_t size) {
    if (growths_left == 0) return nullptr;
    if (growths_left > 0) --growths_left;
    look_for_secrets(block);  // which it leaves behind if it moves the block
    return __real_realloc(block, size);
}
void __real_free(void* block);
void __wrap_free(void* block);
void __wrap_free(void* block) {
    look_for_secrets(block);
    __real_free(block);
}
}

namespace {

TEST(Handle, NewAndAddByKind) {
    EXPECT_EQ(sepa_init(SEPA_INIT_RULEBOOK, nullptr), 0);
    constexpr long beyond_int = sizeof(long) == 8 ? static_cast<long>(int64_t{1} << 32) : 7;
    for (long unknown : {0L, 3L, -1L, beyond_int + 1, beyond_int + 2}) EXPECT_EQ(sepa_new(unknown), nullptr) << unknown;
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

// Whatever held a payment is overwritten before it goes.
TEST(Handle, NothingIsFreedWithItsContents) {
    char* volatile secret = strdup("secret");  // a compiler may leave out both calls
    free(secret);
    ASSERT_EQ(secrets_freed, 1);
    use_rulebook("DE-3.7");
    keys_t list = {{"iban", austrian_iban}, {"amount", "1"}, {"bic", "BKAUATWW"}, {"addrCC", "AT"}};
    list.insert(list.end(), {{"seq", "frst"}, {"mdate", "2024-01-01"}});  // which transfers ignore
    for (const char* key :
         {"id", "name", "ref", "mref", "old_mref", "addrDept", "addrSubDept", "addrStreet", "addrNum", "addrBldg",
          "addrFloor", "addrPoBox", "addrRoom", "addrCode", "addrTown", "addrLoc", "addrDstrct", "addrCtrySub"})
        list.push_back({key, "secret"});
    for (long kind : {SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI}) {
        message_t message = ready_message(kind);
        EXPECT_EQ(sepa_setName(message.get(), "secret") + sepa_setMessageId(message.get(), "secret"), 2);
        keys_t more = list;
        EXPECT_EQ(add(message, more), 1) << message->last_error;
        more.push_back({"name", "another secret"});
        for (int day = 100; day < 140; ++day) {
            std::string date = "secret " + std::to_string(day);
            keys_t dated = more;
            dated.push_back({"date", date.c_str()});
            EXPECT_EQ(add(message, dated), 1) << "a key that comes twice; blocks that are sorted";
        }
        char* document = sepa_toXML(message.get());
        ASSERT_NE(document, nullptr);
        explicit_bzero(document, strlen(document));  // which is ours
        free(document);
        growths_left = 0;
        EXPECT_EQ(sepa_toXML(message.get()), nullptr) << "a document that finds no memory";
        growths_left = -1;
        more.push_back({"name", ""});
        EXPECT_EQ(add(message, more), 0);
        EXPECT_EQ(sepa_setName(message.get(), "another secret") + sepa_setMessageId(message.get(), "secret 2"), 2)
            << "a value replaced";
    }
    EXPECT_EQ(secrets_freed, 1);
}

// Nor does a BIC stay on the stack, here one that can be searched.
TEST(Handle, NoBicStaysOnTheStack) {
    static char stack[4 << 20];  // of which a thread sanitizer takes one for itself
    use_rulebook("DE-3.7");
    message_t message = ready_message(SEPA_MSGTYPE_CTI);
    auto work = [](void* handle) -> void* {
        static const kv_pair_t list[] = {
            {"iban", german_iban}, {"amount", "1"}, {"bic", "bkauatww"}, {nullptr, nullptr}};
        auto m = static_cast<sepa_t*>(handle);
        [[maybe_unused]] volatile char away[8192];  // from what the end of a thread writes over
        away[0] = 0;
        return sepa_setBIC(m, "bkauatww") && cti_add(m, list) ? handle : nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread;
    void* done = nullptr;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstack(&attributes, stack, sizeof stack), 0);
    ASSERT_EQ(pthread_create(&thread, &attributes, work, message.get()), 0);
    pthread_join(thread, &done);
    EXPECT_EQ(done, message.get());
    EXPECT_EQ(memmem(stack, sizeof stack, "BKAUATWW", 8), nullptr);
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
    auto message_of_one = [] {
        message_t message = ready_message(SEPA_MSGTYPE_CTI);
        add(message, {{"iban", austrian_iban}, {"amount", "1"}, {"bic", "BKAUATWW"}, {"name", "Name"}});
        return message;
    };
    auto document_with_id = [](const message_t& message) {
        sepa_setMessageId(message.get(), "ID");
        return document_of(message);
    };
    std::set<std::string> possible;
    for (const char* rulebook : {"DE-2.7", "DE-3.7"}) {
        use_rulebook(rulebook);
        possible.insert(document_with_id(message_of_one()));
    }
    ASSERT_EQ(possible.size(), 2u);
    std::atomic<bool> done{false};
    std::thread chooser([&done] {
        for (int i = 0; !done; ++i) use_rulebook(i % 2 ? "DE-2.7" : "DE-3.7");
    });
    std::vector<std::thread> writers(4);
    std::vector<std::vector<std::string>> ids(writers.size());
    for (size_t i = 0; i < writers.size(); ++i)
        writers[i] = std::thread([&, i] {
            for (int n = 0; n < 500; ++n) {
                message_t message = message_of_one();
                document_of(message);
                ids[i].emplace_back(message->msgid);
                EXPECT_TRUE(possible.count(document_with_id(message)));
            }
        });
    for (std::thread& writer : writers) writer.join();
    done = true;
    chooser.join();
    std::set<std::string> all;
    for (const auto& some : ids) all.insert(some.begin(), some.end());
    EXPECT_EQ(all.size(), 500 * writers.size());
}

// Documents read texts by whole steps. An address sanitizer sees what is not there.
TEST(Handle, BytesAfterTextsCanBeRead) {
    using namespace sepa_internal;
    record_arena_t arena = {};
    char seen[16 + arena_margin];
    for (int i = 0; i < 1000; ++i) memcpy(seen, memset(arena_take(&arena, 16), 'x', 16), sizeof seen);
    EXPECT_EQ(std::string(seen, 16), std::string(16, 'x'));
    arena_free(&arena, [](void* piece, size_t) { free(piece); });
}

TEST(Handle, CountriesOutsideTheEea) {
    const std::string listed = "AD BL CH GB GG GI IM JE MC NC PF PM SM TF VA WF ";
    for (char first = 'A'; first <= 'Z'; ++first)
        for (char second = 'A'; second <= 'Z'; ++second) {
            std::string country = {first, second, ' '}, bic = "ABCD" + country.substr(0, 2) + "22";
            EXPECT_EQ(is_non_eea_bic(bic.c_str()), listed.find(country) != std::string::npos) << bic;
        }
    for (const char* listed_too : {"abcdch22", "ABCDwf22xxx"}) EXPECT_EQ(is_non_eea_bic(listed_too), 1);
    for (const char* other : {"CHCHDE22", "ABCDC\xC8xxx", "ABCD\x03\x08xx", "ABCD   CH"})
        EXPECT_EQ(is_non_eea_bic(other), 0);
    for (const char* brief : {"", "ABCDCH2"}) EXPECT_EQ(is_non_eea_bic(brief), -1);
}

}  // namespace
