// A preload: engines open extensions with RTLD_DEEPBIND, which sanitizers refuse.
#include <dlfcn.h>

extern "C" void* dlopen(const char* file, int flags) noexcept {
    using dlopen_t = void*(const char*, int);
    static auto* next = reinterpret_cast<dlopen_t*>(dlsym(RTLD_NEXT, "dlopen"));
    return next(file, flags & ~RTLD_DEEPBIND);
}
