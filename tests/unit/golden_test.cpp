// Documents byte for byte. The files in tests/data/golden come from a second
// writer that shares no code with this one; a changed line in them is a change
// of what banks receive.
#include <cstdio>
#include <cstring>

#include "tests/unit/message_helpers.h"

namespace {

std::string read_file(const std::string& name) {
    std::string path = TEST_DATA "/golden/" + name, text;
    FILE* file = fopen(path.c_str(), "rb");
    EXPECT_TRUE(file) << path;
    if (!file) return text;
    char part[4096];
    for (size_t n; (n = fread(part, 1, sizeof part, file)) > 0;) text.append(part, n);
    fclose(file);
    return text;
}

// Shows the first line that differs, which says more than 14 kB of XML.
void expect_same(const std::string& written, const std::string& expected, const std::string& name) {
    if (written == expected) return;
    size_t at = 0, line = 1;
    while (at < written.size() && at < expected.size() && written[at] == expected[at]) line += expected[at++] == '\n';
    size_t from = at ? expected.rfind('\n', at - 1) + 1 : 0;
    auto line_of = [&](const std::string& text) { return text.substr(from, text.find('\n', from) - from); };
    ADD_FAILURE() << name << " line " << line << "\n wrote:    " << line_of(written)
                  << "\n expected: " << line_of(expected);
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

bool is_de_3() { return current_rulebook >= RULEBOOK_DE_3_0; }

// One description of a message being read.
struct script {
    message_t message;
    std::vector<std::pair<std::string, std::string>> keys;  // of the transaction in hand
    bool in_transaction = false;
    int writes = 0;

    void finish_transaction() {
        if (!in_transaction) return;
        in_transaction = false;
        keys_t list;
        for (const auto& key : keys) list.push_back({key.first.c_str(), key.second.c_str()});
        EXPECT_EQ(add(message, list), 1) << keys.front().second << ": " << message->last_error;
        keys.clear();
    }

    // A debit message is compared with each local instrument: all else stays.
    void write(const std::string& file) {
        ++writes;
        std::string name = file + " under " + rulebook_names[current_rulebook], expected = read_file(file);
        expect_same(document_of(message), expected, name);
        if (message->msgtype != SEPA_MSGTYPE_DDI) return;
        message->dd_type = SEPA_DDTYPE_B2B;
        expect_same(document_of(message), replaced(expected, "<Cd>CORE<", "<Cd>B2B<"), name + " B2B");
        message->dd_type = SEPA_DDTYPE_COR1;
        std::string cor1 = document_of(message);
        if (is_de_3()) {
            EXPECT_EQ(cor1, "") << name;
            EXPECT_STREQ(message->last_error, "Unknown/unsupported LocalInstrumentCode (setDDType)");
        } else {
            expect_same(cor1, replaced(expected, "<Cd>CORE<", "<Cd>COR1<"), name + " COR1");
        }
        message->dd_type = SEPA_DDTYPE_CORE;
    }

    void take(const std::string& word, const std::string& value) {
        finish_transaction();
        sepa_t* m = message.get();
        const char* text = value.c_str();
        int good = 1;
        if (word == "kind") message = new_message(value == "debit" ? SEPA_MSGTYPE_DDI : SEPA_MSGTYPE_CTI);
        if (word == "rulebook") good = sepa_init(SEPA_INIT_RULEBOOK, text);
        if (word == "iban") good = sepa_setIBAN(m, text);
        if (word == "bic") good = sepa_setBIC(m, text);
        if (word == "name") good = sepa_setName(m, text);
        if (word == "creditor_id") good = sepa_setCreditorIdentifier(m, text);
        if (word == "date") good = sepa_setDate(m, text);
        if (word == "msgid") m->msgid = strdup(text);
        if (word == "batch") m->batch_booking = value == "1";
        if (word == "tx") in_transaction = true;
        if (word == "write") write(value);
        EXPECT_EQ(good, 1) << word << " " << value;
    }

    void run(const std::string& file) {
        std::string text = read_file(file);
        for (size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1) {
            std::string line = text.substr(at, end - at);
            if (line.empty() || line[0] == '#') continue;
            size_t tab = line.find('\t', 1);
            std::string value = tab == std::string::npos ? "" : line.substr(tab + 1);
            if (line[0] == '\t')
                keys.emplace_back(line.substr(1, tab - 1), value);
            else
                take(line.substr(0, tab), value);
        }
    }
};

TEST(Golden, CreditTransfer) {
    message_counter = 5;
    script s;
    s.run("transfer.txt");
    EXPECT_EQ(s.writes, 10);
    EXPECT_EQ(message_counter, 6u);
}

TEST(Golden, CreditTransferWithoutSetters) {
    message_counter = 5;
    script s;
    s.run("transfer_bare.txt");
    EXPECT_EQ(s.writes, 2);
}

TEST(Golden, DirectDebit) {
    message_counter = 0;
    script s;
    s.run("debit.txt");
    EXPECT_EQ(s.writes, 10);
    EXPECT_EQ(message_counter, 0u);
}

// 3,000 transactions in no order on 84 dates; size and FNV-1a of the document
// come from the second writer too.
std::string large_document(long kind) {
    use_rulebook("DE-3.7");
    message_t message = new_message(kind);
    EXPECT_EQ(sepa_setIBAN(message.get(), german_iban), 1);
    EXPECT_EQ(sepa_setBIC(message.get(), "COBADEFFXXX"), 1);
    EXPECT_EQ(sepa_setName(message.get(), "Müller & Söhne"), 1);
    EXPECT_EQ(sepa_setCreditorIdentifier(message.get(), "DE98ZZZ09999999999"), 1);
    EXPECT_EQ(sepa_setDate(message.get(), "2024-06-15"), 1);
    message->msgid = strdup("LARGE");
    const char* ibans[] = {german_iban, austrian_iban, "MT44BEXM1474801KTYHFO211C11R247", "NO7867367399087"};
    const char* sequences[] = {"frst", "rcur", "ooff", "fnal"};
    for (unsigned i = 0; i < 3000; ++i) {
        char amount[20], id[20], name[20], date[40], mref[20];
        snprintf(amount, sizeof amount, "%u.%02u", i * 7919 % 100003 + 1, i % 100);
        snprintf(id, sizeof id, "ID-%u", i);
        snprintf(name, sizeof name, "Näme & %u", i);
        snprintf(date, sizeof date, "%04u-%02u-%02u", 2024 + i * 31 % 3, i * 17 % 12 + 1, i * 11 % 28 + 1);
        snprintf(mref, sizeof mref, "M%u", i);
        std::string ref;
        for (unsigned n = 0; n < i % 30; ++n) ref += "ref ";
        keys_t keys = {{"iban", ibans[i % 4]}, {"amount", amount}, {"id", id}};
        if (i % 3) keys.push_back({"bic", "BKAUATWWXXX"});
        if (i % 5) keys.push_back({"name", name});
        if (i % 7) keys.push_back({"date", date});
        if (i % 4) keys.push_back({"ref", ref.c_str()});
        if (kind == SEPA_MSGTYPE_DDI)
            keys.insert(keys.end(), {{"seq", sequences[i * 3 / 2 % 4]}, {"mref", mref}, {"mdate", "2024-01-01"}});
        EXPECT_EQ(add(message, keys), 1) << message->last_error;
    }
    return document_of(message);
}

uint64_t fnv1a(const std::string& text) {
    uint64_t hash = 14695981039346656037u;
    for (char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return hash;
}

TEST(Golden, Large) {
    std::string transfers = large_document(SEPA_MSGTYPE_CTI);
    EXPECT_EQ(transfers.size(), 1398901u);
    EXPECT_EQ(fnv1a(transfers), 0x72b8f4c72d9615dbu);
    std::string debits = large_document(SEPA_MSGTYPE_DDI);
    EXPECT_EQ(debits.size(), 1968807u);
    EXPECT_EQ(fnv1a(debits), 0x57bb6532bcd5fea6u);
}

}  // namespace
