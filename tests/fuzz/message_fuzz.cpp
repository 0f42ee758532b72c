// A script over one message: the bytes choose rulebook, setters, adds and
// outputs. A call that fails changes nothing but what is told, and a document
// holds exactly the transactions that were accepted, in their order and with
// their sums.
#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "message/sepa.h"
#include "statement/mt940.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/xml_reader.h"
#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_snapshot.h"

namespace {

constexpr const char* rulebooks[] = {"DE-2.6", "DE-2.7", "AT-6",   "NL-6",   "DE-2.8",
                                     "DE-2.9", "DE-3.0", "DE-3.1", "DE-3.5", "DE-3.7"};

// Keys and values that lead further than random bytes do.
constexpr const char* keys[] = {
    "iban",        "amount",   "bic",      "name",   "seq",       "mref",      "mdate",     "date",
    "ref",         "id",       "purp",     "addrCC", "addrLine1", "addrLine2", "addrTown",  "addrDept",
    "addrCtrySub", "old_mref", "old_iban", "smnda",  "IBAN",      "Amount",    "addrPoBox", "unknown",
};
constexpr const char* values[] = {
    "DE89370400440532013000",
    "AT168064680654652158",
    "CH9300762011623852957",
    "1.00",
    "0.1",
    "1e3",
    "99999999999.995",
    "90000000000000000",
    "-1",
    "COBADEFFXXX",
    "pofichbexxx",
    "Müller & Söhne",
    "a<b>&c",
    "RCUR",
    "frst",
    "OOFF",
    "FNAL",
    "M-1",
    "2026-12-01",
    "2020-01-31",
    "",
    "1",
    "CH",
    "SALA",
    "0.004",
    "DE98ZZZ09999999999",
    "BELADEBEXXX",
};

struct added_t {
    std::string iban, id, ref, date;  // id, ref and date may be unset: "(none)"
    int slot;
    double amount;
};

std::string lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    return text;
}

// Whether `written` is the sum, up to what adding up doubles may lose.
bool is_sum(const std::string& written, double sum) {
    char exact[128];
    sepa_format_amount(exact, sum);
    if (std::fabs(sum) < 1e9) return written == exact;
    return std::fabs(strtod(written.c_str(), nullptr) - sum) <= sum * 1e-12;
}

class script_t {
public:
    script_t(input_t* input, sepa_t* message) : in_(input), message_(message) {}

    void step() {
        switch (in_->byte() % 8) {
            case 0: expect(sepa_init(SEPA_INIT_RULEBOOK, rulebooks[in_->byte() % RULEBOOK_COUNT]), "a rulebook"); break;
            case 1: set(); break;
            case 2: set_flags(); break;
            case 3: fixed_now = in_->word() * 65536L + in_->word(); break;
            case 7:
                if (writes_++ < max_writes) write();
                break;
            default: add(); break;
        }
    }

    void write() {
        snapshot_t before(message_);
        char* text = sepa_toXML(message_);
        snapshot_t after(message_);
        expect(before.date == "(none)" || before.date == after.date, "a date stays");
        expect(before.msgid == "(none)" || before.msgid == after.msgid, "a message id stays");
        before.date = after.date;
        before.msgid = after.msgid;
        expect(before == after, "an output changes the message");
        expect(!text == must_fail(), "a document is written, or refused, wrongly");
        if (text)
            check_document(text);
        else
            check_error();
        free(text);
    }

private:
    input_t* in_;
    sepa_t* message_;
    std::vector<added_t> added_;
    int writes_ = 0;
    static constexpr int max_writes = 4;  // most of a run's time goes there

    // A text of the tables or of the input, or null for a null pointer.
    struct value_t {
        std::string text;
        bool null;
    };
    value_t value() {
        unsigned choice = in_->byte();
        if (choice == 255) return {"", true};
        if (choice < 192) return {values[choice % std::size(values)], false};
        return {in_->line().c_str(), false};
    }
    std::string key() {
        unsigned choice = in_->byte();
        return choice < 240 ? keys[choice % std::size(keys)] : in_->line().c_str();
    }

