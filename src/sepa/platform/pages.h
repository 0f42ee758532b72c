// Memory by pages. The system clears a page when it is first touched, which costs
// more than most of what is done with it: half of that for many at once, a quarter
// in a page of 2 MB. So whoever is about to fill a large block asks for its pages
// first.
#pragma once

#include <cstddef>

namespace sepa_internal {

// Asks for the pages of a block that is about to be written, all of it: those of
// 2 MB where whole ones fit in, and where there are none nothing is lost.
void prepare_pages(void* block, size_t size);

constexpr size_t huge_page = size_t{2} << 20;  // what x86-64 and ARM64 call one

// As malloc, to be freed by free: where huge pages are to be had for it, it begins
// at one.
void* reserve_large(size_t size);

// The same with its pages prepared.
void* allocate_large(size_t size);

// Lets the processor fetch a block that will be read soon.
inline void prefetch(const void* block, size_t size) {
    for (size_t at = 0; at < size; at += 64) __builtin_prefetch(static_cast<const char*>(block) + at);
}

}  // namespace sepa_internal
