// Messages from data files. The texts in tests/data/messages and
// tests/data/golden drive whole messages, tests/data/keys.txt has the values of
// each key. The documents in tests/data/golden come from a second writer that
// shares no code with this one; a changed line in them is a change of what
// banks receive.
#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <tuple>

#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_helpers.h"
#include "tests/unit/test_files.h"

namespace {

// The lines of a file but for comments, cut at their tabs.
std::vector<std::vector<std::string>> rows_of(const std::string& name) {
    std::vector<std::vector<std::string>> rows;
    std::string text = read_file(TEST_DATA "/" + name);
    for (size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1) {
        if (at == end || text[at] == '#') continue;
        rows.emplace_back();
        for (size_t from = at, to = 0; to < end; from = to + 1) {
            to = std::min(text.find('\t', from), end);
            rows.back().push_back(text.substr(from, to - from));
        }
    }
    return rows;
}

// Keys of a transaction that is complete before them.
keys_t after_needed(long kind, const keys_t& keys) {
    keys_t list = {{"iban", german_iban}, {"amount", "1"}, {"bic", "DEUTDEFF"}};
    if (kind == SEPA_MSGTYPE_DDI) list.push_back({"seq", "frst"});
    list.insert(list.end(), keys.begin(), keys.end());
    return list;
}

// Contents of all elements of this name, with blanks between.
std::string contents(const std::string& document, const std::string& name) {
    std::string found, opening = "<" + name + ">";
    for (size_t at = 0; (at = document.find(opening, at)) != std::string::npos;) {
        at += opening.size();
        found += (found.empty() ? "" : " ") + document.substr(at, document.find('<', at) - at);
    }
    return found;
}

constexpr struct {
    const char* word;
    int (*set)(sepa_t*, const char*);
    char* sepa_t::*field;
} setters[] = {{"iban", sepa_setIBAN, &sepa_t::iban}, {"bic", sepa_setBIC, &sepa_t::bic},
               {"name", sepa_setName, &sepa_t::name}, {"creditor_id", sepa_setCreditorIdentifier, &sepa_t::creditor_id},
               {"date", sepa_setDate, &sepa_t::date}, {"message_id", sepa_setMessageId, &sepa_t::msgid}};

// A line is a word and its value, lines that begin with a tab belong to the
// one above. The words stand in step(); the kind "any" is the test's parameter.
struct File : testing::TestWithParam<std::tuple<const char*, long>> {
    message_t message;
    std::string fails;     // reason that the next step must fail with
    bool skipped = false;  // up to the next clock reading, as this system has none so late

    void step(const std::string& word, const std::string& value, const keys_t& keys) {
        static const std::set<std::string> words = {
            "fails", "clock",  "offset", "process", "counter",  "rulebook", "rulebook_id", "in_force", "kind", "ready",
            "sum",   "ddtype", "batch",  "msgid",   "document", "write",    "set_ddtype",  "tx",       "tx+"};
        bool is_setter = std::any_of(std::begin(setters), std::end(setters),
                                     [&](const auto& setter) { return word == setter.word; });
        EXPECT_TRUE(is_setter || words.count(word)) << "no such word";
        const char* text = or_null(value);
        int64_t number = atoll(value.c_str());
        if (word == "fails") fails = value;
        if (word == "clock") {
            fixed_now = static_cast<time_t>(number);
            skipped = fixed_now != number;
        }
        if (word == "offset") fixed_local_offset = static_cast<long>(number);
        if (word == "process") fixed_process_id = static_cast<unsigned>(number);
        if (word == "counter") message_counter = static_cast<unsigned>(number);
        if (word == "rulebook") use_rulebook(text);
        if (word == "rulebook_id") current_rulebook = static_cast<int>(number);
        if (skipped) return fails.clear();
        int chosen = current_rulebook;
        EXPECT_TRUE(word != "in_force" || (chosen >= 0 && value == rulebook_names[chosen])) << chosen;
        if (word == "kind" || word == "ready") {
            const std::map<std::string, long> kinds = {{"any", std::get<1>(GetParam())},
                                                       {"debit", SEPA_MSGTYPE_DDI},
                                                       {"transfer", SEPA_MSGTYPE_CTI},
                                                       {"unknown", 0}};
            message = word == "kind" ? new_message(kinds.at(value)) : ready_message(kinds.at(value));
        }
        if (!message) return;
        sepa_t* m = message.get();
        EXPECT_TRUE(word != "sum" || m->ctrl_sum == strtod(text, nullptr)) << m->ctrl_sum;
        if (word == "ddtype") m->dd_type = static_cast<int32_t>(number);
        if (word == "batch") m->batch_booking = number == 1;
        if (word == "msgid") {
            free(m->msgid);
            m->msgid = text ? strdup(text) : nullptr;
        }
        snapshot_t before(m);
        if (word == "document" || word == "write") return result(before, write(word, value, keys));
        if (word == "set_ddtype") {
            auto type = static_cast<long>(std::clamp<int64_t>(number, LONG_MIN, LONG_MAX));
            result(before, sepa_setDDType(m, type) == 1);
        }
        if (word == "tx") result(before, add(message, keys) == 1);
        if (word == "tx+") result(before, add(message, after_needed(m->msgtype, keys)) == 1);
        for (const auto& setter : setters) {
            if (word != setter.word) continue;
            bool good = setter.set(m, text) == 1;
            EXPECT_TRUE(!good || strcasecmp(m->*setter.field, text) == 0) << m->*setter.field;
            result(before, good);
        }
    }

