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

// As malloc, to be freed by free, with its pages prepared.
void* allocate_large(size_t size);

}  // namespace sepa_internal
