#include "sepa/platform/pages.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>

namespace sepa_internal {

static constexpr size_t page = 4096;  // the least that systems have
static constexpr size_t least_to_prepare = 4 * page;

// For less, small pages that are prepared are as fast and use no more than is
// needed.
static constexpr size_t least_for_a_huge_page = huge_page / 10 * 6;

#if defined __linux__ && !defined MADV_POPULATE_WRITE
#define MADV_POPULATE_WRITE 23  // Linux 5.14; an older one refuses it
#endif

[[maybe_unused]] static void advise(uintptr_t from, uintptr_t to, size_t alignment, int advice) {
    from = (from + alignment - 1) / alignment * alignment;
    to = to / alignment * alignment;
    if (from < to) madvise(reinterpret_cast<void*>(from), to - from, advice);
}

void prepare_pages(void* block, size_t size) {
    if (size < least_to_prepare) return;
    auto from = reinterpret_cast<uintptr_t>(block);
#ifdef MADV_HUGEPAGE
    advise(from, from + size, huge_page, MADV_HUGEPAGE);
#endif
#ifdef MADV_POPULATE_WRITE
    advise(from, from + size, page, MADV_POPULATE_WRITE);
#endif
}

static size_t whole_huge_pages(size_t size) { return (size + huge_page - 1) / huge_page * huge_page; }

void* reserve_large(size_t size) {
    bool fits_huge_pages = size >= least_for_a_huge_page && size <= SIZE_MAX - huge_page;
    return fits_huge_pages ? aligned_alloc(huge_page, whole_huge_pages(size)) : malloc(size);
}

void* allocate_large(size_t size) {
    void* block = reserve_large(size);
    bool rest_is_small = size % huge_page < least_for_a_huge_page;
    if (block) prepare_pages(block, rest_is_small ? size : whole_huge_pages(size));
    return block;
}

}  // namespace sepa_internal
