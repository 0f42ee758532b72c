// A preload that lets the allocations of one module fail by number, and counts
// the blocks that the module holds. Only calls that the module makes itself
// count, which their return address tells: the engine, whose memory may not
// fail, is left alone. A script drives it by its environment:
//
//     putenv("FAIL_AT=3")   the third allocation from now on fails
//     putenv("FAIL_AT=3+")  and all after it
//     putenv("FAIL_AT=0")   none; sets FAILED to their number, LIVE to the blocks held
//
// The name of the module is in FAIL_MODULE. What it frees is filled, so that
// whoever still uses it reads rubbish. A process in which it still holds blocks
// at its end exits with code 3.
#include <dlfcn.h>
#include <link.h>
#include <malloc.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);
}

// The module in memory; from and to are equal until it has been looked for.
static uintptr_t module_from, module_to;
static long calls, fail_at, failed, live;
static bool all_after;

static bool from_module(void* caller) {
    auto at = reinterpret_cast<uintptr_t>(caller);
    return at >= module_from && at < module_to;
}

static void* hold(void* block) {
    live += block != nullptr;
    return block;
}

static bool fails() {
    ++calls;
    if (!fail_at || (all_after ? calls < fail_at : calls != fail_at)) return false;
    ++failed;
    errno = ENOMEM;
    return true;
}

#define CALLER __builtin_return_address(0)

extern "C" {
void* malloc(size_t size) {
    if (!from_module(CALLER)) return __libc_malloc(size);
    return fails() ? nullptr : hold(__libc_malloc(size));
}

void* calloc(size_t count, size_t size) {
    if (!from_module(CALLER)) return __libc_calloc(count, size);
    return fails() ? nullptr : hold(__libc_calloc(count, size));
}

void* realloc(void* block, size_t size) {
    if (!from_module(CALLER)) return __libc_realloc(block, size);
    if (fails()) return nullptr;
    live -= block != nullptr;
    return hold(__libc_realloc(block, size));
}

void* aligned_alloc(size_t alignment, size_t size) {
    if (!from_module(CALLER)) return __libc_memalign(alignment, size);
    return fails() ? nullptr : hold(__libc_memalign(alignment, size));
}

char* strdup(const char* text) {
    size_t size = strlen(text) + 1;
    bool counted = from_module(CALLER);
    if (counted && fails()) return nullptr;
    void* copy = counted ? hold(__libc_malloc(size)) : __libc_malloc(size);
    return copy ? static_cast<char*>(memcpy(copy, text, size)) : nullptr;
}

void free(void* block) {
    if (block && from_module(CALLER)) {
        --live;
        memset(block, 0xDD, malloc_usable_size(block));
    }
    __libc_free(block);
}

static int find_module(struct dl_phdr_info* info, size_t, void* name) {
    if (!strstr(info->dlpi_name, static_cast<const char*>(name))) return 0;
    for (unsigned i = 0; i < info->dlpi_phnum; ++i) {
        const auto& part = info->dlpi_phdr[i];
        if (part.p_type != PT_LOAD || !(part.p_flags & PF_X)) continue;
        module_from = info->dlpi_addr + part.p_vaddr;
        module_to = module_from + part.p_memsz;
    }
    return 1;
}

int putenv(char* setting) {
    using putenv_t = int(char*);
    static auto* next = reinterpret_cast<putenv_t*>(dlsym(RTLD_NEXT, "putenv"));
    constexpr const char* control = "FAIL_AT=";
    if (strncmp(setting, control, strlen(control)) != 0) return next(setting);
    const char* module = getenv("FAIL_MODULE");
    if (module_from == module_to && module) dl_iterate_phdr(find_module, const_cast<char*>(module));
    char number[32];
    snprintf(number, sizeof number, "%ld", failed);
    setenv("FAILED", number, 1);
    snprintf(number, sizeof number, "%ld", module_from == module_to ? -1 : live);
    setenv("LIVE", number, 1);
    char* end;
    fail_at = strtol(setting + strlen(control), &end, 10);
    all_after = *end == '+';
    calls = failed = 0;
    return next(setting);
}
}

__attribute__((destructor)) static void tell() {
    if (live) _exit(3);
}
