// Every public operation that allocates, with each of its allocations failing,
// alone and together with all that follow: result, reason, a message unchanged
// but for what is told, nothing lost, and the next call as if nothing had been.
// Everything that held a payment is overwritten before it is freed.
#include <filesystem>

#include "directory/bank_directory.h"
#include "iban/iban.h"
#include "statement/mt940.h"
#include "tests/unit/failing_memory.h"
#include "tests/unit/message_helpers.h"
#include "tests/unit/message_snapshot.h"
#include "tests/unit/statement_dump.h"

namespace {

// The first uses come once in a process, so this goes before all else.
TEST(Allocation, AFirstUseOfThePatterns) {
    for_every_allocation([](fault_mode_t mode, long nth) {
        const char* reason = "none";
        int result = run_failing(mode, nth, [&] { return IBAN_check(german_iban, &reason); });
        EXPECT_EQ(result, !memory.failed);
        EXPECT_STREQ(reason, memory.failed ? "Error while initializing regular expressions" : "none");
    });
    for_every_allocation([](fault_mode_t mode, long nth) {
        int result = run_failing(mode, nth, [] { return sepa_check_field(FIELD_BIC, "COBADEFF"); });
        EXPECT_EQ(result, !memory.failed);
    });
}

struct Message : testing::TestWithParam<long> {
    message_t ready() const {
        message_t message = ready_message(GetParam());
        message->last_error = "earlier";
        return message;
    }

