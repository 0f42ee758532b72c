// Adding transactions: each key with its values (tests/data/keys.txt), then
// what several keys do together.
#include <cstdio>
#include <cstring>

#include "tests/unit/message_helpers.h"

namespace {

struct Add : testing::TestWithParam<long> {
    message_t message;
    std::string error;  // of the latest add; "" if it was good

    bool is_debit() const { return GetParam() == SEPA_MSGTYPE_DDI; }

    void SetUp() override { start("DE-3.5"); }

    void start(const char* rulebook) {
        use_rulebook(rulebook);
        message = new_message(GetParam());
    }

    // A refused add must leave no trace in the message.
    bool add_list(const keys_t& list) {
        sepa_t before = *message;
        bool good = add(message, list) == 1;
        error = good ? "" : message->last_error;
        EXPECT_EQ(message->tx_count, before.tx_count + good);
        EXPECT_TRUE(good || message->ctrl_sum == before.ctrl_sum);
        EXPECT_EQ(message->tx_tail == before.tx_tail, !good);
        EXPECT_EQ(message->tx_head == before.tx_head, !good || before.tx_head);
        return good;
    }

    // Adds `keys` behind all that a transaction needs, or in front of it.
    bool add_keys(const keys_t& keys, bool needed_first = true) {
        keys_t list = {{"iban", german_iban}, {"amount", "1"}, {"bic", "DEUTDEFF"}};
        if (is_debit()) list.push_back({"seq", "frst"});
        list.insert(needed_first ? list.end() : list.begin(), keys.begin(), keys.end());
        return add_list(list);
    }

    std::string error_of(const keys_t& keys) {
        add_list(keys);
        return error;
    }

    double last_amount() {
        if (is_debit()) return static_cast<ddi_tx_t*>(message->tx_tail)->amount;
        return static_cast<cti_tx_t*>(message->tx_tail)->amount;
    }

    std::string last_name() {
        if (is_debit()) return static_cast<ddi_tx_t*>(message->tx_tail)->name;
        return static_cast<cti_tx_t*>(message->tx_tail)->name;
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, Add, testing::Values(SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI),
                         [](const auto& kind) { return kind.param == SEPA_MSGTYPE_DDI ? "Debit" : "Transfer"; });

// Resolves {70}, \xC3, \n, \t and a doubled backslash.
std::string unescaped(const std::string& text) {
    std::string plain;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '{') {
            plain += letters(std::stoul(text.substr(at + 1)));
            at = text.find('}', at);
        } else if (text[at] == '\\') {
            char c = text[++at];
            if (c == 'x') {
                plain += static_cast<char>(std::stoul(text.substr(at + 1, 2), nullptr, 16));
                at += 2;
            } else {
                plain += c == 'n' ? '\n' : c == 't' ? '\t' : c;
            }
        } else {
            plain += text[at];
        }
    }
    return plain;
}

std::vector<std::string> columns_of(const std::string& line) {
    std::vector<std::string> columns(1);
    for (char c : line) {
        if (c == '\t')
            columns.emplace_back();
        else if (c != '\n')
            columns.back() += c;
    }
    return columns;
}

bool names_rulebook(const std::string& column, const std::string& rulebook) {
    if (column == "*") return true;
    return (column.find(rulebook) != std::string::npos) == (column[0] != '!');
}

TEST_P(Add, EachKey) {
    FILE* file = fopen(TEST_DATA "/keys.txt", "r");
    ASSERT_TRUE(file);
    int rows = 0;
    char line[1000];
    while (fgets(line, sizeof line, file)) {
        if (line[0] == '#') continue;
        ++rows;
        std::vector<std::string> row = columns_of(line);
        ASSERT_EQ(row.size(), 5u) << line;
        if (row[0].find(is_debit() ? 'd' : 'c') == std::string::npos) continue;
        std::string key = unescaped(row[2]), value = unescaped(row[3]), expected = unescaped(row[4]);
        if (size_t at = expected.find("%n"); at != std::string::npos)
            expected.replace(at, 2, is_debit() ? "debtor name" : "creditor name");
        kv_pair_t pair = {key.c_str(), row[3] == "(null)" ? nullptr : value.c_str()};
        for (const char* rulebook : rulebook_names) {
            if (!names_rulebook(row[1], rulebook)) continue;
            start(rulebook);
            add_keys({pair});
            EXPECT_EQ(error, expected) << rulebook << " " << line;
            if (expected == "Amount missing") continue;  // stands first, it would be replaced by the good one
            start(rulebook);
            add_keys({pair}, false);
            EXPECT_EQ(error, expected) << rulebook << " " << line;
        }
    }
    fclose(file);
    EXPECT_GT(rows, 300);
}

TEST_P(Add, AmountsAreRoundedToCents) {
    const struct {
        const char* text;
        double stored;
    } rows[] = {{"1e2", 100.0},
                {"12e-1", 1.2},
                {" \t+7", 7.0},
                {"0.005", 0.01},
                {"1.005", 1.0},
                {"2.675", 2.68},
                {"1.115", 1.12},
                {"14.565", 14.57},
                {"8.165", 8.16},
                {"99.999", 100.0},
                {"1234567.891", 1234567.89},
                {"1e15", 1e15},
                {"92233720368547744", 92233720368547744.0}};
    for (const auto& row : rows) {
        start("DE-3.5");
        ASSERT_TRUE(add_keys({{"amount", row.text}})) << row.text;
        EXPECT_EQ(last_amount(), row.stored) << row.text;
        EXPECT_EQ(message->ctrl_sum, row.stored) << row.text;
    }
    start("DE-3.5");
    for (const char* amount : {"0.1", "0.2", "0.3", "1e15", "0.01"}) EXPECT_TRUE(add_keys({{"amount", amount}}));
    EXPECT_EQ(message->ctrl_sum, 0.1 + 0.2 + 0.3 + 1e15 + 0.01) << "added up in order";
}

