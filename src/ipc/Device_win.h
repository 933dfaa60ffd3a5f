// The driver's devices through CreateFile and DeviceIoControl.
#pragma once

#include "ipc/Device.h"

namespace brennvar {

class WinDeviceOpener final : public DeviceOpener {
public:
    [[nodiscard]] std::unique_ptr<Device> Open(const std::string& name) override;
};

}  // namespace brennvar