    // The whole document against a file, or the contents of some elements.
    bool write(const std::string& word, const std::string& value, const keys_t& keys) {
        std::string document = document_of(message);
        EXPECT_EQ(document, word == "write" ? read_file(TEST_DATA "/golden/" + value) : document);
        for (const kv_pair_t& key : keys) EXPECT_EQ(contents(document, key.key), key.value) << key.key;
        return !document.empty();
    }

    // A failure has the wanted reason and leaves no trace but a generated date.
    void result(snapshot_t before, bool good) {
        EXPECT_EQ(good, fails.empty()) << text_of(message->last_error);
        if (!good) {
            EXPECT_EQ(message->last_error, fails);
            if (before.date == "(none)") before.date = text_of(message->date);
            EXPECT_TRUE(before == snapshot_t(message.get()));
        }
        fails.clear();
    }
};

TEST_P(File, Run) {
    message_counter = 5;
    auto rows = rows_of(std::get<0>(GetParam()));
    for (auto& row : rows) {
        row.resize(3);
        for (std::string& column : row) column = unescaped(column);
    }
    for (size_t i = 0; i < rows.size();) {
        const auto& row = rows[i];
        keys_t keys;
        while (++i < rows.size() && rows[i][0].empty()) keys.push_back({rows[i][1].c_str(), or_null(rows[i][2])});
        SCOPED_TRACE(testing::Message() << row[0] << " " << row[1] << ", line " << i << " but for comments");
        step(row[0], row[1], keys);
        ASSERT_FALSE(HasFatalFailure());
    }
    EXPECT_EQ(fails, "") << "no step is left that could";
}

const auto kinds = testing::Values(SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI);
INSTANTIATE_TEST_SUITE_P(Files, File,
                         testing::Combine(testing::Values("golden/debit.txt", "golden/transfer.txt",
                                                          "golden/transfer_bare.txt", "messages/setters.txt",
                                                          "messages/adds.txt", "messages/documents.txt"),
                                          kinds));

struct Add : testing::TestWithParam<long> {};
INSTANTIATE_TEST_SUITE_P(Kinds, Add, kinds);

// Each value stands after all that a transaction needs, then before it.
TEST_P(Add, EachKey) {
    bool debit = GetParam() == SEPA_MSGTYPE_DDI;
    auto rows = rows_of("keys.txt");
    EXPECT_GT(rows.size(), 300u);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 5u) << row[2];
        if (row[0].find(debit ? 'd' : 'c') == std::string::npos) continue;
        std::string key = unescaped(row[2]), value = unescaped(row[3]), reason = unescaped(row[4]);
        if (size_t at = reason.find("%n"); at != std::string::npos)
            reason.replace(at, 2, debit ? "debtor name" : "creditor name");
        kv_pair_t pair = {key.c_str(), or_null(value)};
        for (const char* rulebook : rulebook_names) {
            bool named = row[1].find(rulebook) != std::string::npos;
            if (row[1] != "*" && named == (row[1][0] == '!')) continue;
            use_rulebook(rulebook);
            for (bool before : {false, true}) {
                if (before && reason == "Amount missing") continue;  // the good amount would replace it
                keys_t list = after_needed(GetParam(), {});
                list.insert(before ? list.begin() : list.end(), pair);
                message_t message = new_message(GetParam());
                bool good = add(message, list) == 1;
                EXPECT_EQ(good ? "" : message->last_error, reason) << rulebook << " " << key << "=" << value;
            }
        }
    }
}

