// POSIX patterns that are compiled at first use and kept for the life of the
// process.
#pragma once

#include <regex.h>

#include <atomic>
#include <mutex>

// Compiles `pattern`, extended syntax, under the "C" locale whatever locale
// the process has. Returns false, with nothing to free, if that fails.
bool compile_pattern(regex_t* out, const char* pattern);

// A first use that may fail and is then tried again, which std::call_once and
// local statics cannot. Once it has succeeded no lock is taken.
class first_use_t {
public:
    template <typename Prepare>
    bool ensure(Prepare prepare) {
        if (ready_.load(std::memory_order_acquire)) return true;
        std::lock_guard<std::mutex> lock(mutex_);
        if (ready_.load(std::memory_order_relaxed)) return true;
        if (!prepare()) return false;
        ready_.store(true, std::memory_order_release);
        return true;
    }

private:
    std::atomic<bool> ready_{false};
    std::mutex mutex_;
};
