// Everything that held a payment is overwritten before it is freed. The
// library's calls to the allocator come by here.
#include <cstring>
#include <map>

#include "tests/unit/message_helpers.h"

namespace {

using blocks_t = std::map<void*, size_t>;

// Blocks that the program holds, with the sizes it asked for.
blocks_t& held() {
    static blocks_t& blocks = *new blocks_t;
    return blocks;
}

unsigned freed, freed_unwiped;

void* remember(void* block, size_t size) {
    if (block) held()[block] = size;
    return block;
}

bool is_wiped(const void* block, size_t size) {
    auto bytes = static_cast<const unsigned char*>(block);
    for (size_t i = 0; i < size; ++i)
        if (bytes[i]) return false;
    return true;
}

}  // namespace

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);
char* __real_strdup(const char* text);
void __real_free(void* block);
void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_realloc(void* block, size_t size);
char* __wrap_strdup(const char* text);
void __wrap_free(void* block);

void* __wrap_malloc(size_t size) { return remember(__real_malloc(size), size); }

void* __wrap_calloc(size_t count, size_t size) { return remember(__real_calloc(count, size), count * size); }

void* __wrap_realloc(void* block, size_t size) {
    held().erase(block);
    return remember(__real_realloc(block, size), size);
}

char* __wrap_strdup(const char* text) { return static_cast<char*>(remember(__real_strdup(text), strlen(text) + 1)); }

void __wrap_free(void* block) {
    auto found = held().find(block);
    if (found != held().end()) {
        ++freed;
        freed_unwiped += !is_wiped(block, found->second);
        held().erase(found);
    }
    __real_free(block);
}
}

namespace {

struct Memory : testing::TestWithParam<long> {
    message_t message;

    bool is_debit() const { return GetParam() == SEPA_MSGTYPE_DDI; }

    void start() {
        use_rulebook("DE-3.5");
        message = new_message(GetParam());
        ASSERT_TRUE(sepa_setIBAN(message.get(), german_iban) && sepa_setBIC(message.get(), "DEUTDEFF") &&
                    sepa_setName(message.get(), "Name") &&
                    sepa_setCreditorIdentifier(message.get(), "DE98ZZZ09999999999"));
    }

    // Every key that the rulebook takes; `more` stands behind them.
    keys_t all_keys(const char* rulebook, keys_t more = {}) {
        use_rulebook(rulebook);
        keys_t keys = {{"id", "id"},     {"name", "name"}, {"iban", austrian_iban}, {"bic", "BKAUATWW"},
                       {"addrCC", "AT"}, {"ref", "ref"},   {"date", "2024-01-01"},  {"amount", "1"}};
        if (is_debit())
            keys.insert(keys.end(), {{"seq", "frst"},
                                     {"mref", "m"},
                                     {"mdate", "2024-01-01"},
                                     {"old_mref", "o"},
                                     {"old_iban", german_iban},
                                     {"smnda", "1"}});
        else
            keys.push_back({"purp", "SALA"});
        if (!strcmp(rulebook, "DE-3.7"))
            for (const char* key :
                 {"addrDept", "addrSubDept", "addrStreet", "addrNum", "addrBldg", "addrFloor", "addrPoBox", "addrRoom",
                  "addrCode", "addrTown", "addrLoc", "addrDstrct", "addrCtrySub"})
                keys.push_back({key, "text"});
        else
            keys.insert(keys.end(), {{"addrLine1", "line 1"}, {"addrLine2", "line 2"}});
        keys.insert(keys.end(), more.begin(), more.end());
        return keys;
    }

    unsigned texts_of(const keys_t& keys) {  // all but amount, seq and smnda are kept as texts
        return static_cast<unsigned>(keys.size()) - (is_debit() ? 3 : 1);
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, Memory, testing::Values(SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI),
                         [](const auto& kind) { return kind.param == SEPA_MSGTYPE_DDI ? "Debit" : "Transfer"; });

TEST_P(Memory, AFreedMessageIsWiped) {
    blocks_t before = held();
    start();
    unsigned texts = 6;  // iban, bic, name, creditor_id, date, msgid
    for (const char* rulebook : {"DE-3.5", "DE-3.7"}) {
        keys_t keys = all_keys(rulebook);
        texts += texts_of(keys);
        ASSERT_EQ(add(message, keys), 1) << message->last_error;
    }
    ASSERT_NE(document_of(message), "");
    size_t blocks = held().size() - before.size();
    EXPECT_EQ(blocks, texts + 3) << "two records and the handle besides";
    freed = freed_unwiped = 0;
    message.reset();
    EXPECT_EQ(freed, blocks);
    EXPECT_EQ(freed_unwiped, 0u);
    EXPECT_EQ(held(), before);
}

TEST_P(Memory, AFailedAddIsWiped) {
    start();
    blocks_t before = held();
    for (const char* rulebook : {"DE-3.5", "DE-3.7"}) {
        freed = freed_unwiped = 0;
        EXPECT_EQ(add(message, all_keys(rulebook, {{"Name", ""}})), 0);
        EXPECT_EQ(freed, texts_of(all_keys(rulebook)) + 1);
        EXPECT_EQ(freed_unwiped, 0u);
        EXPECT_EQ(held(), before) << "nothing leaks";
        ASSERT_EQ(add(message, all_keys(rulebook, {{"Amount", "0.001"}})), 0);
        EXPECT_STREQ(message->last_error, "Amount missing");
        EXPECT_EQ(held(), before);
    }
    ASSERT_EQ(add(message, all_keys("DE-3.5", {{"NAME", "later"}, {"Iban", german_iban}})), 1);
    message.reset();
    EXPECT_EQ(freed_unwiped, 0u);
}

}  // namespace
