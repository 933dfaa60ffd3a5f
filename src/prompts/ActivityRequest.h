// What the user is asked by other threads, and what the answer is.
#pragma once

#include <string>

namespace brennvar {

struct ActivityRequest {
    enum class Kind {
        WriteToProcess,
        StartBrowser,
        ChangeAppInit,
        ChangeWallpaper,
    };
    Kind kind = Kind::WriteToProcess;
    // Of the first two kinds.
    std::string actingPath{};
    std::string targetPath{};
    friend bool operator==(const ActivityRequest&, const ActivityRequest&) = default;
};

struct ActivityAnswer {
    bool allow = false;
    bool trust = false;  // do not ask for this program again; only with allow
    friend bool operator==(const ActivityAnswer&, const ActivityAnswer&) = default;
};

// What the threads that serve requests want of the user-interface thread. Not called on that one.
class ActivityUser {
public:
    virtual ~ActivityUser() = default;
    // Waits for the user, however long that takes. When the program leaves, and when the question could not be
    // shown, the answer is no.
    [[nodiscard]] virtual ActivityAnswer Ask(const ActivityRequest& request) = 0;
    // Returns when the service has been told to trust the program, or that was given up, or has taken too long.
    virtual void Trust(const std::string& path) = 0;
    // Both return at once.
    virtual void BringForward() = 0;
    virtual void LeaveProgram() = 0;
};

}  // namespace brennvar
