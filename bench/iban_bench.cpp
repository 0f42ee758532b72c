// The cost of one IBAN_check.
#include <benchmark/benchmark.h>

#include "sepa/iban/iban.h"

namespace {

void check(benchmark::State& state, const char* iban) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(iban);
        benchmark::DoNotOptimize(IBAN_check(iban, nullptr));
    }
}
BENCHMARK_CAPTURE(check, german, "DE89370400440532013000");
BENCHMARK_CAPTURE(check, austrian, "AT168064680654652158");
BENCHMARK_CAPTURE(check, maltese, "MT44BEXM1474801KTYHFO211C11R247");
BENCHMARK_CAPTURE(check, british_last_row, "GB81SLDV99858107822382");
BENCHMARK_CAPTURE(check, wrong_checksum, "DE98370400440532013000");
BENCHMARK_CAPTURE(check, unknown_country, "US64SVBKUS6S3300958879");

}  // namespace