// The sum is judged at the key: what stands behind it does not mend it.
TEST_P(Add, TheSumMustStayWritable) {
    const char *half = "60000000000000000", *more = "3000000000000000";
    EXPECT_TRUE(add_keys({{"amount", half}}));
    EXPECT_FALSE(add_keys({{"amount", half}, {"Amount", "1"}}));
    EXPECT_EQ(error, "Invalid amount");
    EXPECT_TRUE(add_keys({{"amount", "30000000000000000"}}));
    EXPECT_FALSE(add_keys({{"amount", more}}));
    EXPECT_EQ(error, "Invalid amount");
    EXPECT_TRUE(add_keys({{"amount", "1000"}}));
}

TEST_P(Add, FinalTestsInOrder) {
    auto add_function = is_debit() ? ddi_add : cti_add;
    EXPECT_EQ(add_function(message.get(), nullptr), 0);
    EXPECT_STREQ(message->last_error, "No key-value list submitted");
    EXPECT_EQ(error_of({}), "IBAN missing");
    kv_pair_t iban = {"iban", german_iban}, bic = {"bic", "POFICHBE"}, seq = {"seq", "frst"}, amount = {"amount", "1"};
    start("DE-2.6");
    EXPECT_EQ(error_of({seq, amount}), "IBAN missing");
    EXPECT_EQ(error_of({iban}), "BIC missing");
    EXPECT_EQ(error_of({iban, bic}), is_debit() ? "Sequence type missing" : "Amount missing");
    EXPECT_EQ(error_of({iban, bic, seq}), "Amount missing");
    EXPECT_EQ(error_of({iban, bic, seq, amount, {"name", ""}}), "Invalid name (must be 1-70 characters)");
    EXPECT_EQ(error_of({iban, bic, seq, amount}), "");
    start("DE-3.5");
    EXPECT_EQ(error_of({iban, bic}), is_debit() ? "Address required for BICs outside EEA" : "Amount missing");
    EXPECT_EQ(error_of({bic}), "IBAN missing");
    EXPECT_EQ(error_of({iban, seq, amount}), "") << "no BIC, no address";
    message->msgtype = is_debit() ? SEPA_MSGTYPE_CTI : SEPA_MSGTYPE_DDI;
    EXPECT_EQ(add_function(message.get(), nullptr), 0);
    EXPECT_STREQ(message->last_error, is_debit() ? "No DDI message" : "No CTI message");
    message->msgtype = static_cast<int32_t>(GetParam());
}

TEST_P(Add, AddressOfADebtorOutsideTheEea) {
    kv_pair_t swiss = {"bic", "pofichbexxx"}, country = {"addrCC", "CH"}, town = {"addrTown", "Bern"};
    for (const char* rulebook : rulebook_names) {
        start(rulebook);
        std::string required;
        if (!strcmp(rulebook, "DE-3.1") || !strcmp(rulebook, "DE-3.5"))
            required = "Address required for BICs outside EEA";
        if (!strcmp(rulebook, "DE-3.7"))
            required = "Structured address required for BICs outside EEA (at least town and country)";
        if (!is_debit()) required = "";
        std::vector<keys_t> incomplete = {{swiss}, {swiss, country}}, complete;
        if (!strcmp(rulebook, "DE-3.7")) {
            incomplete.push_back({swiss, town, {"addrStreet", "Weg"}});
            complete.push_back({swiss, town, country});
        } else {
            complete = {{swiss, {"addrLine1", "Weg"}}, {swiss, {"addrLine2", "Weg"}}};
        }
        for (const keys_t& keys : incomplete) {
            add_keys(keys);
            EXPECT_EQ(error, required) << rulebook;
        }
        for (const keys_t& keys : complete) EXPECT_TRUE(add_keys(keys)) << rulebook << error;
    }
}

TEST_P(Add, KeysInOtherCaseAndTwice) {
    EXPECT_TRUE(
        add_keys({{"NAME", "one"}, {"Name", "two"}, {"iBaN", austrian_iban}, {"AMOUNT", "0.001"}, {"aMOUNT", "2"}}));
    EXPECT_EQ(last_name(), "two");
    EXPECT_EQ(last_amount(), 2);
    EXPECT_FALSE(add_keys({{"name", "good"}, {"NAME", ""}}));
    EXPECT_FALSE(add_keys({{"id", ""}, {"ref", "\\"}}));
    EXPECT_EQ(error, "Invalid end-to-end ID (must be 1-35 characters)") << "the first failure ends the walk";
    EXPECT_TRUE(add_keys({}));
    EXPECT_EQ(message->last_error, std::string("Invalid end-to-end ID (must be 1-35 characters)"));
}

// The rulebook of the moment counts, not that of the message's making.
TEST_P(Add, RulebookChangesBetweenAdds) {
    EXPECT_TRUE(add_keys({{"addrLine1", "Weg 1"}}));
    use_rulebook("DE-3.7");
    EXPECT_FALSE(add_keys({{"addrLine1", "Weg 1"}}));
    EXPECT_TRUE(add_keys({{"addrStreet", "Weg"}}));
    use_rulebook("AT-6");
    EXPECT_TRUE(add_keys({{"id", "€_"}}));
    use_rulebook("DE-2.9");
    EXPECT_FALSE(add_keys({{"id", "€_"}}));
    EXPECT_TRUE(add_keys({{"addrLine1", "Weg 1"}}));
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
