// The pages of large arrays.
#pragma once

#include <cstdint>
#include <iterator>

#include "sepa/binding/php_engine.h"

// The engine hands its memory out in chunks that it has not touched, from their
// start on. Their pages are prepared a window at a time, as arrays get there: a
// tenth of the time of a statement, and 256 kB too much at the very end.
class array_pages_t {
public:
    // Prepares what is around `block`, unless that has been done lately or nothing
    // has grown so far yet.
    void reach(const void* block) {
        uintptr_t window = reinterpret_cast<uintptr_t>(block) / window_size;
        for (uintptr_t prepared : latest_)
            if (window == prepared) return;
        bool first = !next_;
        latest_[next_++ % std::size(latest_)] = window;
        if (chunks_ && !first) sepa_internal::prepare_pages(reinterpret_cast<void*>(window * window_size), window_size);
    }

private:
    static constexpr size_t window_size = 256 * 1024;
    static_assert(ZEND_MM_CHUNK_SIZE % window_size == 0);
    bool chunks_ = is_zend_mm();
    uintptr_t latest_[4] = {};  // arrays, lists and texts of several sizes grow side by side
    size_t next_ = 0;
};
