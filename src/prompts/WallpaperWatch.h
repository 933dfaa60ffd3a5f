// Keeps programs from making a web page of the desktop's wallpaper without the user's consent. A thread of its own
// runs it, since it reads and writes the registry, waits for the user, and pauses.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "prompts/ActivityRequest.h"

namespace brennvar {

// The user's wallpaper. A value has at most 260 characters.
class WallpaperValue {
public:
    virtual ~WallpaperValue() = default;
    // Returns when something may have changed since the last call; false when the program stops.
    [[nodiscard]] virtual bool WaitForChange() = 0;
    // Nothing when there is none, or it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> Read() = 0;
    virtual void Write(const std::string& value) = 0;
    // Has the desktop show it.
    virtual void Apply(const std::string& value) = 0;
};

class WallpaperWatch {
public:
    // After a change that the user has agreed to: the shell writes the value more than once.
    static constexpr std::chrono::milliseconds kPause{3000};

    // All are borrowed. The clock's waits end early when the program stops.
    WallpaperWatch(WallpaperValue& value, ActivityUser& user, Clock& waits)
        : m_value(value), m_user(user), m_waits(waits) {}

    // Looks once, and after every change, until the program stops.
    void Run();
    void Check();

private:
    WallpaperValue& m_value;
    ActivityUser& m_user;
    Clock& m_waits;
    std::optional<std::string> m_known;
};

}  // namespace brennvar
