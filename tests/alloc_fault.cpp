// Lets the allocations of a program fail. It is preloaded into the program, and takes its orders
// from the environment:
//   SLOTRPT_FAIL_AT=N    the N-th allocation fails, counted from 1
//   SLOTRPT_FAIL_ON=1    and so do all that follow it
//   SLOTRPT_COUNT=FILE   the number of allocations is written to this file in the end

#include <cerrno>
#include <cstdio>
#include <cstdlib>

// What the C library keeps its own allocator under.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);

namespace {
int g_calls = 0, g_failAt = 0;
bool g_failOn = false, g_counting = false;

bool fails() {
    if (!g_counting) return false;  // the dynamic linker is still at work
    ++g_calls;
    const bool fail = g_failAt != 0 && (g_calls == g_failAt || (g_failOn && g_calls > g_failAt));
    if (fail) errno = ENOMEM;
    return fail;
}

__attribute__((constructor)) void start() {
    const char *at = std::getenv("SLOTRPT_FAIL_AT"), *on = std::getenv("SLOTRPT_FAIL_ON");
    g_failAt = at ? std::atoi(at) : 0;
    g_failOn = on && *on == '1';
    g_counting = true;
}

__attribute__((destructor)) void finish() {
    g_counting = false;
    const char* path = std::getenv("SLOTRPT_COUNT");
    std::FILE* file = path ? std::fopen(path, "w") : nullptr;
    if (file && std::fprintf(file, "%d", g_calls) > 0) std::fclose(file);
}
}  // namespace

extern "C" void* malloc(std::size_t size) { return fails() ? nullptr : __libc_malloc(size); }
extern "C" void* calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : __libc_calloc(count, size);
}
extern "C" void* realloc(void* block, std::size_t size) {
    return fails() ? nullptr : __libc_realloc(block, size);
}
