// The first use of the patterns: a compilation that fails is told and tried
// again, one that succeeds happens once, whatever the number of threads.
#include <regex.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "iban/iban.h"
#include "statement/mt940.h"
#include "tests/unit/message_helpers.h"

static std::atomic<int> compilations;
static std::atomic<int> fail_at;  // the compilation that fails, counting from 1

extern "C" int __real_regcomp(regex_t* out, const char* pattern, int flags);
extern "C" int __wrap_regcomp(regex_t* out, const char* pattern, int flags);
extern "C" int __wrap_regcomp(regex_t* out, const char* pattern, int flags) {
    EXPECT_EQ(flags, REG_EXTENDED);
    // Long enough for other threads to come in between.
    std::this_thread::sleep_for(std::chrono::microseconds(200));
    return ++compilations == fail_at ? REG_ESPACE : __real_regcomp(out, pattern, flags);
}

namespace {

// Lets the nth compilation from now on fail; 0 lets all succeed.
void fail_compilation(int nth) {
    compilations = 0;
    fail_at = nth;
}

template <typename Work>
void succeed_in_eight_threads(Work work) {
    fail_compilation(0);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) threads.emplace_back([work] { EXPECT_EQ(work(), 1); });
    for (std::thread& thread : threads) thread.join();
}

TEST(FirstUse, IbanPatterns) {
    EXPECT_EQ(IBAN_check(nullptr, nullptr), 0);
    EXPECT_EQ(compilations, 0);
    for (int nth : {1, 2, 37, 37}) {
        const char* reason = nullptr;
        fail_compilation(nth);
        EXPECT_EQ(IBAN_check(german_iban, &reason), 0);
        EXPECT_STREQ(reason, "Error while initializing regular expressions");
        EXPECT_EQ(compilations, nth);
    }
    use_rulebook("DE-3.5");
    message_t message = new_message(SEPA_MSGTYPE_CTI);
    fail_compilation(1);
    EXPECT_EQ(sepa_setIBAN(message.get(), "any"), 0);
    EXPECT_STREQ(message->last_error, "Error while initializing regular expressions (any)");
    succeed_in_eight_threads([] { return IBAN_check(german_iban, nullptr); });
    EXPECT_EQ(compilations, 37);
}

TEST(FirstUse, BicPattern) {
    use_rulebook("DE-3.7");
    message_t message = new_message(SEPA_MSGTYPE_CTI);
    fail_compilation(1);
    EXPECT_EQ(sepa_check_field(FIELD_TEXT70, "any kind compiles it"), 0);
    fail_compilation(1);
    EXPECT_EQ(add(message, {{"bic", "DEUTDEFF"}}), 0);
    EXPECT_STREQ(message->last_error, "Invalid BIC format");
    fail_compilation(1);
    EXPECT_EQ(sepa_setBIC(message.get(), "DEUTDEFF"), 0);
    succeed_in_eight_threads([] { return sepa_check_field(FIELD_BIC, "DEUTDEFF"); });
    EXPECT_EQ(compilations, 1);
}

}  // namespace
