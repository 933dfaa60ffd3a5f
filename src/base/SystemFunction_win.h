// Functions of Windows that not every version has.
#pragma once

#include <type_traits>

#include "base/Windows_win.h"

namespace brennvar {

// Function is the type of the function itself: FindFunction<decltype(::Beep)>(module, "Beep"). Null when the
// module, which may be null, does not have it.
template <class Function>
[[nodiscard]] Function* FindFunction(HMODULE module, const char* name) {
    static_assert(std::is_function_v<Function>);
    if (!module) return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

}  // namespace brennvar
