#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "sepa/account/account_check.h"

// Account numbers of all lengths, most of them long, as they are in use. Nine
// of ten fail, which is the long way through a method that tries several.
static std::vector<std::string> sample_accounts() {
    std::mt19937 random(1);
    std::vector<std::string> accounts(1024);
    for (std::string& account : accounts) {
        size_t length = random() % 4 ? 10 : 1 + random() % 10;
        for (size_t i = 0; i < length; ++i) account += static_cast<char>('0' + random() % 10);
    }
    return accounts;
}

static void check(benchmark::State& state, uint8_t method) {
    const std::vector<std::string> accounts = sample_accounts();
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(account_check_bank(accounts[i].c_str(), "37040044", method));
        i = (i + 1) % accounts.size();
    }
}

static const bool registered = [] {
    for (int code = 0; code < 256; ++code) {
        bool needs_bank_code = code == 0x52 || code == 0x53 || code == 0xB6 || code == 0xC0;
        if (!method_table[static_cast<size_t>(code)] && !needs_bank_code) continue;
        char name[16];
        snprintf(name, sizeof name, "method_%02X", static_cast<unsigned>(code));
        benchmark::RegisterBenchmark(name, check, static_cast<uint8_t>(code));
    }
    return true;
}();
