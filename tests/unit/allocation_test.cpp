// Every public operation that allocates, with each of its allocations failing:
// result, reason, a message unchanged but for what is told, nothing lost, and
// the next call as if nothing had happened.
#include <memory>
#include <vector>

#include "directory/bank_directory.h"
#include "iban/iban.h"
#include "message/sepa.h"
#include "statement/mt940.h"
#include "tests/unit/failing_memory.h"
#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_snapshot.h"

namespace {

constexpr const char* iban = "DE89370400440532013000";

struct message_deleter {
    void operator()(sepa_t* message) const { sepa_free(message); }
};
using message_t = std::unique_ptr<sepa_t, message_deleter>;

// The first use of the patterns comes once in a process, so before all else.
TEST(Allocation, AFirstUseOfThePatterns) {
    for_every_allocation([](fault_mode_t mode, long nth) {
        const char* reason = nullptr;
        int result = run_failing(mode, nth, [&] { return IBAN_check(iban, &reason); });
        EXPECT_EQ(result, !memory.failed);
        if (memory.failed) EXPECT_STREQ(reason, "Error while initializing regular expressions");
    });
}
}  // namespace
