#include "base/TemporaryFolder_win.h"

#include <array>

#include "base/Windows_win.h"

namespace brennvar {

std::string TemporaryFolder() {
    std::array<char, MAX_PATH + 1> folder{};
    const DWORD length = ::GetTempPathA(static_cast<DWORD>(folder.size()), folder.data());
    return length < folder.size() ? std::string(folder.data(), length) : std::string();
}

}  // namespace brennvar
