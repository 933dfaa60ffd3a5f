// What code that is compiled with -fstack-protector and _FORTIFY_SOURCE links against. The compiler's own library
// does the same, but asks a cryptographic provider for the guard at each start: three DLLs, read before the program
// begins.
#include <cstdint>

#include "base/Windows_win.h"

namespace {

// The second argument of __fastfail: what the report of a crash names as its cause.
constexpr unsigned kFailedStackCookie = 2;
constexpr unsigned kFailedRangeCheck = 8;

// At once: nothing that an overrun may have changed is called.
[[noreturn]] void FailFast(unsigned cause) {
    for (;;) __asm__ volatile("int $0x29" : : "c"(cause) : "memory");
}

}  // namespace

extern "C" {

// RtlGenRandom of advapi32.dll, under the name that it is exported by.
BOOLEAN NTAPI SystemFunction036(PVOID bytes, ULONG count);

// Before the first protected function runs it must be there, and it must not change while one does. A zero byte
// first in memory, so that a text that runs over its end cannot write the guard.
std::uintptr_t __stack_chk_guard = 0x9AF1C36B5D2E7800;

__attribute__((constructor, no_stack_protector)) static void ChooseGuard() {
    std::uintptr_t chosen = 0;
    if (SystemFunction036(&chosen, sizeof chosen)) __stack_chk_guard = chosen & ~std::uintptr_t{0xFF};
}

[[noreturn]] void __stack_chk_fail() {
    FailFast(kFailedStackCookie);
}

[[noreturn]] void __chk_fail() {
    FailFast(kFailedRangeCheck);
}
}