    void check_error() {
        const char* error = message_->last_error;
        expect(error && *error, "a failure has a reason");
        if (error == message_->error_buffer)
            expect(memchr(error, 0, sizeof message_->error_buffer), "a composed reason is a text");
    }

    void set() {
        static constexpr int (*setters[])(sepa_t*, const char*) = {sepa_setIBAN, sepa_setBIC, sepa_setName,
                                                                   sepa_setCreditorIdentifier, sepa_setDate};
        auto setter = setters[in_->byte() % std::size(setters)];
        value_t wanted = value();
        exact_text_t text(wanted.text);
        snapshot_t before(message_);
        if (setter(message_, wanted.null ? nullptr : text.get()) == 1) return;
        expect(before == snapshot_t(message_), "a failed setter changes the message");
        check_error();
    }

    void set_flags() {
        message_->dd_type = in_->byte() % 4;
        message_->batch_booking = in_->byte() & 1;
    }

    void add() {
        std::vector<exact_text_t> texts;
        std::vector<kv_pair_t> list;
        std::map<std::string, std::string> given;
        for (unsigned count = in_->byte() % 12; count; --count) {
            std::string name = key();
            value_t wanted = value();
            texts.emplace_back(name);
            const char* key_text = texts.back().get();
            texts.emplace_back(wanted.text);
            list.push_back({key_text, wanted.null ? nullptr : texts.back().get()});
            given[lower(name)] = wanted.text;
        }
        list.push_back({nullptr, nullptr});

        snapshot_t before(message_);
        bool debit = message_->msgtype == SEPA_MSGTYPE_DDI;
        int result = debit ? ddi_add(message_, list.data()) : cti_add(message_, list.data());
        expect(!(debit ? cti_add(message_, list.data()) : ddi_add(message_, list.data())), "an add of the other kind");
        if (result != 1) {
            expect(before == snapshot_t(message_), "a failed add changes the message");
            check_error();
            return;
        }
        remember(given);
        expect(message_->tx_count == added_.size(), "an add counts once");
    }

    void remember(const std::map<std::string, std::string>& given) {
        static const std::map<std::string, int> slots = {{"frst", 1}, {"rcur", 2}, {"ooff", 3}, {"fnal", 4}};
        auto text = [&](const char* name) { return given.count(name) ? given.at(name) : "(none)"; };
        double amount = round(parse_amount(text("amount").c_str(), nullptr) * 100) / 100;
        auto slot = slots.find(lower(text("seq")));
        bool debit = message_->msgtype == SEPA_MSGTYPE_DDI;
        expect(given.count("iban") && amount > 0 && (!debit || slot != slots.end()), "an add takes what is incomplete");
        added_.push_back({text("iban"), text("id"), text("ref"), text("date"),
                          debit && slot != slots.end() ? slot->second : 0, amount});
    }

    bool must_fail() const {
        if (message_->msgtype == SEPA_MSGTYPE_CTI) return false;
        if (!message_->iban || !message_->bic || !message_->name || !message_->creditor_id || added_.empty())
            return true;
        int rulebook = current_rulebook;
        if (message_->dd_type > 2 || (message_->dd_type == 1 && rulebook >= RULEBOOK_DE_3_0)) return true;
        for (auto tx = static_cast<ddi_tx_t*>(message_->tx_head); tx; tx = tx->next)
            if (!tx->mref || !tx->mdate) return true;
        return false;
    }

