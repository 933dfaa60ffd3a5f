// A window that remembers what it was told to show.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/SessionView.h"

namespace brennvar::test {

class FakeSessionView final : public SessionView {
public:
    bool isSeen = true;
    std::optional<TrafficIncrease> traffic;
    std::uint64_t milliseconds = 0;
    std::vector<std::optional<ConnectionCounts>> counts;
    std::vector<ModeDisplay> modes;
    std::vector<ProtectionMode> idleModes;
    std::vector<TrayNotice> notices;

    int forwards = 0, leaves = 0;

    [[nodiscard]] bool IsSeen() const override { return isSeen; }
    void ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t time) override {
        traffic = increase;
        milliseconds = time;
    }
    void ShowService(PeerState) override {}
    void ShowConnections(const std::optional<ConnectionCounts>& count) override { counts.push_back(count); }
    void ShowMode(const ModeDisplay& display) override { modes.push_back(display); }
    void ShowIdleMode(ProtectionMode mode) override { idleModes.push_back(mode); }
    void ShowNotice(const TrayNotice& notice) override { notices.push_back(notice); }
    void BringForward() override { ++forwards; }
    void LeaveProgram() override { ++leaves; }
};

}  // namespace brennvar::test
