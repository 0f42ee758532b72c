// A life of one message: the bytes choose rulebook, setters, adds and
// outputs. A call that fails changes nothing but a generated date and message
// id, and a document is well-formed and holds as many transactions as were
// accepted, with the right sums.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <iterator>
#include <utility>
#include <vector>

#include "sepa/message/sepa.h"
#include "sepa/text/scan.h"
#include "tests/fuzz/fuzz.h"
#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_snapshot.h"

using sepa_internal::begins_with;

namespace {

// Takes values off an input; past its end all are zero or empty.
class input_t {
public:
    input_t(const uint8_t* data, size_t size) : at_(data), left_(size) {}

    bool empty() const { return left_ == 0; }
    uint8_t byte() { return left_ ? (--left_, *at_++) : uint8_t{0}; }
    // Up to the next line end, which is taken and not given.
    std::string line() {
        std::string text;
        for (uint8_t c; left_ && (c = byte()) != '\n';) text += static_cast<char>(c);
        return text;
    }

private:
    const uint8_t* at_;
    size_t left_;
};

// Keys and values that lead further than random bytes do, with bars between;
// inputs choose them by their numbers.
const std::string keys =
    "iban|amount|bic|name|seq|mref|mdate|date|ref|id|purp|addrCC|addrLine1|addrLine2|addrTown|addrDept|addrCtrySub|"
    "old_mref|old_iban|smnda|IBAN|Amount|addrPoBox|unknown|";
const std::string values =
    "DE89370400440532013000|AT168064680654652158|CH9300762011623852957|1.00|0.1|1e3|99999999999.995|90000000000000000|"
    "-1|COBADEFFXXX|pofichbexxx|Müller & Söhne|a<b>&c|RCUR|frst|OOFF|FNAL|M-1|2026-12-01|2020-01-31||1|CH|SALA|0.004|"
    "DE98ZZZ09999999999|BELADEBEXXX|";

// The piece that the number falls on.
std::string pick(const std::string& pieces, size_t number) {
    size_t from = 0;
    for (number %= static_cast<size_t>(std::count(pieces.begin(), pieces.end(), '|')); number; --number)
        from = pieces.find('|', from) + 1;
    return pieces.substr(from, pieces.find('|', from) - from);
}

constexpr int (*setters[])(sepa_t*, const char*) = {sepa_setIBAN, sepa_setBIC, sepa_setName, sepa_setCreditorIdentifier,
                                                    sepa_setDate};

// What a document tells of its transactions, in the header and in the blocks,
// and what they are.
struct totals_t {
    unsigned transactions = 0, counts = 0;
    double amounts = 0, sums = 0;

    void take(const std::string& name, const char* content) {
        transactions += name == "InstdAmt";
        if (name == "InstdAmt") amounts += strtod(content, nullptr);
        if (name == "CtrlSum") sums += strtod(content, nullptr);
        if (name == "NbOfTxs") counts += static_cast<unsigned>(strtoul(content, nullptr, 10));
    }
};

// Goes from mark to mark up to the end of the document, or to a wrong mark.
totals_t read_document(const char* at) {
    constexpr const char* head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    totals_t totals;
    expect(begins_with(at, head), "the head line");
    if (begins_with(at, head)) at += strlen(head);
    std::vector<std::pair<std::string, const char*>> open;  // elements by name, and where their contents begin
    for (;;) {
        at += strcspn(at, "<>&");
        if (begins_with(at, "&lt;") || begins_with(at, "&gt;") || begins_with(at, "&amp;")) {
            ++at;
            continue;
        }
        if (*at != '<') break;
        bool closes = at[1] == '/';
        const std::string name(at + 1 + closes, strcspn(at + 1 + closes, " <>"));
        at += 1 + strcspn(at + 1, "<>");
        if (*at != '>') break;
        ++at;
        if (!closes) {
            open.emplace_back(name, at);
            continue;
        }
        if (open.empty() || open.back().first != name) break;
        totals.take(name, open.back().second);
        open.pop_back();
        if (open.empty()) break;
    }
    expect(open.empty() && strcmp(at, "\n") == 0, "the marks of a document");
    return totals;
}

class life_t {
public:
    life_t(input_t* input, sepa_t* message) : in_(input), message_(message) {}

    void step() {
        switch (in_->byte() % 8) {
            case 0:
                expect(sepa_init(SEPA_INIT_RULEBOOK, rulebook_names[in_->byte() % RULEBOOK_COUNT]), "a rulebook");
                break;
            case 1: set(); break;
            case 2:
                message_->dd_type = in_->byte() % 4;
                message_->batch_booking = in_->byte() & 1;
                break;
            case 3: fixed_now = in_->byte() * 16777216L; break;
            case 7:
                if (writes_++ < 4) write();  // most of a run's time goes there
                break;
            default: add(); break;
        }
        texts_.clear();
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
        if (!text) return check_error();
        expect(message_->tx_count == added_, "an add counts once");
        totals_t totals = read_document(text);
        expect(totals.transactions == added_ && totals.counts == 2 * added_, "the number of transactions");
        double error = std::fabs(totals.sums - 2 * totals.amounts);
        expect(error <= 1e-9 * std::fabs(totals.sums) + 0.001, "the sums");
        free(text);
    }

private:
    input_t* in_;
    sepa_t* message_;
    unsigned added_ = 0;
    int writes_ = 0;
    std::deque<exact_text_t> texts_;  // of the step

    const char* keep(const std::string& text) { return texts_.emplace_back(text).get(); }

    // A text of the tables or of the input, or null.
    const char* value() {
        unsigned choice = in_->byte();
        if (choice == 255) return nullptr;
        return keep(choice < 192 ? pick(values, choice) : in_->line().c_str());
    }
    const char* key() {
        unsigned choice = in_->byte();
        return keep(choice < 240 ? pick(keys, choice) : in_->line().c_str());
    }

    bool must_fail() const {
        if (message_->msgtype == SEPA_MSGTYPE_CTI) return false;
        if (!message_->iban || !message_->bic || !message_->name || !message_->creditor_id || !added_) return true;
        if (message_->dd_type > 2 || (message_->dd_type == 1 && current_rulebook >= RULEBOOK_DE_3_0)) return true;
        for (auto tx = static_cast<ddi_tx_t*>(message_->tx_head); tx; tx = tx->next)
            if (!tx->mref || !tx->mdate) return true;
        return false;
    }

    void check_error() { expect(message_->last_error && *message_->last_error, "a failure has a reason"); }

    void set() {
        auto setter = setters[in_->byte() % std::size(setters)];
        snapshot_t before(message_);
        if (setter(message_, value()) == 1) return;
        expect(before == snapshot_t(message_), "a failed setter changes the message");
        check_error();
    }

    void add() {
        std::vector<kv_pair_t> list;
        for (unsigned count = in_->byte() % 12; count; --count) {
            const char* name = key();
            list.push_back({name, value()});
        }
        list.push_back({nullptr, nullptr});
        snapshot_t before(message_);
        bool debit = message_->msgtype == SEPA_MSGTYPE_DDI;
        int result = (debit ? ddi_add : cti_add)(message_, list.data());
        expect(!(debit ? cti_add : ddi_add)(message_, list.data()), "an add of the other kind");
        added_ += result == 1;
        if (result == 1) return;
        expect(before == snapshot_t(message_), "a failed add changes the message");
        check_error();
    }
};

}  // namespace

void fuzz_message(const uint8_t* data, size_t size) {
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
    life_t life(&input, message);
    for (int steps = 0; steps < 60 && !input.empty(); ++steps) life.step();
    life.write();
    sepa_free(message);
}
