#include "ipc/Device_win.h"

#include <algorithm>

#include "base/Handles_win.h"

namespace brennvar {
namespace {

// How long a driver may take until its request is looked at again.
constexpr DWORD kPendingPollMs = 100;

// The event of the thread's exchanges, of which one is under way at a time, and each resets it: the driver is asked
// ten times a second, and an event for each time would be a good part of what that takes. Null without memory.
HANDLE ExchangeEvent() {
    static thread_local UniqueEvent s_event;
    if (!s_event) s_event.Reset(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
    return s_event.Get();
}

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
        OVERLAPPED overlapped{};
        overlapped.hEvent = ExchangeEvent();
        if (!overlapped.hEvent) return false;
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
