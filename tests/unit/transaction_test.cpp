// Adding transactions: what both kinds of message have in common.
#include <cstring>

#include "tests/unit/message_helpers.h"

namespace {

// Tests run for a credit transfer and for a direct debit message.
struct Transaction : testing::TestWithParam<long> {
    message_t message;
    std::string error;  // of the latest add; "" if it was good

    bool is_debit() const { return GetParam() == SEPA_MSGTYPE_DDI; }

    void SetUp() override { start("DE-3.5"); }

    void start(const char* rulebook) {
        use_rulebook(rulebook);
        message = new_message(GetParam());
    }

    // Adds the keys and what a transaction needs, in front of them or behind
    // them. A refused add must leave no trace in the message.
    bool add_keys(const keys_t& keys, bool needed_first = true) {
        keys_t list = {{"iban", german_iban}, {"amount", "1"}, {"bic", "DEUTDEFF"}};
        if (is_debit()) list.push_back({"seq", "frst"});
        list.insert(needed_first ? list.end() : list.begin(), keys.begin(), keys.end());
        sepa_t before = *message;
        bool good = add(message, list) == 1;
        error = good ? "" : message->last_error;
        if (!good) {
            EXPECT_EQ(message->tx_count, before.tx_count);
            EXPECT_EQ(message->ctrl_sum, before.ctrl_sum);
            EXPECT_EQ(message->tx_head, before.tx_head);
            EXPECT_EQ(message->tx_tail, before.tx_tail);
        } else {
            EXPECT_EQ(message->tx_count, before.tx_count + 1);
            EXPECT_NE(message->tx_tail, before.tx_tail);
        }
        return good;
    }

    bool add_key(const char* key, const std::string& value) { return add_keys({{key, value.c_str()}}); }

    // The error of an add with this value, whether it stands first or last.
    std::string error_of(const char* key, const char* value) {
        add_keys({{key, value}}, false);
        std::string alone = error;
        add_keys({{key, value}});
        EXPECT_EQ(error, alone) << key;
        return error;
    }

    const sepa_party_t* last() {
        if (is_debit()) return static_cast<ddi_tx_t*>(message->tx_tail);
        return static_cast<cti_tx_t*>(message->tx_tail);
    }

    double last_amount() {
        if (is_debit()) return static_cast<ddi_tx_t*>(message->tx_tail)->amount;
        return static_cast<cti_tx_t*>(message->tx_tail)->amount;
    }

