// Conversions of German account data. The named cases repeat one conversion,
// as a page with one form does; the scattered ones change bank or account with
// each call, so that caches and branch prediction see what a large file gives
// them.
#include <benchmark/benchmark.h>

#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "sepa/directory/directory_tables.h"
#include "sepa/iban/iban.h"

namespace {

struct request_t {
    char account[11];
    char bank[9];
};

void convert_one(benchmark::State& state, const char* account, const char* bank, int expected) {
    char iban[IBAN_BUFFER_SIZE];
    int8_t status;
    for (auto _ : state) {
        int result = IBAN_convert("DE", account, bank, iban, &status);
        if (result != expected) state.SkipWithError("another result than expected");
        benchmark::DoNotOptimize(iban);
    }
}

void convert_all(benchmark::State& state, const std::vector<request_t>& requests) {
    char iban[IBAN_BUFFER_SIZE];
    int8_t status;
    size_t i = 0;
    for (auto _ : state) {
        const request_t& request = requests[i];
        benchmark::DoNotOptimize(IBAN_convert("DE", request.account, request.bank, iban, &status));
        i = i + 1 == requests.size() ? 0 : i + 1;
    }
}

// Account numbers without a pattern: multiples of a prime.
void write_account(request_t* request, uint64_t i) {
    snprintf(request->account, sizeof request->account, "%010" PRIu64, i * 7643219971 % 10000000000);
}

std::vector<request_t> accounts_of(const char* bank) {
    std::vector<request_t> requests(4096);
    for (size_t i = 0; i < requests.size(); ++i) {
        write_account(&requests[i], i);
        memcpy(requests[i].bank, bank, sizeof requests[i].bank);
    }
    return requests;
}

std::vector<request_t> all_banks() {
    std::vector<request_t> requests;
    const int32_t first = directory_count - directory_de_count;
    for (int32_t i = 0; i < directory_de_count; ++i) {
        request_t request = {};
        const auto scattered = static_cast<int32_t>(i * INT64_C(7919) % directory_de_count);
        write_account(&request, static_cast<uint64_t>(i));
        memcpy(request.bank, directory_entries[first + scattered] + 3, 8);
        requests.push_back(request);
    }
    return requests;
}

BENCHMARK_CAPTURE(convert_one, plain, "1234567897", "10220500", 1);
BENCHMARK_CAPTURE(convert_one, listed, "135", "10050000", 1);
BENCHMARK_CAPTURE(convert_one, listed_by_bank, "1888", "37040044", 1);
BENCHMARK_CAPTURE(convert_one, not_listed_by_bank, "532013000", "37040044", 1);
BENCHMARK_CAPTURE(convert_one, branch, "1678184876", "10020890", 1);
BENCHMARK_CAPTURE(convert_one, successor, "123", "50810900", 1);
BENCHMARK_CAPTURE(convert_one, failed_check, "1234567898", "10220500", -1);
BENCHMARK_CAPTURE(convert_one, unknown_bank, "1234567897", "10220501", -3);
BENCHMARK_CAPTURE(convert_all, branches, accounts_of("10020890"));
BENCHMARK_CAPTURE(convert_all, rule_5, accounts_of("37040044"));
BENCHMARK_CAPTURE(convert_all, banks, all_banks());

}  // namespace
