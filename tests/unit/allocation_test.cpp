// Every public operation that allocates, with each of its allocations failing,
// alone and together with all that follow: result, reason, a message unchanged
// but for what is told, nothing lost, and the next call as if nothing had been.
#include <cstdio>
#include <cstring>
#include <memory>

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

class Message : public testing::TestWithParam<long> {
protected:
    bool is_debit() const { return GetParam() == SEPA_MSGTYPE_DDI; }

    message_t ready() const {
        message_t message = new_message(GetParam());
        EXPECT_EQ(sepa_setIBAN(message.get(), german_iban), 1);
        EXPECT_EQ(sepa_setBIC(message.get(), "COBADEFFXXX"), 1);
        EXPECT_EQ(sepa_setName(message.get(), "Name"), 1);
        EXPECT_EQ(sepa_setCreditorIdentifier(message.get(), "DE98ZZZ09999999999"), 1);
        message->last_error = "earlier";
        return message;
    }

    keys_t keys(const char* date, bool twice = false) const {
        keys_t list = {{"iban", german_iban}, {"bic", "cobadeff"}, {"name", "Payee"}, {"amount", "0.1"},
                       {"ref", ""},           {"id", "E-1"},       {"date", date},    {"addrCC", "DE"}};
        if (is_debit())
            list.insert(list.end(), {{"seq", "RCUR"}, {"mref", "M"}, {"mdate", "2020-01-31"}, {"old_mref", "O"}});
        else
            list.push_back({"purp", "SALA"});
        if (current_rulebook == RULEBOOK_DE_3_7)
            list.insert(list.end(), {{"addrTown", "Town"}, {"addrDept", "Dept"}, {"addrCtrySub", "Sub"}});
        else
            list.insert(list.end(), {{"addrLine1", "One"}, {"addrLine2", "Two"}});
        if (twice) list.insert(list.end(), {{"Name", "Other"}, {"IBAN", austrian_iban}, {"Date", date}});
        return list;
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, Message, testing::Values(SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI),
                         [](const auto& kind) { return kind.param == SEPA_MSGTYPE_DDI ? "Debit" : "Transfer"; });

TEST_P(Message, New) {
    for_every_allocation([this](fault_mode_t mode, long nth) {
        message_t message(run_failing(mode, nth, [this] { return sepa_new(GetParam()); }));
        EXPECT_EQ(!message, memory.failed);
    });
}

TEST_P(Message, Setters) {
    const struct {
        int (*set)(sepa_t*, const char*);
        std::string snapshot_t::*field;
        const char *value, *error;
    } rows[] = {
        {sepa_setIBAN, &snapshot_t::iban, austrian_iban, "strdup() failed"},
        {sepa_setBIC, &snapshot_t::bic, "DEUTDEFF", "sepa_setBIC: strdup() failed"},
        {sepa_setName, &snapshot_t::name, "Other", "sepa_setName: strdup() failed"},
        {sepa_setCreditorIdentifier, &snapshot_t::creditor_id, "DE98abc09999999999", "strdup() failed"},
        {sepa_setDate, &snapshot_t::date, "2026-12-01", "strdup() failed"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        for_every_allocation([&](fault_mode_t mode, long nth) {
            message_t message = ready();
            snapshot_t expected(message.get());
            int result = run_failing(mode, nth, [&] { return row.set(message.get(), row.value); });
            EXPECT_EQ(result, !memory.failed);
            EXPECT_STREQ(message->last_error, memory.failed ? row.error : "earlier");
            expected.*row.field = memory.failed ? "(none)" : row.value;
            EXPECT_TRUE(expected == snapshot_t(message.get()));
        });
    }
}

TEST_P(Message, Add) {
    for (const char* rulebook : {"DE-3.5", "DE-3.7"}) {
        use_rulebook(rulebook);
        for_every_allocation([this](fault_mode_t mode, long nth) {
            message_t message = ready();
            ASSERT_EQ(add(message, keys("2026-12-02")), 1) << message->last_error;
            snapshot_t before(message.get());
            keys_t list = keys("2026-12-01", true);
            list.push_back({nullptr, nullptr});
            auto add_it = [&] { return (is_debit() ? ddi_add : cti_add)(message.get(), list.data()); };
            int result = run_failing(mode, nth, add_it);
            EXPECT_EQ(result, !memory.failed);
            EXPECT_EQ(before == snapshot_t(message.get()), memory.failed);
            if (!memory.failed) return;
            EXPECT_STREQ(message->last_error, "Out of memory");
            EXPECT_EQ(add_it(), 1);
            EXPECT_EQ(message->tx_count, 2u);
        });
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
                EXPECT_EQ(add(message, keys(date)), 1);
        }
        message->last_error = "earlier";
        message_counter = 5;
        return message;
    };
    const std::string reference = document_of(fill());
    for_every_allocation([&](fault_mode_t mode, long nth) {
        message_t message = fill();
        snapshot_t expected(message.get());
        char* text = run_failing(mode, nth, [&] { return sepa_toXML(message.get()); });
        snapshot_t after(message.get());
        expected.date = after.date;
        expected.msgid = after.msgid;
        EXPECT_TRUE(expected == after);
        EXPECT_TRUE(after.date == "(none)" || after.date == "2024-05-06") << after.date;
        if (text) {
            EXPECT_EQ(text, reference);
            EXPECT_STREQ(message->last_error, "earlier");
        } else {
            const char* no_copy = is_debit() ? "ddi_toXML: strdup() failed" : "cti_toXML: strdup() failed";
            std::string reason = "Out of memory";
            if (nth == 1) reason = "earlier";
            if (nth == 2) reason = "malloc() failed";
            if (nth == 4) reason = no_copy;
            EXPECT_EQ(message->last_error, reason);
        }
        free(text);
        message_counter = 5;
        EXPECT_EQ(document_of(message), reference);
    });
}

TEST(Allocation, TextBuffer) {
    for_every_allocation([](fault_mode_t mode, long nth) {
        xmlbuf_t buffer = {};
        const std::string long_text(300, '&');
        int result = run_failing(mode, nth, [&] {
            return xmlbuf_append(&buffer, "one") && xmlbuf_append_escaped(&buffer, long_text.c_str()) &&
                   xmlbuf_append_list(&buffer, "two", long_text.c_str(), nullptr);
        });
        EXPECT_EQ(result, !memory.failed);
        if (buffer.text) {
            EXPECT_EQ(strlen(buffer.text) + 1, buffer.used);
            EXPECT_EQ(strncmp(buffer.text, "one", 3), 0);
        } else {
            EXPECT_EQ(buffer.used + buffer.capacity, 0u);
        }
        free(buffer.text);
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
    const std::string path = TEST_DATA "/statements/two_accounts.sta";
    sepa_stmt_parser_t* whole = sepa_stmt_parser_new();
    ASSERT_EQ(sepa_stmt_parser_load(whole, SEPA_STMT_FORMAT_MT940, path.c_str()), 1);
    const std::string reference = dump(whole);
    sepa_stmt_parser_free(whole);
    std::string size;
    if (FILE* file = fopen(path.c_str(), "rb")) {
        fseek(file, 0, SEEK_END);
        size = std::to_string(ftell(file));
        fclose(file);
    }
    for_every_allocation([&](fault_mode_t mode, long nth) {
        sepa_stmt_parser_t* handle = nullptr;
        int result = run_failing(mode, nth, [&] {
            handle = sepa_stmt_parser_new();
            return handle ? sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, path.c_str()) : 0;
        });
        EXPECT_EQ(result, !memory.failed);
        EXPECT_EQ(!handle, nth == 1);
        if (!handle) return;
        std::string error;
        if (nth == 2) error = "Error while allocating 8 bytes: Cannot allocate memory";
        if (nth == 3) error = "Failed to allocate " + size + " bytes";
        EXPECT_EQ(handle->error, error);
        EXPECT_EQ(dump(handle), memory.failed ? "" : reference);
        if (memory.failed) {
            EXPECT_EQ(sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, path.c_str()), 0);
            EXPECT_STREQ(handle->error, "Parser already used");
        }
        sepa_stmt_parser_free(handle);
    });
}

// How much of this program's own purpose it has served.
class PointsTried : public testing::Environment {
    void TearDown() override { printf("%ld allocation points tried\n", memory.points_tried); }
};
[[maybe_unused]] const auto* points_tried = testing::AddGlobalTestEnvironment(new PointsTried);

}  // namespace
