#include "config/Skin.h"

#include <charconv>
#include <utility>

namespace brennvar {

Skin::Skin(std::unique_ptr<const IniSource> file, std::string folder)
    : m_file(std::move(file)), m_folder(std::move(folder)) {}

std::uint32_t Skin::ReadPart(const std::string& key, int fallback) const {
    const std::string text = m_file ? m_file->Read("Color", key, "") : "";
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isPart = error == std::errc() && end == text.data() + text.size() && value >= 0 && value <= 255;
    return static_cast<std::uint32_t>(isPart ? value : fallback);
}

std::uint32_t Skin::GetSkinColor(const std::string& name, int defaultRed, int defaultGreen, int defaultBlue) const {
    return ReadPart(name + "_R", defaultRed) + 256 * ReadPart(name + "_G", defaultGreen) +
           65536 * ReadPart(name + "_B", defaultBlue);
}

std::string Skin::GetSkinImagePath(const std::string& key, const std::string& defaultFile) const {
    std::string name = m_file ? m_file->Read("Image", key, defaultFile) : defaultFile;
    // Pictures lie in the skin's folder and nowhere else.
    if (name.empty() || name.find("..") != std::string::npos || name.find(':') != std::string::npos) {
        name = defaultFile;
    }
    return m_folder + '\\' + name;
}

}  // namespace brennvar