// With another letter at any place a key is another one.
TEST(Keys, NearMisses) {
    use_rulebook("DE-3.7");
    std::set<std::string> keys = {"amount", "seq", "smnda"};
    for (const auto& row : rows_of("keys.txt"))
        if (row[0].find('d') != std::string::npos && row[4].find("property") == std::string::npos) keys.insert(row[2]);
    message_t message = new_message(SEPA_MSGTYPE_DDI);
    for (const std::string& key : keys)
        for (size_t at = 0; at < key.size(); ++at)
            for (char letter = 'a'; letter <= 'z'; ++letter) {
                std::string near = key;
                near[at] = letter;
                if (strcasecmp(near.c_str(), key.c_str()) == 0) continue;
                ASSERT_EQ(add(message, {{near.c_str(), "1"}}), 0) << near;
                ASSERT_STREQ(message->last_error, ("Invalid transaction property '" + near + "'").c_str()) << key;
            }
}

std::string euro(unsigned cents) {
    char text[32];
    snprintf(text, sizeof text, "%u.%02u", cents / 100, cents % 100);
    return text;
}

// Few blocks are searched, many are sorted: both around the border, with dates
// in no order, one of them the message's.
TEST_P(Add, BlocksOfFewAndManyDates) {
    bool debit = GetParam() == SEPA_MSGTYPE_DDI;
    use_rulebook("DE-3.7");
    for (unsigned dates : {1U, 2U, 5U, 8U, 9U, 31U, 32U, 33U, 100U}) {
        message_t message = ready_message(GetParam());
        EXPECT_EQ(sepa_setDate(message.get(), "2024-06-00"), 1);
        struct block_t {
            unsigned cents;
            std::string ids;
        };
        std::map<std::pair<std::string, std::string>, block_t> blocks;  // by date and sequence
        unsigned total = 0;
        for (unsigned i = 0; i < 500; ++i) {
            unsigned mixed = (i + 1) * 48271 % 1000003;
            std::string date = "2024-06-" + std::to_string(100 + mixed % dates).substr(1), amount = euro(mixed);
            std::string id = "ID." + std::to_string(i);
            const char* sequence = mixed / 7 % 4 ? "FRST" : "OOFF";  // in the order of the alphabet, too
            keys_t keys = {
                {"iban", austrian_iban}, {"amount", amount.c_str()}, {"id", id.c_str()}, {"bic", "BKAUATWW"}};
            if (mixed % dates) keys.push_back({"date", date.c_str()});
            if (debit) keys.insert(keys.end(), {{"seq", sequence}, {"mref", "M"}, {"mdate", "2024-01-01"}});
            ASSERT_EQ(add(message, keys), 1) << message->last_error;
            block_t& block = blocks[{date, debit ? sequence : ""}];
            block.cents += mixed;
            block.ids += " " + id;
            total += mixed;
        }
        std::string sums = euro(total), ids, days, sequences;
        for (const auto& [key, block] : blocks) {
            sums += " " + euro(block.cents);
            ids += block.ids;
            days += " " + key.first;
            sequences += " " + key.second;
        }
        std::string document = document_of(message);
        EXPECT_EQ(contents(document, "CtrlSum"), sums);
        EXPECT_EQ(" " + contents(document, "EndToEndId"), ids);
        EXPECT_EQ(" " + contents(document, debit ? "ReqdColltnDt" : "ReqdExctnDt"), days);
        EXPECT_EQ(" " + contents(document, "SeqTp"), debit ? sequences : " ");
    }
}

// In doubles each of these sums ends a cent off.
TEST_P(Add, SumsOfCents) {
    use_rulebook("DE-3.7");
    bool debit = GetParam() == SEPA_MSGTYPE_DDI;
    for (const auto& [amount, count, sum] : {std::tuple{"999999.99", 22196, "22195999778.04"},
                                             {"100000.01", 44144, "4414400441.44"},
                                             {"123456.78", 65563, "8094196867.14"}}) {
        message_t message = ready_message(GetParam());
        keys_t keys = {{"iban", german_iban}, {"amount", amount}};
        if (debit) keys.insert(keys.end(), {{"seq", "RCUR"}, {"mref", "M"}, {"mdate", "2024-01-01"}});
        for (int i = 0; i < count; ++i) ASSERT_EQ(add(message, keys), 1);
        EXPECT_EQ(contents(document_of(message), "CtrlSum"), std::string(sum) + " " + sum);
    }
}

}  // namespace
