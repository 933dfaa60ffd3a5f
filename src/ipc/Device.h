// The driver's devices, as a seam.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace brennvar {

// One open device. Closed by the destructor.
class Device {
public:
    virtual ~Device() = default;
    // One control request without input. The number of bytes that the driver put into output, never more than
    // output.size() whatever the driver says; nothing when the request failed.
    [[nodiscard]] virtual std::optional<std::size_t> Read(std::uint32_t code, std::span<std::byte> output) = 0;
    // One control request whose block is input and output at once; waits until the driver has completed it.
    // False when it failed.
    [[nodiscard]] virtual bool Exchange(std::uint32_t code, std::span<std::byte> block) = 0;
};

class DeviceOpener {
public:
    virtual ~DeviceOpener() = default;
    // Read and write, shared, existing only. Null when the device is not there.
    [[nodiscard]] virtual std::unique_ptr<Device> Open(const std::string& name) = 0;
};

}  // namespace brennvar
