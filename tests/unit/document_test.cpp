// Output: message id, dates, what is tested before it, and what a message
// keeps of it. The documents themselves are in golden_test.cpp.
#include <cstring>

#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_helpers.h"

namespace {

struct Document : testing::TestWithParam<long> {
    message_t message;

    bool is_debit() const { return GetParam() == SEPA_MSGTYPE_DDI; }

    void SetUp() override {
        fixed_now = 1714972089;  // 2024-05-06 05:08:09 UTC
        fixed_local_offset = 7200;
        fixed_process_id = 1234;
        message_counter = 5;
        use_rulebook("DE-3.5");
        start();
    }

    void start() {
        message = new_message(GetParam());
        ASSERT_TRUE(sepa_setIBAN(message.get(), german_iban) && sepa_setBIC(message.get(), "DEUTDEFF") &&
                    sepa_setName(message.get(), "Name") &&
                    sepa_setCreditorIdentifier(message.get(), "DE98ZZZ09999999999"));
        add_one({});
    }

    void add_one(keys_t keys) {
        keys.insert(keys.end(), {{"iban", austrian_iban}, {"amount", "1"}});
        if (is_debit()) keys.insert(keys.end(), {{"seq", "frst"}, {"mref", "M"}, {"mdate", "2024-01-01"}});
        ASSERT_EQ(add(message, keys), 1) << message->last_error;
    }

    // Contents of all elements of this name, each with a blank behind it.
    std::string contents(const std::string& document, const std::string& name) {
        std::string found, opening = "<" + name + ">";
        for (size_t at = 0; (at = document.find(opening, at)) != std::string::npos;) {
            at += opening.size();
            found += document.substr(at, document.find('<', at) - at) + " ";
        }
        return found;
    }

