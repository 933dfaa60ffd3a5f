// The wallpaper in the registry of the current user. Used on one thread.
#pragma once

#include <optional>
#include <string>

#include "base/Handles_win.h"
#include "prompts/WallpaperWatch.h"

namespace brennvar {

class WinWallpaperValue final : public WallpaperValue {
public:
    static constexpr char kKey[] = R"(Software\Microsoft\Internet Explorer\Desktop\General)";

    // Watches from now on. stop is an event, borrowed, that ends every wait. The key is the user's own: where it is
    // missing it is not made, and the nearest key above it is watched until it comes.
    explicit WinWallpaperValue(HANDLE stop, std::string key = kKey);

    [[nodiscard]] bool WaitForChange() override;
    [[nodiscard]] std::optional<std::string> Read() override;
    void Write(const std::string& value) override;
    void Apply(const std::string& value) override;

private:
    // The path of the key, or of the nearest one above it that is there.
    [[nodiscard]] std::string NearestKey() const;
    void Arm();

    const HANDLE m_stop;
    const std::string m_path;
    const UniqueEvent m_changed{::CreateEventA(nullptr, FALSE, FALSE, nullptr)};
    UniqueKey m_watched;
};

}  // namespace brennvar
