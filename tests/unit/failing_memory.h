// Lets the library's allocations fail by number, and looks at what it frees. A
// test that includes this is linked with wrap_calls(<test> malloc calloc
// realloc strdup free regcomp newlocale); only calls of the program itself are
// counted, not those that the system's libraries make in turn.
#pragma once

#include <gtest/gtest.h>
#include <locale.h>
#include <regex.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>

// What happens from the wanted allocation on.
enum fault_mode_t { ONE_FAILS, ALL_FAIL_FROM_THERE };

struct failing_memory_t {
    bool armed = false;
    fault_mode_t mode = ONE_FAILS;
    long fail_at = 0;  // counting from 1
    long calls = 0;    // since it was armed
    bool failed = false;
    long unwiped = 0;  // blocks freed with something in them

    // Blocks in hand, with the sizes asked for.
    static std::map<void*, size_t>& held() {
        static auto& blocks = *new std::map<void*, size_t>;
        return blocks;
    }

    // Counts one allocation. True if it has to fail.
    bool fails() {
        if (!armed) return false;
        ++calls;
        if (mode == ONE_FAILS ? calls != fail_at : calls < fail_at) return false;
        failed = true;
        errno = ENOMEM;
        return true;
    }

    void* taken(void* block, size_t size) {
        if (block) held()[block] = size;
        return block;
    }

    void given_back(void* block) {
        auto found = held().find(block);
        if (found == held().end()) return;
        auto bytes = static_cast<const char*>(block);
        unwiped += !std::all_of(bytes, bytes + found->second, [](char c) { return c == 0; });
        held().erase(found);
    }
};
inline failing_memory_t memory;

// Declares what a call of `name` comes to, and what it was meant for.
#define WRAPPED(type, name, ...)     \
    type __real_##name(__VA_ARGS__); \
    type __wrap_##name(__VA_ARGS__); \
    type __wrap_##name(__VA_ARGS__)

extern "C" {
WRAPPED(void*, malloc, size_t size) { return memory.fails() ? nullptr : memory.taken(__real_malloc(size), size); }
WRAPPED(void*, calloc, size_t count, size_t size) {
    return memory.fails() ? nullptr : memory.taken(__real_calloc(count, size), count * size);
}
WRAPPED(void*, realloc, void* block, size_t size) {
    if (memory.fails()) return nullptr;
    memory.held().erase(block);
    return memory.taken(__real_realloc(block, size), size);
}
WRAPPED(char*, strdup, const char* text) {
    if (memory.fails()) return nullptr;
    return static_cast<char*>(memory.taken(__real_strdup(text), strlen(text) + 1));
}
WRAPPED(void, free, void* block) {
    memory.given_back(block);
    __real_free(block);
}
WRAPPED(int, regcomp, regex_t* out, const char* pattern, int flags) {
    return memory.fails() ? REG_ESPACE : __real_regcomp(out, pattern, flags);
}
WRAPPED(locale_t, newlocale, int mask, const char* name, locale_t base) {
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
            auto held = memory.held();
            attempt(mode, nth);
            EXPECT_TRUE(memory.held() == held);
            if (memory.failed) continue;
            EXPECT_GT(nth, 1) << "nothing was allocated";
            return;
        }
    }
}
