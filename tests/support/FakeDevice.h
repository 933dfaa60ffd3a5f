// The driver's devices for tests: canned answers per request code, and a record of what was asked.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "ipc/Device.h"

namespace brennvar::test {

class FakeDriver final : public DeviceOpener {
public:
    using Bytes = std::vector<std::byte>;
    struct Request {
        std::string device;
        std::uint32_t code;
        std::size_t size;  // of the buffer, in bytes
    };

    bool isPresent = true;
    std::map<std::uint32_t, Bytes> answers;  // to Read; a code that is not here fails
    std::function<bool(std::uint32_t code, std::span<std::byte> block)> exchange;  // to Exchange; none: it fails

    std::vector<std::string> opened;
    std::vector<Request> requests;
    int openCount = 0;  // devices that are open now

    [[nodiscard]] std::unique_ptr<Device> Open(const std::string& name) override {
        opened.push_back(name);
        if (!isPresent) return nullptr;
        return std::make_unique<OpenDevice>(*this, name);
    }

private:
    class OpenDevice final : public Device {
    public:
        OpenDevice(FakeDriver& driver, std::string name) : m_driver(driver), m_name(std::move(name)) {
            ++m_driver.openCount;
        }
        ~OpenDevice() override { --m_driver.openCount; }

        [[nodiscard]] std::optional<std::size_t> Read(std::uint32_t code, std::span<std::byte> output) override {
            m_driver.requests.push_back({.device = m_name, .code = code, .size = output.size()});
            const auto answer = m_driver.answers.find(code);
            if (answer == m_driver.answers.end()) return std::nullopt;
            const std::size_t size = std::min(answer->second.size(), output.size());
            if (size > 0) std::memcpy(output.data(), answer->second.data(), size);
            return size;
        }

        [[nodiscard]] bool Exchange(std::uint32_t code, std::span<std::byte> block) override {
            m_driver.requests.push_back({.device = m_name, .code = code, .size = block.size()});
            return m_driver.exchange && m_driver.exchange(code, block);
        }

    private:
        FakeDriver& m_driver;
        std::string m_name;
    };
};

}  // namespace brennvar::test