    void check_document(const char* text) const {
        xml_element_t document;
        expect(xml_reader_t(text).read(&document), "the document is not well formed");
        if (document.name != "Document" || document.children.size() != 1) return fuzz_fault("the document's root");
        bool debit = message_->msgtype == SEPA_MSGTYPE_DDI;
        const xml_element_t& root = document.children[0];
        expect(root.name == (debit ? "CstmrDrctDbtInitn" : "CstmrCdtTrfInitn"), "the kind of document");
        expect(root.at("GrpHdr/NbOfTxs") == std::to_string(added_.size()), "the number of transactions");
        double total = 0;
        for (const added_t& tx : added_) total += tx.amount;
        expect(is_sum(root.at("GrpHdr/CtrlSum"), total), "the control sum");

        std::vector<added_t> order = added_;
        for (added_t& tx : order)
            if (tx.date == "(none)") tx.date = message_->date;
        std::stable_sort(order.begin(), order.end(), [](const added_t& a, const added_t& b) {
            return a.date != b.date ? a.date < b.date : a.slot < b.slot;
        });
        size_t next = 0;
        for (size_t i = 1; i < root.children.size(); ++i) {
            size_t first = next;
            while (next < order.size() && order[next].date == order[first].date &&
                   order[next].slot == order[first].slot)
                ++next;
            if (next == first) return fuzz_fault("more blocks than there are");
            check_block(root.children[i], i,
                        {order.begin() + static_cast<long>(first), order.begin() + static_cast<long>(next)});
        }
        expect(next == order.size(), "a transaction is missing");
    }

    void check_block(const xml_element_t& block, size_t number, const std::vector<added_t>& order) const {
        bool debit = message_->msgtype == SEPA_MSGTYPE_DDI;
        expect(block.name == "PmtInf", "a block");
        expect(block.at("PmtInfId") == text_of(message_->msgid) + "-P" + std::to_string(number), "the block's number");
        expect(block.at("NbOfTxs") == std::to_string(order.size()), "the block's number of transactions");
        expect(block.at(debit ? "ReqdColltnDt" : "ReqdExctnDt") == order[0].date, "the block's date");
        double sum = 0;
        size_t next = 0;
        for (const xml_element_t& tx : block.children) {
            if (tx.name != (debit ? "DrctDbtTxInf" : "CdtTrfTxInf")) continue;
            if (next == order.size()) return fuzz_fault("a transaction too many");
            check_transaction(tx, order[next]);
            sum += order[next++].amount;
        }
        expect(next == order.size(), "a transaction of the block is missing");
        expect(is_sum(block.at("CtrlSum"), sum), "the block's sum");
    }

    void check_transaction(const xml_element_t& tx, const added_t& expected) const {
        bool debit = message_->msgtype == SEPA_MSGTYPE_DDI;
        char amount[128];
        sepa_format_amount(amount, expected.amount);
        expect(tx.at(debit ? "InstdAmt" : "Amt/InstdAmt") == amount, "another amount");
        expect(tx.at(debit ? "DbtrAcct/Id/IBAN" : "CdtrAcct/Id/IBAN") == expected.iban, "another account");
        expect(tx.at("PmtId/EndToEndId") == (expected.id == "(none)" ? "NOTPROVIDED" : expected.id), "another id");
        expect(tx.at("RmtInf/Ustrd") == expected.ref, "another reference");
    }
};

}  // namespace

FUZZ_TARGET(message) {
    input_t input(data, size);
    fixed_now = 1764580000;
    sepa_init(SEPA_INIT_RULEBOOK, "DE-3.7");
    unsigned kind = input.byte();
    sepa_t* message = sepa_new(kind % 4);
    expect(!message == (kind % 4 != 1 && kind % 4 != 2), "there are two kinds of message");
    if (!message) return;
    if (kind & 4) {  // ready for output
        expect(sepa_setIBAN(message, "DE89370400440532013000") && sepa_setBIC(message, "COBADEFFXXX") &&
                   sepa_setName(message, "Test") && sepa_setCreditorIdentifier(message, "DE98ZZZ09999999999"),
               "the setters");
    }
    script_t script(&input, message);
    for (int steps = 0; steps < 60 && !input.empty(); ++steps) script.step();
    script.write();
    sepa_free(message);
}