    std::string noun_of_name() const { return is_debit() ? "debtor name" : "creditor name"; }
};

INSTANTIATE_TEST_SUITE_P(Kinds, Transaction, testing::Values(SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI),
                         [](const auto& kind) { return kind.param == SEPA_MSGTYPE_DDI ? "Debit" : "Transfer"; });

TEST_P(Transaction, NoList) {
    EXPECT_EQ((is_debit() ? ddi_add : cti_add)(message.get(), nullptr), 0);
    EXPECT_STREQ(message->last_error, "No key-value list submitted");
    EXPECT_EQ(add(message, {}), 0);
    EXPECT_STREQ(message->last_error, "IBAN missing");
}

// Limits at and one beyond, null, and the length before the characters.
TEST_P(Transaction, Lengths) {
    const struct {
        const char* key;
        size_t min, max;
        const char* error;
    } rows[] = {
        {"name", 1, 70, "Invalid name (must be 1-70 characters)"},
        {"addrLine1", 1, 70, "Invalid address line 1 (must be 1-70 chars)"},
        {"addrLine2", 1, 70, "Invalid address line 2 (must be 1-70 chars)"},
        {"ref", 0, 140, "Invalid unstructured remittance information (must be 0-140 characters)"},
        {"id", 1, 35, "Invalid end-to-end ID (must be 1-35 characters)"},
        {"date", 10, 10, "Invalid execution date (format: yyyy-mm-dd)"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(add_key(row.key, letters(row.min))) << row.key;
        EXPECT_TRUE(add_key(row.key, letters(row.max))) << row.key;
        EXPECT_EQ(error_of(row.key, letters(row.max + 1).c_str()), row.error);
        EXPECT_EQ(error_of(row.key, ("\x01" + letters(row.max)).c_str()), row.error);
        EXPECT_EQ(error_of(row.key, letters(1000000).c_str()), row.error);
        EXPECT_EQ(error_of(row.key, nullptr), row.error);
        if (row.min) {
            EXPECT_EQ(error_of(row.key, letters(row.min - 1).c_str()), row.error);
        }
    }
    EXPECT_TRUE(add_key("date", "\x01\xFF\\ any te")) << "ten bytes of anything";
    // 70 bytes are 35 umlauts, not 70.
    std::string umlauts;
    for (int i = 0; i < 35; ++i) umlauts += "ä";
    EXPECT_TRUE(add_key("name", umlauts));
    EXPECT_FALSE(add_key("name", umlauts + "a"));
}

TEST_P(Transaction, Characters) {
    const struct {
        const char* key;
        int level;
        std::string noun;
    } rows[] = {
        {"name", CHARSET_EXTENDED, noun_of_name()},
        {"addrLine1", CHARSET_EXTENDED, "address line 1"},
        {"addrLine2", CHARSET_EXTENDED, "address line 2"},
        {"ref", CHARSET_EXTENDED, "unstructured remittance information"},
        {"id", CHARSET_SPACE, "end-to-end ID"},
    };
    for (const char* rulebook : {"DE-2.6", "DE-2.7", "AT-6", "DE-3.5"}) {
        start(rulebook);
        for (const auto& row : rows)
            for (const char* text : {"plain", "a blank", "a&b", "a*ä\xC3", "a_b", "€", "a\nb", "\\"}) {
                char bad = 0;
                std::string expected;
                if (!sepa_check_charset(text, &bad, row.level))
                    expected = std::string("Invalid character '") + bad + "' in " + row.noun;
                EXPECT_EQ(error_of(row.key, text), expected) << row.key << " " << text << " " << rulebook;
            }
    }
    start("DE-2.6");
    EXPECT_EQ(error_of("name", "Ärger & Co"), "Invalid character '\xC3' in " + noun_of_name());
}

TEST_P(Transaction, Iban) {
    EXPECT_EQ(error_of("iban", nullptr), "Invalid IBAN (NULL)");
    EXPECT_EQ(error_of("iban", ""), "Invalid or unknown IBAN country code");
    EXPECT_EQ(error_of("iban", "DE8937040044053201300"), "Wrong IBAN length");
    EXPECT_EQ(error_of("iban", "DE98370400440532013000"), "Invalid IBAN checksum");
    EXPECT_EQ(add(message, {{"amount", "1"}, {"seq", "frst"}}), 0);
    EXPECT_STREQ(message->last_error, "IBAN missing");
}

TEST_P(Transaction, Bic) {
    for (const char* bad : {"DEUTDEFF5000", "            "}) EXPECT_EQ(error_of("bic", bad), "Invalid BIC");
    EXPECT_EQ(error_of("bic", nullptr), "Invalid BIC");
    for (const char* bad : {"", "DEUTDEFF50", "DEUTDEFO", "DEUTDE1F", "DEUTDEF", "D3UTDEFF", "deutdef\xC3"})
        EXPECT_EQ(error_of("bic", bad), "Invalid BIC format") << bad;
    EXPECT_EQ(error_of("bic", "deutde20"), "");
    EXPECT_TRUE(add_key("bic", "deutDEff5z9"));
    EXPECT_STREQ(last()->bic, "DEUTDEFF5Z9");
    for (const char* rulebook : rulebook_names) {
        start(rulebook);
        keys_t keys = {{"iban", german_iban}, {"amount", "1"}};
        if (is_debit()) keys.push_back({"seq", "frst"});
        bool needed = !strcmp(rulebook, "DE-2.6");
        EXPECT_EQ(add(message, keys), needed ? 0 : 1) << rulebook;
        EXPECT_STREQ(message->last_error, needed ? "BIC missing" : nullptr);
    }
}

TEST_P(Transaction, Country) {
    for (const char* bad : {"", "D", "DEU", "de", "De", "D1", "\xC3\x84", "D "})
        EXPECT_EQ(error_of("addrCC", bad), "Invalid country code");
    EXPECT_EQ(error_of("addrCC", nullptr), "Invalid country code");
    EXPECT_EQ(error_of("addrCC", "AZ"), "");
}

TEST_P(Transaction, AddressLinesAreRefusedUnderTheNewestRulebook) {
    start("DE-3.7");
    for (const char* key : {"addrLine1", "ADDRLINE2"})
        for (const char* value : {"fine", "", (const char*)nullptr})
            EXPECT_EQ(error_of(key, value), "selected SEPA rulebook requires structured address data");
    EXPECT_TRUE(add_key("addrCC", "DE"));
}

TEST_P(Transaction, StructuredAddress) {
    const struct {
        const char* key;
        size_t max;
        char* sepa_party_t::*field;
    } rows[] = {{"addrDept", 70, &sepa_party_t::addrDept},      {"addrSubDept", 70, &sepa_party_t::addrSubDept},
                {"addrStreet", 70, &sepa_party_t::addrStreet},  {"addrNum", 16, &sepa_party_t::addrNum},
                {"addrBldg", 35, &sepa_party_t::addrBldg},      {"addrFloor", 70, &sepa_party_t::addrFloor},
                {"addrPoBox", 16, &sepa_party_t::addrPoBox},    {"addrRoom", 70, &sepa_party_t::addrRoom},
                {"addrCode", 16, &sepa_party_t::addrCode},      {"addrTown", 35, &sepa_party_t::addrTown},
                {"addrLoc", 35, &sepa_party_t::addrLoc},        {"addrDstrct", 35, &sepa_party_t::addrDstrct},
                {"addrCtrySub", 35, &sepa_party_t::addrCtrySub}};
    for (const auto& row : rows) {
        std::string invalid = std::string("Invalid format for '") + row.key + "'";
        start("DE-3.7");
        EXPECT_TRUE(add_key(row.key, "\x01"));
        std::string longest = "\xFF<\n" + letters(row.max - 3);
        EXPECT_TRUE(add_key(row.key, longest));
        EXPECT_EQ(last()->*row.field, longest);
        EXPECT_EQ(error_of(row.key, letters(row.max + 1).c_str()), invalid);
        EXPECT_EQ(error_of(row.key, ""), invalid);
        EXPECT_EQ(error_of(row.key, nullptr), invalid);
        for (const char* rulebook : {"DE-2.6", "AT-6", "DE-3.0", "DE-3.5"}) {
            start(rulebook);
            std::string refused = "Invalid transaction property '" + std::string(row.key) + "'";
            if (!strcmp(row.key, "addrDept"))
                refused = "selected SEPA rulebook does not support structured address data";
            EXPECT_EQ(error_of(row.key, ""), is_debit() ? refused : "") << rulebook;
            if (!is_debit()) {
                EXPECT_EQ(last()->*row.field, nullptr);
            }
        }
    }
    start("DE-3.7");
    EXPECT_EQ(error_of("aDDRtOWN", letters(36).c_str()), "Invalid format for 'aDDRtOWN'");
}

TEST_P(Transaction, Amounts) {
    const char *invalid = "Invalid amount", *empty = "Empty amount not allowed",
               *negative = "Negative or zero amount not allowed", *missing = "Amount missing";
    const struct {
        const char *text, *error;
    } refused[] = {
        {nullptr, invalid},
        {"1,5", invalid},
        {"1.5 ", invalid},
        {"x", invalid},
        {"-", invalid},
        {" ", invalid},
        {"1.2.3", invalid},
        {"nan", invalid},
        {"inf", invalid},
        {"0x1", invalid},
        {"1e999", invalid},
        {"-1e999", invalid},
        {"1e-999", invalid},
        {"0e999", invalid},
        {"0e-999", invalid},
        {"1e400", invalid},
        {"0e400", invalid},
        {"1e308", invalid},
        {"1e17", invalid},
        {"-0e999", invalid},
        {"", empty},
        {"0", empty},
        {"0.00", empty},
        {"-0", empty},
        {"0e5", empty},
        {"1e-400", empty},
        {"0e-400", empty},
        {"-1", negative},
        {"-1e400", negative},
        {"-0.001", negative},
        {"-1e15", negative},
        {"0.001", missing},
        {"0.00499", missing},
        {"1e-3", missing},
        {"92233720368547760", invalid},
    };
    for (const auto& row : refused) {
        add_keys({{"amount", row.text}});
        EXPECT_EQ(error, row.error) << (row.text ? row.text : "null");
    }
    const struct {
        const char* text;
        double stored;
    } taken[] = {
        {"1e2", 100.0},
        {"1E2", 100.0},
        {"12e-1", 1.2},
        {" \t+7", 7.0},
        {".5", 0.5},
        {"5.", 5.0},
        {"0.005", 0.01},
        {"1.005", 1.0},
        {"2.675", 2.68},
        {"1.115", 1.12},
        {"14.565", 14.57},
        {"8.165", 8.16},
        {"99.999", 100.0},
        {"1e15", 1e15},
        {"1e", 1.0},
        {"0.01", 0.01},
        {"1234567.891", 1234567.89},
        {"92233720368547744", 92233720368547744.0},
    };
    for (const auto& row : taken) {
        start("DE-3.5");
        EXPECT_TRUE(add_key("amount", row.text)) << row.text << ": " << error;
        EXPECT_EQ(last_amount(), row.stored) << row.text;
        EXPECT_EQ(message->ctrl_sum, row.stored) << row.text;
    }
}

// "Amount missing" is said after all other keys and tests.
TEST_P(Transaction, AnAmountTooSmallIsMissedLast) {
    add_keys({{"amount", "0.001"}, {"id", ""}});
    EXPECT_EQ(error, "Invalid end-to-end ID (must be 1-35 characters)");
    add_keys({{"amount", "0.001"}, {"Amount", "3"}});
    EXPECT_EQ(error, "");
    EXPECT_EQ(last_amount(), 3);
}

TEST_P(Transaction, TheSumMustStayWritable) {
    const char* half = "60000000000000000";
    EXPECT_TRUE(add_key("amount", half));
    EXPECT_EQ(error_of("AMOUNT", half), "Invalid amount");
    EXPECT_TRUE(add_key("amount", "30000000000000000"));
    EXPECT_TRUE(add_key("amount", "1"));
    EXPECT_EQ(error_of("amount", "3000000000000000"), "Invalid amount");
    // Key by key: a later, smaller amount does not mend it.
    add_keys({{"amount", half}, {"Amount", "1"}});
    EXPECT_EQ(error, "Invalid amount");
    EXPECT_EQ(message->tx_count, 3u);
}

TEST_P(Transaction, SumsAreAddedUpInOrder) {
    for (const char* amount : {"0.1", "0.2", "0.3", "1e15", "0.01"}) EXPECT_TRUE(add_key("amount", amount));
    EXPECT_EQ(message->ctrl_sum, 0.1 + 0.2 + 0.3 + 1e15 + 0.01);
    EXPECT_EQ(message->tx_count, 5u);
}

TEST_P(Transaction, KeysInOtherCaseAndTwice) {
    EXPECT_TRUE(
        add_keys({{"NAME", "one"}, {"Name", "two"}, {"iBaN", austrian_iban}, {"AMOUNT", "2"}, {"aDdRcC", "AT"}}));
    EXPECT_STREQ(last()->name, "two");
    EXPECT_STREQ(last()->iban, austrian_iban);
    EXPECT_STREQ(last()->addrCC, "AT");
    EXPECT_EQ(message->ctrl_sum, 2);
    add_keys({{"name", "good"}, {"NAME", ""}});
    EXPECT_EQ(error, "Invalid name (must be 1-70 characters)");
}

TEST_P(Transaction, UnknownKeys) {
    for (const char* key : {"", "0", "ibann", "iba", "iban ", "na\xC3\xA4me", "currency", "msgid"}) {
        std::string refused = "Invalid transaction property '" + std::string(key) + "'";
        EXPECT_EQ(error_of(key, nullptr), is_debit() ? refused : "");
    }
    std::string key = letters(1000), text = "Invalid transaction property '" + key;
    EXPECT_EQ(error_of(key.c_str(), "x"), is_debit() ? text.substr(0, 255) : "");
}

TEST_P(Transaction, TheFirstFailureEndsTheWalk) {
    add_keys({{"id", ""}, {"bic", "?"}, {"name", ""}}, false);
    EXPECT_EQ(error, "Invalid end-to-end ID (must be 1-35 characters)");
    add_keys({{"ref", "\\"}, {"id", ""}});
    EXPECT_EQ(error, "Invalid character '\\' in unstructured remittance information");
    EXPECT_TRUE(add_keys({}));
    EXPECT_STREQ(message->last_error, "Invalid character '\\' in unstructured remittance information")
        << "a success leaves the last error";
}

TEST_P(Transaction, RecordsKeepTheOrderOfAdding) {
    for (const char* id : {"1", "2", "3"}) EXPECT_TRUE(add_key("id", id));
    std::string ids;
    if (is_debit())
        for (auto tx = static_cast<ddi_tx_t*>(message->tx_head); tx; tx = tx->next) ids += tx->id;
    else
        for (auto tx = static_cast<cti_tx_t*>(message->tx_head); tx; tx = tx->next) ids += tx->id;
    EXPECT_EQ(ids, "123");
    EXPECT_STREQ(last()->id, "3");
}

// The rulebook of the moment counts, not that of the message's making.
TEST_P(Transaction, RulebookChangesBetweenAdds) {
    EXPECT_TRUE(add_key("addrLine1", "Weg 1"));
    use_rulebook("DE-3.7");
    EXPECT_FALSE(add_key("addrLine1", "Weg 1"));
    EXPECT_TRUE(add_key("addrStreet", "Weg"));
    use_rulebook("AT-6");
    EXPECT_TRUE(add_key("id", "€_"));
    use_rulebook("DE-2.9");
    EXPECT_FALSE(add_key("id", "€_"));
    EXPECT_TRUE(add_key("addrLine1", "Weg 1"));
    EXPECT_EQ(message->tx_count, 4u);
}

}  // namespace
