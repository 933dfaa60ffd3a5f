// The driver's devices for tests: canned answers per request code, and a record of what was asked.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <vector>

#include "ipc/Device.h"

namespace brennvar::test {

class FakeDriver final : public DeviceOpener {
public:
    using Bytes = std::vector<std::byte>;
    bool isPresent = true;
    std::size_t boast = 0;                   // so many bytes more than there are it claims to have written
    std::map<std::uint32_t, Bytes> answers;  // to Read; a code that is not here fails
    std::function<bool(std::uint32_t code, std::span<std::byte> block)> exchange;  // to Exchange; none: it fails

    std::vector<std::string> opened;
    std::vector<std::size_t> requests;  // the sizes of the buffers
    int openCount = 0;                  // devices that are open now

    [[nodiscard]] std::unique_ptr<Device> Open(const std::string& name) override {
        opened.push_back(name);
        if (!isPresent) return nullptr;
        return std::make_unique<OpenDevice>(*this);
    }

private:
    class OpenDevice final : public Device {
    public:
        explicit OpenDevice(FakeDriver& driver) : m_driver(driver) { ++m_driver.openCount; }
        ~OpenDevice() override { --m_driver.openCount; }

        [[nodiscard]] std::optional<std::size_t> Read(std::uint32_t code, std::span<std::byte> output) override {
            m_driver.requests.push_back(output.size());
            const auto answer = m_driver.answers.find(code);
            if (answer == m_driver.answers.end()) return std::nullopt;
            const std::size_t size = std::min(answer->second.size(), output.size());
            if (size > 0) std::memcpy(output.data(), answer->second.data(), size);
            return size + m_driver.boast;
        }

        [[nodiscard]] bool Exchange(std::uint32_t code, std::span<std::byte> block) override {
            m_driver.requests.push_back(block.size());
            return m_driver.exchange && m_driver.exchange(code, block);
        }

    private:
        FakeDriver& m_driver;
    };
};

}  // namespace brennvar::test
