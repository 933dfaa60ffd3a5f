// The service's end of the driver: loads brennvarfw.sys through the service control manager, feeds it, unloads it.
#pragma once

#include <span>
#include <string>

#include "base/Bytes.h"
#include "base/Handles_win.h"

namespace brennvar::standin {

class DriverLink {
public:
    DriverLink() = default;
    DriverLink(const DriverLink&) = delete;
    DriverLink& operator=(const DriverLink&) = delete;
    ~DriverLink() { Unload(); }

    // Registers the driver file as a service, starts it and opens the feeding device. A driver that an earlier run
    // left behind is replaced. Yields 0 or the system's error code.
    [[nodiscard]] DWORD Load(const std::string& driverFile);
    // Stops the driver and removes its registration.
    void Unload();

    // One feed request (driver/DriverFeed.h) without an answer. False when the driver refuses or is not loaded.
    [[nodiscard]] bool Send(std::uint32_t request, std::span<const std::byte> input) const;

private:
    UniqueFile m_device;
    bool m_registered = false;
};

}  // namespace brennvar::standin
