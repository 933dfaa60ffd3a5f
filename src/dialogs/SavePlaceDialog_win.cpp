#include "dialogs/SavePlaceDialog_win.h"

#include <commdlg.h>

#include <algorithm>
#include <array>
#include <string>

namespace brennvar {
namespace {

constexpr std::size_t kLongestPath = 1024;

// "CSV (*.csv)", "*.csv" and so on, each with a zero behind it and one more at the end.
std::string FilterOf(const std::vector<SaveFileType>& types) {
    std::string filter;
    for (const SaveFileType& type : types) {
        const std::string pattern = "*." + type.extension;
        filter.append(type.label).append(" (").append(pattern).append(")").push_back('\0');
        filter.append(pattern).push_back('\0');
    }
    return filter;
}

}  // namespace

std::optional<SavePlace> AskSavePlace(HWND owner, const SaveWish& wish) {
    if (wish.types.empty()) return std::nullopt;
    const std::string filter = FilterOf(wish.types);
    std::array<char, kLongestPath> path{};
    wish.name.copy(path.data(), path.size() - 1);
    OPENFILENAMEA asked{};
    asked.lStructSize = sizeof asked;
    asked.hwndOwner = owner;
    asked.lpstrFilter = filter.c_str();
    asked.nFilterIndex = 1;
    asked.lpstrFile = path.data();
    asked.nMaxFile = static_cast<DWORD>(path.size());
    asked.lpstrTitle = wish.title.c_str();
    asked.lpstrDefExt = wish.types.front().extension.c_str();
    asked.Flags = OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_EXPLORER;
    if (wish.asksToReplace) asked.Flags |= OFN_OVERWRITEPROMPT;
    if (!::GetSaveFileNameA(&asked)) return std::nullopt;
    const auto chosen = static_cast<std::size_t>(std::max<DWORD>(asked.nFilterIndex, 1)) - 1;
    return SavePlace{.path = path.data(), .type = std::min(chosen, wish.types.size() - 1)};
}

std::optional<std::string> AskOpenPath(HWND owner, const OpenWish& wish) {
    const std::string filter = FilterOf(wish.types);
    std::array<char, kLongestPath> path{};
    wish.name.copy(path.data(), path.size() - 1);
    OPENFILENAMEA asked{};
    asked.lStructSize = sizeof asked;
    asked.hwndOwner = owner;
    asked.lpstrFilter = filter.c_str();
    asked.nFilterIndex = 1;
    asked.lpstrFile = path.data();
    asked.nMaxFile = static_cast<DWORD>(path.size());
    asked.lpstrTitle = wish.title.c_str();
    asked.Flags = OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_EXPLORER;
    if (!::GetOpenFileNameA(&asked)) return std::nullopt;
    return path.data();
}

}  // namespace brennvar
