// The cost of adding and of writing a transaction, in messages of 10, 1,000
// and 100,000. `each` is the time for one transaction: it must stay level,
// with one date for all and with a date for each.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "sepa/message/sepa.h"

namespace {

struct message_deleter {
    void operator()(sepa_t* message) const { sepa_free(message); }
};
using message_t = std::unique_ptr<sepa_t, message_deleter>;

enum dates_t { ONE_DATE, OWN_DATES };

struct row_t {
    char id[32], amount[32], date[32];
};

// Ten bytes, all different, in no order; a message may have more dates than
// the calendar has in a century.
std::vector<row_t> make_rows(long count, long dates) {
    std::vector<row_t> rows(static_cast<size_t>(count));
    unsigned long i = 0;
    for (row_t& row : rows) {
        unsigned long mixed = ++i * 48271 % 1000003;  // a prime, so no two are equal
        snprintf(row.id, sizeof row.id, "E2E-%lu", i);
        snprintf(row.amount, sizeof row.amount, "%lu.%02lu", mixed % 10000 + 1, i % 100);
        snprintf(row.date, sizeof row.date, dates == OWN_DATES ? "%010lu" : "2024-05-06", mixed);
    }
    return rows;
}

message_t make_message(long kind) {
    sepa_init(SEPA_INIT_RULEBOOK, "DE-3.7");
    message_t message(sepa_new(kind));
    if (!sepa_setIBAN(message.get(), "DE89370400440532013000") || !sepa_setBIC(message.get(), "COBADEFFXXX") ||
        !sepa_setName(message.get(), "Müller & Söhne GmbH") ||
        !sepa_setCreditorIdentifier(message.get(), "DE98ZZZ09999999999"))
        return nullptr;
    return message;
}

bool add(sepa_t* message, const row_t& row) {
    const kv_pair_t transfer[] = {{"id", row.id},
                                  {"name", "Grüne Wiese & Co"},
                                  {"iban", "DE86100500000990021440"},
                                  {"bic", "BELADEBEXXX"},
                                  {"amount", row.amount},
                                  {"ref", "Rechnung 4711 vom 6. Mai, Kundennummer 123456"},
                                  {"date", row.date},
                                  {nullptr, nullptr}};
    const kv_pair_t debit[] = {{"id", row.id},
                               {"name", "Grüne Wiese & Co"},
                               {"iban", "DE86100500000990021440"},
                               {"bic", "BELADEBEXXX"},
                               {"amount", row.amount},
                               {"ref", "Rechnung 4711 vom 6. Mai, Kundennummer 123456"},
                               {"date", row.date},
                               {"seq", "RCUR"},
                               {"mref", "MANDAT-123456"},
                               {"mdate", "2024-01-01"},
                               {nullptr, nullptr}};
    return message->msgtype == SEPA_MSGTYPE_DDI ? ddi_add(message, debit) : cti_add(message, transfer);
}

bool add_all(sepa_t* message, const std::vector<row_t>& rows) {
    for (const row_t& row : rows)
        if (!add(message, row)) return false;
    return true;
}

void count_transactions(benchmark::State& state) {
    state.counters["each"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void add_transactions(benchmark::State& state, long kind) {
    std::vector<row_t> rows = make_rows(state.range(0), state.range(1));
    for (auto _ : state) {
        state.PauseTiming();
        message_t message = make_message(kind);
        state.ResumeTiming();
        if (!message || !add_all(message.get(), rows)) state.SkipWithError("refused");
        state.PauseTiming();
        message.reset();
        state.ResumeTiming();
    }
    count_transactions(state);
}

void write_document(benchmark::State& state, long kind) {
    message_t message = make_message(kind);
    if (!message || !add_all(message.get(), make_rows(state.range(0), state.range(1)))) state.SkipWithError("refused");
    for (auto _ : state) {
        char* text = sepa_toXML(message.get());
        if (!text) state.SkipWithError("not written");
        benchmark::DoNotOptimize(text);
        free(text);
    }
    count_transactions(state);
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"count", "own_dates"})->ArgsProduct({{10, 1000, 100000}, {ONE_DATE, OWN_DATES}});
    bench->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(add_transactions, cti_add, SEPA_MSGTYPE_CTI)->Apply(sizes);
BENCHMARK_CAPTURE(add_transactions, ddi_add, SEPA_MSGTYPE_DDI)->Apply(sizes);
BENCHMARK_CAPTURE(write_document, credit_transfer, SEPA_MSGTYPE_CTI)->Apply(sizes);
BENCHMARK_CAPTURE(write_document, direct_debit, SEPA_MSGTYPE_DDI)->Apply(sizes);

}  // namespace
