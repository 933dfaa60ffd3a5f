#include "prompts/WallpaperWatch.h"

#include <algorithm>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

// ".html" is among them. Windows finds files whatever the case of their names.
bool IsWebPage(const std::string& path) {
    std::string lower(path);
    std::transform(lower.begin(), lower.end(), lower.begin(), &AsciiLower);
    return lower.find(".htm") != std::string::npos;
}

}  // namespace

void WallpaperWatch::Run() {
    do {
        Check();
    } while (m_value.WaitForChange());
}

void WallpaperWatch::Check() {
    const std::optional<std::string> value = m_value.Read();
    if (!value) return;
    if (!m_known) m_known = value;
    if (*value == *m_known) return;
    if (!IsWebPage(*value)) {
        m_known = value;
        return;
    }
    m_value.Write(*m_known);
    if (!m_user.Ask({.kind = ActivityRequest::Kind::ChangeWallpaper}).allow) {
        // Whatever has been written meanwhile.
        m_value.Write(*m_known);
        return;
    }
    m_known = value;
    m_value.Write(*value);
    m_value.Apply(*value);
    m_waits.Sleep(kPause);
}

}  // namespace brennvar
