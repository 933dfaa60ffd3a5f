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

// What both of Windows' dialogs are told, and where they write the path.
class FileQuestion {
public:
    FileQuestion(HWND owner, const std::string& title, const std::string& name,
                 const std::vector<SaveFileType>& types)
        : m_title(title), m_filter(FilterOf(types)) {
        name.copy(m_path.data(), m_path.size() - 1);
        asked.lStructSize = sizeof asked;
        asked.hwndOwner = owner;
        asked.lpstrFilter = m_filter.c_str();
        asked.nFilterIndex = 1;
        asked.lpstrFile = m_path.data();
        asked.nMaxFile = static_cast<DWORD>(m_path.size());
        asked.lpstrTitle = m_title.c_str();
        asked.Flags = OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_EXPLORER;
    }
    FileQuestion(const FileQuestion&) = delete;
    FileQuestion& operator=(const FileQuestion&) = delete;

    [[nodiscard]] std::string Path() const { return m_path.data(); }

    OPENFILENAMEA asked{};  // refers to the texts below

private:
    const std::string m_title;
    const std::string m_filter;
    std::array<char, kLongestPath> m_path{};
};

}  // namespace

std::optional<SavePlace> AskSavePlace(HWND owner, const SaveWish& wish) {
    if (wish.types.empty()) return std::nullopt;
    FileQuestion question(owner, wish.title, wish.name, wish.types);
    OPENFILENAMEA& asked = question.asked;
    asked.lpstrDefExt = wish.types.front().extension.c_str();
    if (wish.asksToReplace) asked.Flags |= OFN_OVERWRITEPROMPT;
    if (!::GetSaveFileNameA(&asked)) return std::nullopt;
    const auto chosen = static_cast<std::size_t>(std::max<DWORD>(asked.nFilterIndex, 1)) - 1;
    return SavePlace{.path = question.Path(), .type = std::min(chosen, wish.types.size() - 1)};
}

std::optional<std::string> AskOpenPath(HWND owner, const OpenWish& wish) {
    FileQuestion question(owner, wish.title, wish.name, wish.types);
    if (!::GetOpenFileNameA(&question.asked)) return std::nullopt;
    return question.Path();
}

}  // namespace brennvar