    std::string dates(const std::string& document) {
        return contents(document, is_debit() ? "ReqdColltnDt" : "ReqdExctnDt");
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, Document, testing::Values(SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI),
                         [](const auto& kind) { return kind.param == SEPA_MSGTYPE_DDI ? "Debit" : "Transfer"; });

TEST_P(Document, MessageIdIsMadeOfLocalTimeProcessAndCounter) {
    const struct {
        unsigned process_id, counter;
        const char* tail;
    } rows[] = {{1234, 5, "0123405"},        {1234, 105, "0123505"},     {0, 0, "0000000"},
                {99999, 100, "0000000"},     {100000, 7, "0000007"},     {4194304, 0, "9430400"},
                {42949672, 95, "4967295"},   {42949672, 96, "0000000"},  {42949673, 0, "0000004"},
                {0, 0xFFFFFFFFu, "4967295"}, {1, 0xFFFFFFFFu, "0000099"}};
    for (const auto& row : rows) {
        fixed_process_id = row.process_id;
        message_counter = row.counter;
        free(message->msgid);
        message->msgid = nullptr;
        std::string document = document_of(message), id = "SEPA-20240506070809-" + std::string(row.tail);
        EXPECT_EQ(message->msgid, id);
        EXPECT_EQ(contents(document, "MsgId"), id + " ");
        EXPECT_EQ(contents(document, "PmtInfId"), id + "-P1 ");
        EXPECT_EQ(message_counter, row.counter + 1);
    }
}

TEST_P(Document, RepeatedOutputKeepsIdAndDate) {
    std::string first = document_of(message);
    EXPECT_EQ(document_of(message), first);
    fixed_now += 86400;
    std::string second = document_of(message);
    EXPECT_EQ(contents(second, "CreDtTm"), "2024-05-07T05:08:09Z ");
    second.replace(second.find("2024-05-07T"), 11, "2024-05-06T");
    EXPECT_EQ(second, first);
    EXPECT_EQ(message_counter, 6u);

    add_one({{"date", "2024-05-01"}});
    std::string third = document_of(message);
    EXPECT_EQ(contents(third, "NbOfTxs"), "2 1 1 ");
    EXPECT_EQ(dates(third), "2024-05-01 2024-05-06 ");
    EXPECT_EQ(contents(third, "PmtInfId"), "SEPA-20240506070809-0123405-P1 SEPA-20240506070809-0123405-P2 ");
}

TEST_P(Document, TodayIsTheLocalDay) {
    const struct {
        time_t now;
        long offset;
        const char *date, *created;
    } rows[] = {{1709247599, 0, "2024-02-29", "2024-02-29T22:59:59Z"},
                {1709247600, 3600, "2024-03-01", "2024-02-29T23:00:00Z"},
                {1704067200, -1, "2023-12-31", "2024-01-01T00:00:00Z"},
                {253402300799, 0, "9999-12-31", "9999-12-31T23:59:59Z"}};
    for (const auto& row : rows) {
        fixed_now = row.now;
        fixed_local_offset = row.offset;
        start();
        std::string document = document_of(message);
        EXPECT_STREQ(message->date, row.date);
        EXPECT_EQ(dates(document), std::string(row.date) + " ");
        EXPECT_EQ(contents(document, "CreDtTm"), std::string(row.created) + " ");
    }
}

TEST_P(Document, AMessageDateMovesTransactionsWithoutOne) {
    add_one({{"date", "2024-05-06"}});
    EXPECT_EQ(dates(document_of(message)), "2024-05-06 ");
    ASSERT_EQ(sepa_setDate(message.get(), "2030-01-01"), 1);
    EXPECT_EQ(dates(document_of(message)), "2024-05-06 2030-01-01 ");
}

// Dates are bytes, compared as unsigned ones.
TEST_P(Document, BlocksStandInTheOrderOfTheirBytes) {
    for (const char* date :
         {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", "zzzzzzzzzz", "2024-05-10", "2024-05-1 ", "2024-05-06"})
        add_one({{"date", date}});
    EXPECT_EQ(dates(document_of(message)),
              "2024-05-06 2024-05-1  2024-05-10 zzzzzzzzzz \xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF ");
}

TEST_P(Document, NoRulebook) {
    for (int unknown : {-1, 10, 1000}) {
        start();
        current_rulebook = unknown;
        EXPECT_EQ(sepa_toXML(message.get()), nullptr);
        EXPECT_STREQ(message->last_error, "unknown/unsupported SEPA rulebook selected");
        EXPECT_TRUE(message->msgid) << "a generated id stays";
        use_rulebook("DE-3.5");
        EXPECT_NE(document_of(message), "");
    }
}

// Leaves date and the tests' own text, and nothing else, in the message.
struct DebitOutput : testing::Test {
    message_t message;

    void SetUp() override {
        use_rulebook("DE-2.9");
        message = new_message(SEPA_MSGTYPE_DDI);
    }

    void refused(const char* error) {
        sepa_t before;
        memcpy(&before, message.get(), sizeof before);
        uint32_t counter = message_counter;
        EXPECT_EQ(sepa_toXML(message.get()), nullptr);
        EXPECT_STREQ(message->last_error, error);
        EXPECT_TRUE(message->date);
        before.last_error = message->last_error;
        before.date = message->date;
        EXPECT_EQ(memcmp(&before, message.get(), sizeof before), 0) << error;
        EXPECT_EQ(message_counter, counter);
    }

    void add_debit(keys_t keys) {
        keys.insert(keys.end(), {{"iban", german_iban}, {"amount", "1"}, {"seq", "rcur"}});
        ASSERT_EQ(add(message, keys), 1);
    }
};

TEST_F(DebitOutput, TestsInOrder) {
    sepa_t* m = message.get();
    message->dd_type = 7;
    refused("Missing creditor IBAN");
    ASSERT_EQ(sepa_setIBAN(m, german_iban), 1);
    refused("Missing creditor BIC");
    ASSERT_EQ(sepa_setBIC(m, "DEUTDEFF"), 1);
    refused("Missing creditor name");
    ASSERT_EQ(sepa_setName(m, "Name"), 1);
    refused("Missing creditor identifier");
    ASSERT_EQ(sepa_setCreditorIdentifier(m, "DE98ZZZ09999999999"), 1);
    refused("No transactions available");

    add_debit({{"mref", "M"}, {"mdate", "2024-01-01"}});
    const char* instrument = "Unknown/unsupported LocalInstrumentCode (setDDType)";
    for (int unknown : {7, 3, -1}) {
        message->dd_type = unknown;
        refused(instrument);
    }
    current_rulebook = 10;
    refused(instrument);
    message->dd_type = SEPA_DDTYPE_COR1;
    for (const char* rulebook : rulebook_names) {
        use_rulebook(rulebook);
        if (!strncmp(rulebook, "DE-3", 4)) refused(instrument);
    }
    message->dd_type = SEPA_DDTYPE_CORE;
    EXPECT_NE(document_of(message), "");
}

// The first transaction without mandate data decides, its reference first.
TEST_F(DebitOutput, MandateData) {
    const struct {
        keys_t first, second;
        const char* error;
    } rows[] = {{{}, {{"mdate", "2024-01-01"}}, "Mandate reference missing"},
                {{{"mref", "M"}}, {}, "Mandate signature date missing"},
                {{{"mref", "M"}, {"mdate", "2024-01-01"}}, {{"mdate", "2024-01-01"}}, "Mandate reference missing"},
                {{{"mref", "M"}, {"mdate", "2024-01-01"}}, {{"mref", "M"}}, "Mandate signature date missing"}};
    for (const auto& row : rows) {
        use_rulebook("DE-2.9");
        message = new_message(SEPA_MSGTYPE_DDI);
        ASSERT_TRUE(sepa_setIBAN(message.get(), german_iban) && sepa_setBIC(message.get(), "DEUTDEFF") &&
                    sepa_setName(message.get(), "Name") &&
                    sepa_setCreditorIdentifier(message.get(), "DE98ZZZ09999999999"));
        add_debit(row.first);
        add_debit(row.second);
        refused(row.error);
        message->dd_type = 3;
        refused("Unknown/unsupported LocalInstrumentCode (setDDType)");
    }
}

}  // namespace
