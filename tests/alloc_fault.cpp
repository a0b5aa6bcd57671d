// Lets the allocations of the program that it is linked into fail. The orders come from the
// environment:
//   SLOTRPT_FAIL=N    the N-th allocation fails, counted from 1
//   SLOTRPT_FAIL=N+   and so do all that follow it
//   SLOTRPT_FAIL=0    none fails, and their number is printed on standard error in the end

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// The names under which the C library's own allocator can still be called.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);

namespace {
const char* g_orders = nullptr;  // null until the program itself is about to start
int g_failAt = 0, g_calls = 0;

bool fails() {
    if (!g_orders) return false;
    ++g_calls;
    const bool isChosen = g_calls == g_failAt || (g_calls > g_failAt && std::strchr(g_orders, '+'));
    if (isChosen) errno = ENOMEM;
    return isChosen;
}

__attribute__((constructor)) void start() {
    g_orders = std::getenv("SLOTRPT_FAIL");
    g_failAt = g_orders ? std::atoi(g_orders) : 0;
}

__attribute__((destructor)) void finish() {
    if (g_failAt == 0) std::fprintf(stderr, "%d", g_calls);
}
}  // namespace

extern "C" void* malloc(std::size_t size) { return fails() ? nullptr : __libc_malloc(size); }
extern "C" void* calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : __libc_calloc(count, size);
}