    // Every key that the rulebook takes; `more` stands behind them.
    keys_t all_keys(const char* date, const keys_t& more = {}) const {
        keys_t keys = {{"id", "id"},     {"name", "name"}, {"iban", austrian_iban}, {"bic", "BKAUATWW"},
                       {"addrCC", "AT"}, {"ref", "ref"},   {"date", date},          {"amount", "0.1"}};
        const keys_t transfer = {{"purp", "SALA"}}, lines = {{"addrLine1", "line 1"}, {"addrLine2", "line 2"}},
                     debit = {{"seq", "frst"},           {"mref", "m"}, {"mdate", "2024-01-01"}, {"old_mref", "o"},
                              {"old_iban", german_iban}, {"smnda", "1"}};
        keys_t parts;
        for (const char* part :
             {"addrDept", "addrSubDept", "addrStreet", "addrNum", "addrBldg", "addrFloor", "addrPoBox", "addrRoom",
              "addrCode", "addrTown", "addrLoc", "addrDstrct", "addrCtrySub"})
            parts.push_back({part, "text"});
        for (const keys_t& others : {GetParam() == SEPA_MSGTYPE_DDI ? debit : transfer,
                                     current_rulebook == RULEBOOK_DE_3_7 ? parts : lines, more})
            keys.insert(keys.end(), others.begin(), others.end());
        return keys;
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, Message, testing::Values(SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI));

TEST_P(Message, New) {
    for_every_allocation([kind = GetParam()](fault_mode_t mode, long nth) {
        message_t message(run_failing(mode, nth, [kind] { return sepa_new(kind); }));
        EXPECT_EQ(!message, memory.failed);
    });
}

TEST_P(Message, Setters) {
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
        SCOPED_TRACE(row.value);
        for_every_allocation([&](fault_mode_t mode, long nth) {
            message_t message = ready(), same = ready();
            snapshot_t before(message.get());
            int result = run_failing(mode, nth, [&] { return row.set(message.get(), row.value); });
            EXPECT_EQ(result, !memory.failed);
            EXPECT_STREQ(message->last_error, memory.failed ? row.error : "earlier");
            EXPECT_EQ(text_of(message.get()->*row.field), memory.failed ? "(none)" : row.value);
            std::swap(message.get()->*row.field, same.get()->*row.field);
            EXPECT_TRUE(before == snapshot_t(message.get())) << "another field";
        });
    }
}

TEST_P(Message, Add) {
    for (const char* rulebook : {"DE-3.5", "DE-3.7"}) {
        use_rulebook(rulebook);
        for_every_allocation([this](fault_mode_t mode, long nth) {
            message_t message = ready();
            memory.unwiped = 0;
            ASSERT_EQ(add(message, all_keys("2026-12-02")), 1) << message->last_error;
            snapshot_t before(message.get());
            keys_t list = all_keys("2026-12-01", {{"Name", "Other"}, {"IBAN", german_iban}, {"Date", "2026-12-03"}});
            int result = run_failing(mode, nth, [&] { return add(message, list); });
            EXPECT_EQ(result, !memory.failed);
            EXPECT_EQ(before == snapshot_t(message.get()), memory.failed);
            if (memory.failed) {
                EXPECT_STREQ(message->last_error, "Out of memory");
                EXPECT_EQ(add(message, list), 1);
            }
            EXPECT_EQ(message->tx_count, 2u);
            message.reset();
            EXPECT_EQ(memory.unwiped, 0);
        });
    }
}

TEST_P(Message, ARefusedAddIsWiped) {
    for (const char* rulebook : {"DE-3.5", "DE-3.7"}) {
        use_rulebook(rulebook);
        message_t message = ready();
        auto held = memory.held();
        memory.unwiped = 0;
        EXPECT_EQ(add(message, all_keys("2026-12-01", {{"Name", ""}})), 0);
        EXPECT_EQ(add(message, all_keys("2026-12-01", {{"Amount", "0.001"}})), 0);
        EXPECT_STREQ(message->last_error, "Amount missing");
        EXPECT_EQ(memory.unwiped, 0);
        EXPECT_TRUE(memory.held() == held);
    }
}

// An allocation that fails alone need not stop the writer, which asks for more
// room than it needs and makes do with less. The document is then the same.
TEST_P(Message, Document) {
    auto fill = [this] {
        message_t message = ready();
        for (const char* rulebook : {"DE-3.5", "DE-3.7"}) {
            use_rulebook(rulebook);
            for (const char* date : {"2024-01-03", "2024-01-02", "2024-01-03", "2024-01-01"})
                EXPECT_EQ(add(message, all_keys(date)), 1);
        }
        message_counter = 5;
        return message;
    };
    const std::string reference = document_of(fill()), no_copy = "cti_toXML: strdup() failed";
    for_every_allocation([&](fault_mode_t mode, long nth) {
        message_t message = fill();
        snapshot_t expected(message.get());
        char* text = run_failing(mode, nth, [&] { return sepa_toXML(message.get()); });
        snapshot_t after(message.get());
        EXPECT_TRUE(after.date == "(none)" || after.date == "2024-05-06") << after.date;
        expected.date = after.date;
        expected.msgid = after.msgid;
        EXPECT_TRUE(expected == after);
        std::string reason = text || nth == 1 ? "earlier" : "Out of memory";
        if (nth == 2) reason = "malloc() failed";
        if (nth == 4) reason = GetParam() == SEPA_MSGTYPE_DDI ? "ddi_toXML: strdup() failed" : no_copy;
        EXPECT_EQ(message->last_error, reason);
        EXPECT_EQ(text ? text : reference, reference);
        free(text);
        message_counter = 5;
        EXPECT_EQ(document_of(message), reference);
        memory.unwiped = 0;
        message.reset();
        EXPECT_EQ(memory.unwiped, 0);
    });
}

TEST(Allocation, BankInfo) {
    for_every_allocation([](fault_mode_t mode, long nth) {
        bank_info_t untouched;
        bank_info_t* info = &untouched;
        int result = run_failing(mode, nth, [&] { return bank_info_get("MARKDEFF", &info); });
        EXPECT_EQ(result, memory.failed ? -3 : 1);
        EXPECT_EQ(info == &untouched, memory.failed);
        if (!memory.failed) free(info);
    });
}

TEST(Allocation, Statement) {
    const char* path = TEST_DATA "/statements/two_accounts.sta";
    auto load = [&](sepa_stmt_parser_t* handle) {
        return handle ? sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, path) : 0;
    };
    sepa_stmt_parser_t* whole = sepa_stmt_parser_new();
    ASSERT_EQ(load(whole), 1);
    const std::string reference = dump(whole), size = std::to_string(std::filesystem::file_size(path));
    sepa_stmt_parser_free(whole);
    for_every_allocation([&](fault_mode_t mode, long nth) {
        sepa_stmt_parser_t* handle = nullptr;
        int result = run_failing(mode, nth, [&] { return load(handle = sepa_stmt_parser_new()); });
        EXPECT_EQ(result, !memory.failed);
        EXPECT_EQ(!handle, nth == 1);
        if (!handle) return;
        std::string error;
        if (nth == 2) error = "Error while allocating 8 bytes: Cannot allocate memory";
        if (nth == 3) error = "Failed to allocate " + size + " bytes";
        EXPECT_EQ(handle->error, error);
        EXPECT_EQ(dump(handle), memory.failed ? "" : reference);
        if (memory.failed) {
            EXPECT_EQ(load(handle), 0);
            EXPECT_STREQ(handle->error, "Parser already used");
        }
        sepa_stmt_parser_free(handle);
    });
}

}  // namespace
