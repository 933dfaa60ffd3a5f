#include "ipc/Device_win.h"

#include <algorithm>

#include "base/Handles_win.h"

namespace brennvar {
namespace {

// How long a driver may take until its request is looked at again.
constexpr DWORD kPendingPollMs = 100;

class WinDevice final : public Device {
public:
    explicit WinDevice(UniqueFile device) : m_device(std::move(device)) {}

    [[nodiscard]] std::optional<std::size_t> Read(std::uint32_t code, std::span<std::byte> output) override {
        DWORD returned = 0;
        if (!::DeviceIoControl(m_device.Get(), code, nullptr, 0, output.data(), static_cast<DWORD>(output.size()),
                               &returned, nullptr)) {
            return std::nullopt;
        }
        return std::min<std::size_t>(returned, output.size());
    }

    [[nodiscard]] bool Exchange(std::uint32_t code, std::span<std::byte> block) override {
        const UniqueEvent event(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
        if (!event) return false;
        OVERLAPPED overlapped{};
        overlapped.hEvent = event.Get();
        const auto size = static_cast<DWORD>(block.size());
        DWORD returned = 0;
        // The device is opened without the overlapped flag, so this call normally completes here.
        const BOOL done =
            ::DeviceIoControl(m_device.Get(), code, block.data(), size, block.data(), size, &returned, &overlapped);
        if (!done && ::GetLastError() != ERROR_IO_PENDING) return false;
        while (!HasOverlappedIoCompleted(&overlapped)) ::Sleep(kPendingPollMs);
        return ::GetOverlappedResult(m_device.Get(), &overlapped, &returned, FALSE) != FALSE;
    }

private:
    UniqueFile m_device;
};

}  // namespace

std::unique_ptr<Device> WinDeviceOpener::Open(const std::string& name) {
    UniqueFile device(::CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!device) return nullptr;
    return std::make_unique<WinDevice>(std::move(device));
}

}  // namespace brennvar
