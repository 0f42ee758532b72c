// Lets the library's allocations fail by number. A test that includes this is
// linked with wrap_calls(<test> malloc calloc realloc strdup free regcomp
// newlocale); only calls of the program itself are counted, not those that the
// system's libraries make in turn.
#pragma once

#include <gtest/gtest.h>
#include <locale.h>
#include <regex.h>

#include <cerrno>
#include <cstdlib>

// What happens from the wanted allocation on.
enum fault_mode_t { ONE_FAILS, ALL_FAIL_FROM_THERE };

struct failing_memory_t {
    bool armed = false;
    fault_mode_t mode = ONE_FAILS;
    long fail_at = 0;  // counting from 1
    long calls = 0;    // since it was armed
    bool failed = false;
    long live = 0;          // blocks in hand, always counted
    long points_tried = 0;  // failures so far

    // Counts one allocation. True if it has to fail.
    bool fails() {
        if (!armed) return false;
        ++calls;
        if (mode == ONE_FAILS ? calls != fail_at : calls < fail_at) return false;
        failed = true;
        errno = ENOMEM;
        return true;
    }
};
inline failing_memory_t memory;

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);
char* __real_strdup(const char* text);
void __real_free(void* block);
int __real_regcomp(regex_t* out, const char* pattern, int flags);
locale_t __real_newlocale(int mask, const char* name, locale_t base);

void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_realloc(void* block, size_t size);
char* __wrap_strdup(const char* text);
void __wrap_free(void* block);
int __wrap_regcomp(regex_t* out, const char* pattern, int flags);
locale_t __wrap_newlocale(int mask, const char* name, locale_t base);

inline void* counted(void* block) {
    if (block) ++memory.live;
    return block;
}
void* __wrap_malloc(size_t size) { return memory.fails() ? nullptr : counted(__real_malloc(size)); }
void* __wrap_calloc(size_t count, size_t size) {
    return memory.fails() ? nullptr : counted(__real_calloc(count, size));
}
void* __wrap_realloc(void* block, size_t size) {
    if (memory.fails()) return nullptr;
    return block ? __real_realloc(block, size) : counted(__real_realloc(nullptr, size));
}
char* __wrap_strdup(const char* text) {
    return memory.fails() ? nullptr : static_cast<char*>(counted(__real_strdup(text)));
}
void __wrap_free(void* block) {
    if (block) --memory.live;
    __real_free(block);
}
int __wrap_regcomp(regex_t* out, const char* pattern, int flags) {
    return memory.fails() ? REG_ESPACE : __real_regcomp(out, pattern, flags);
}
locale_t __wrap_newlocale(int mask, const char* name, locale_t base) {
    return memory.fails() ? nullptr : __real_newlocale(mask, name, base);
}
}

// Runs `operation` under a failing nth allocation.
template <typename Operation>
auto run_failing(fault_mode_t mode, long nth, Operation operation) {
    memory.mode = mode;
    memory.fail_at = nth;
    memory.calls = 0;
    memory.failed = false;
    memory.armed = true;
    auto result = operation();
    memory.armed = false;
    if (memory.failed) ++memory.points_tried;
    return result;
}

// Calls `attempt(mode, n)` in both modes for n = 1, 2, ... until `attempt` has
// met no failure, and looks for blocks that an attempt has left behind.
template <typename Attempt>
void for_every_allocation(Attempt attempt) {
    for (long nth = 1; !testing::Test::HasFailure(); ++nth) {
        for (fault_mode_t mode : {ALL_FAIL_FROM_THERE, ONE_FAILS}) {
            SCOPED_TRACE(testing::Message()
                         << "allocation " << nth << (mode == ONE_FAILS ? " alone" : " and all after"));
            long live = memory.live;
            attempt(mode, nth);
            EXPECT_EQ(memory.live, live);
            if (memory.failed) continue;
            EXPECT_GT(nth, 1) << "nothing was allocated";
            return;
        }
    }
}
