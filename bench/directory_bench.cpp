// Lookups of the bank directory. The "one" cases ask for the same bank again
// and again, as a shop with one house bank does; the "all" cases walk through
// the banks in a scattered order, so that caches and branch prediction see
// what a large mixed file gives them.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "sepa/directory/bank_directory.h"
#include "sepa/directory/directory_tables.h"
#include "sepa/iban/iban.h"

namespace {

using text_t = std::array<char, 24>;

text_t text_of(const char* bytes, size_t length) {
    text_t text{};
    memcpy(text.data(), bytes, length);
    return text;
}

// Index of the i-th of `count` entries in a scattered order.
int32_t scattered(int32_t i, int32_t count) { return static_cast<int32_t>((i * INT64_C(7919)) % count); }

std::vector<text_t> german_codes() {
    std::vector<text_t> codes;
    int32_t first = directory_count - directory_de_count;
    for (int32_t i = 0; i < directory_de_count; ++i) {
        codes.push_back(text_of(directory_entries[first + scattered(i, directory_de_count)] + 3, 8));
    }
    return codes;
}

std::vector<text_t> bics() {
    std::vector<text_t> keys;
    for (int32_t i = 0; i < directory_bic_count; ++i) {
        keys.push_back(text_of(directory_entries[scattered(i, directory_bic_count)], 11));
    }
    return keys;
}

// Changes the last character, which makes hardly any of them another key.
std::vector<text_t> unknown(std::vector<text_t> keys, size_t last) {
    for (text_t& key : keys) key[last] = key[last] == 'Q' ? 'W' : 'Q';
    return keys;
}

std::vector<text_t> german_ibans() {
    std::vector<text_t> ibans = german_codes();
    for (text_t& iban : ibans) {
        text_t code = iban;
        snprintf(iban.data(), iban.size(), "DE00%.8s0123456789", code.data());
    }
    return ibans;
}

std::vector<text_t> first_of(const std::vector<text_t>& keys) { return {keys[0]}; }

template <typename Lookup>
void run(benchmark::State& state, const std::vector<text_t>& keys, Lookup lookup) {
    size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lookup(keys[next].data()));
        if (++next == keys.size()) next = 0;
    }
}

int find_german(const char* code) {
    bank_record_t record;
    int found = bank_lookup("DE", code, &record);
    benchmark::DoNotOptimize(record);
    return found;
}

int find_bic(const char* bic) {
    bank_record_t record;
    int found = bic_lookup(bic, &record);
    benchmark::DoNotOptimize(record);
    return found;
}

int find_bic_of_iban(const char* iban) {
    char bic[12];
    int found = IBAN_getBIC(iban, bic);
    benchmark::DoNotOptimize(bic);
    return found;
}

void bank_lookup_one(benchmark::State& state) { run(state, first_of(german_codes()), find_german); }
void bank_lookup_all(benchmark::State& state) { run(state, german_codes(), find_german); }
void bank_lookup_miss(benchmark::State& state) { run(state, unknown(german_codes(), 7), find_german); }
void bic_lookup_one(benchmark::State& state) { run(state, first_of(bics()), find_bic); }
void bic_lookup_all(benchmark::State& state) { run(state, bics(), find_bic); }
void bic_lookup_miss(benchmark::State& state) { run(state, unknown(bics(), 10), find_bic); }
void IBAN_getBIC_one(benchmark::State& state) { run(state, first_of(german_ibans()), find_bic_of_iban); }
void IBAN_getBIC_all(benchmark::State& state) { run(state, german_ibans(), find_bic_of_iban); }
void IBAN_getBIC_miss(benchmark::State& state) { run(state, unknown(german_ibans(), 11), find_bic_of_iban); }

BENCHMARK(bank_lookup_one);
BENCHMARK(bank_lookup_all);
BENCHMARK(bank_lookup_miss);
BENCHMARK(bic_lookup_one);
BENCHMARK(bic_lookup_all);
BENCHMARK(bic_lookup_miss);
BENCHMARK(IBAN_getBIC_one);
BENCHMARK(IBAN_getBIC_all);
BENCHMARK(IBAN_getBIC_miss);

}  // namespace
