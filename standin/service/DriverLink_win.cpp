#include "service/DriverLink_win.h"

// Needs what Windows_win.h brings.
#include <winsvc.h>

#include "ipc/DriverRecords.h"

namespace brennvar::standin {
namespace {

constexpr char kServiceName[] = "brennvarfw";
// A registration disappears only when its last user lets go of it.
constexpr int kCreateAttempts = 100;
constexpr DWORD kCreatePauseMilliseconds = 20;

struct ServiceHandleTraits {
    using Type = SC_HANDLE;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::CloseServiceHandle(handle); }
};
using UniqueService = UniqueHandle<ServiceHandleTraits>;

UniqueService OpenManager() {
    return UniqueService(::OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
}

void StopAndDelete(SC_HANDLE manager) {
    const UniqueService service(::OpenServiceA(manager, kServiceName, SERVICE_ALL_ACCESS));
    if (!service) return;
    SERVICE_STATUS status{};
    ::ControlService(service.Get(), SERVICE_CONTROL_STOP, &status);
    ::DeleteService(service.Get());
}

UniqueService Create(SC_HANDLE manager, const std::string& driverFile) {
    for (int attempt = 0; attempt < kCreateAttempts; ++attempt) {
        UniqueService service(::CreateServiceA(manager, kServiceName, kServiceName, SERVICE_ALL_ACCESS,
                                               SERVICE_KERNEL_DRIVER, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL,
                                               driverFile.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
        const DWORD error = ::GetLastError();
        if (service || (error != ERROR_SERVICE_EXISTS && error != ERROR_SERVICE_MARKED_FOR_DELETE)) return service;
        ::Sleep(kCreatePauseMilliseconds);
    }
    ::SetLastError(ERROR_SERVICE_MARKED_FOR_DELETE);
    return {};
}

}  // namespace

DWORD DriverLink::Load(const std::string& driverFile) {
    const UniqueService manager = OpenManager();
    if (!manager) return ::GetLastError();
    StopAndDelete(manager.Get());
    const UniqueService service = Create(manager.Get(), driverFile);
    if (!service) return ::GetLastError();
    m_registered = true;
    if (!::StartServiceA(service.Get(), 0, nullptr)) return ::GetLastError();
    m_device.Reset(::CreateFileA(kDriverDeviceName, GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    return m_device ? ERROR_SUCCESS : ::GetLastError();
}

void DriverLink::Unload() {
    m_device.Reset();
    if (!m_registered) return;
    m_registered = false;
    if (const UniqueService manager = OpenManager()) StopAndDelete(manager.Get());
}

bool DriverLink::Send(std::uint32_t request, std::span<const std::byte> input) const {
    DWORD returned = 0;
    // DeviceIoControl takes its input as not const, but METHOD_BUFFERED only reads it.
    return m_device && ::DeviceIoControl(m_device.Get(), request, const_cast<std::byte*>(input.data()),
                                         static_cast<DWORD>(input.size()), nullptr, 0, &returned, nullptr) != 0;
}

}  // namespace brennvar::standin
