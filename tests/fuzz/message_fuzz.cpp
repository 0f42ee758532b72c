// A life of one message: the bytes choose rulebook, setters, adds and
// outputs. A call that fails changes nothing but a generated date and message
// id, and a document is well-formed and holds as many transactions as were
// accepted, with the right sums.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <iterator>
#include <vector>

#include "message/sepa.h"
#include "tests/fuzz/fuzz.h"
#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_snapshot.h"

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

// A document as it is read: its elements' names and contents, each checked
// against the marks around it.
class document_t {
public:
    explicit document_t(const char* text) : at_(text) {
        constexpr const char* head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        expect(skip(head), "the head line");
        element();
        expect(skip("\n") && !*at_, "something after the document");
    }

    // Counts and sums must be those of the transactions inside.
    void check_totals(unsigned added) const {
        expect(transactions_ == added && counts_ == 2 * added, "the number of transactions");
        expect(std::fabs(sums_ - 2 * amounts_) <= 1e-9 * std::fabs(sums_) + 0.001, "the sums");
    }

private:
    const char* at_;
    unsigned transactions_ = 0, counts_ = 0;  // told by the header and by the blocks
    double amounts_ = 0, sums_ = 0;

    bool skip(const std::string& text) {
        bool there = strncmp(at_, text.c_str(), text.size()) == 0;
        if (there) at_ += text.size();
        return there;
    }

    void element() {
        if (!skip("<")) return fuzz_fault("no element");
        const std::string name(at_, strcspn(at_, " >"));
        expect(!name.empty() && name.find_first_of("</&") == std::string::npos, "a name");
        at_ += strcspn(at_, "<>");
        if (!skip(">")) return fuzz_fault("an open tag");
        const char* content = at_;
        for (;;) {
            at_ += strcspn(at_, "<>&");
            if (skip("&lt;") || skip("&gt;") || skip("&amp;")) continue;
            if (at_[0] != '<' || at_[1] == '/') break;
            element();
        }
        take(name, content);
        expect(skip("</" + name + ">"), "the end of an element");
    }

    void take(const std::string& name, const char* content) {
        transactions_ += name == "InstdAmt";
        if (name == "InstdAmt") amounts_ += strtod(content, nullptr);
        if (name == "CtrlSum") sums_ += strtod(content, nullptr);
        if (name == "NbOfTxs") counts_ += static_cast<unsigned>(strtoul(content, nullptr, 10));
    }
};

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
        expect(text || message_->msgtype == SEPA_MSGTYPE_DDI, "a credit transfer is written whatever is set");
        if (!text) return check_error();
        expect(message_->tx_count == added_, "an add counts once");
        document_t(text).check_totals(added_);
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
