// Statement files: a realistic one, and shapes that a careless parser takes
// square time for. Each of these is parsed in two sizes, ten times apart; the
// ratio of the times must be about ten.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "statement/mt940.h"

namespace {

constexpr int transactions_per_statement = 100;
const char statement_end[] = ":62F:C240102EUR1,00\r\n-";

void add_transaction(std::string* text, int i) {
    char line[512];
    snprintf(line, sizeof line,
             ":61:2401020102%cR%d,%02dNTRFNONREF//B%07d\r\n"
             ":86:166?00GUTSCHRIFT?109249?20EREF+RG-%07d?21SVWZ+Rechnung %07d?22vom 2.1.2024 Danke"
             "?30COBADEFFXXX?31DE89370400440532013000?32MUELLER UND SOEHNE GMBH?33MUENCHEN?34997\r\n",
             i % 3 ? 'C' : 'D', i % 9000, i % 100, i, i, i);
    *text += line;
}

std::string realistic_file(int transactions) {
    std::string text;
    for (int i = 0; i < transactions; ++i) {
        if (i % transactions_per_statement == 0)
            text += "\r\n:20:STARTUMSE\r\n:25:37040044/0532013000\r\n:28C:00001/001\r\n:60F:C240101EUR1234,56\r\n";
        add_transaction(&text, i);
        if ((i + 1) % transactions_per_statement == 0) text += statement_end;
    }
    return text;
}

// Of the processor, so that others on the machine count little.
double seconds_so_far() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Seconds for the parse and for giving the records back.
double seconds_of(const std::string& content) {
    char* text = strdup(content.c_str());
    double start = seconds_so_far();
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    handle->parser->text = text;
    if (!mt940_parse(handle, text)) return NAN;
    benchmark::DoNotOptimize(handle->first);
    sepa_stmt_parser_free(handle);
    return seconds_so_far() - start;
}

void realistic(benchmark::State& state) {
    const std::string text = realistic_file(static_cast<int>(state.range(0)));
    for (auto _ : state) state.SetIterationTime(seconds_of(text));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(realistic)->Arg(20000)->UseManualTime();

struct shape_t {
    const char* name;
    const char *start, *repeated, *end;
};

const char one_transaction[] = "\r\n:20:\r\n:61:240102C1,NTRF\r\n:86:166";
const shape_t shapes[] = {
    {"no_comma", "\r\n:20:", "\r\n:61:240102C100NTRF", "\r\n-\r\n"},
    {"no_type", "", "\r\n:20:\r\n:61:240102C1,", "\r\n-\r\n"},
    {"type_at_the_end", "\r\n:20:", "\r\n:61:240102C1,", "\r\nNTRF"},
    {"commas_and_type_at_the_end", "\r\n:20:\r\n:61:240102C1", "\r\n:61:240102C1,,,,", "\r\nNTRF"},
    {"code_behind_the_line", "\r\n:20:", "\r\n:61:240102C1,N", "\r\n-\r\n"},
    {"rising_never", one_transaction, "?20", "\r\n:62F:"},
    {"successors", one_transaction, "?20?21?19?", "\r\n:62F:"},
    {"small_fields", one_transaction, "\r\n:86:?00", "\r\n:62F:"},
    {"line_ends_in_a_field", one_transaction, "\r\n", "\r\n:62F:"},
    {"created_line_ends", one_transaction, "\r\r\n\n", "\r\n:62F:"},
    {"field_without_end", one_transaction, "?20\r\n", ""},
    {"fields_without_transaction", "", "\r\n:20:\r\n:86:166", "\r\n-"},
    {"carriage_returns", "\r\n:20:", "\r", "\r\n-\r\n"},
    {"one_long_line", "\r\n:20:\r\n:61:240102C", "1", "\r\n-\r\n"},
    {"blanks", "\r\n:20:\r\n:28C:", "\r\n", "1\r\n-\r\n"},
    {"pages", "\r\n:20:", "\r\n:28C:1", "\r\n:28C:1/2\r\n-"},
    {"tiny_statements", "", "\r\n:20:\r\n-", ""},
    {"starts_without_end", "\r\n:20:", "\r\n:20:", ""},
};

std::string text_of(const shape_t& shape, size_t size) {
    std::string text = shape.start;
    const size_t step = strlen(shape.repeated);
    text.reserve(size + step + 64);
    while (text.size() < size) text.append(shape.repeated, step);
    return text + shape.end;
}

void hostile(benchmark::State& state) {
    // Memory once had is kept: fresh pages from the system cost more than the
    // parse, and only the large text would need them again and again.
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
    mallopt(M_MMAP_THRESHOLD, INT_MAX);
    const shape_t& shape = shapes[state.range(0)];
    const std::string small = text_of(shape, 1000000), large = text_of(shape, 10000000);
    double best_small = INFINITY, best_large = INFINITY;
    for (auto _ : state) {
        double seconds = seconds_of(large);
        state.SetIterationTime(seconds);
        best_large = std::min(best_large, seconds);
        best_small = std::min({best_small, seconds_of(small), seconds_of(small)});
    }
    state.SetLabel(shape.name);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(large.size()));
    state.counters["ratio"] = best_large / best_small;
}
BENCHMARK(hostile)->DenseRange(0, sizeof shapes / sizeof *shapes - 1)->Iterations(5)->UseManualTime();

}  // namespace
