// A folder for one test, removed with all that is in it when the test ends.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace brennvar::test {

class TempFolder {
public:
    TempFolder() {
        static std::atomic<int> counter = 0;
        // Test processes run side by side: the clock tells them apart, the counter the folders of one process.
        const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
        m_path = std::filesystem::temp_directory_path() /
                 ("brennvar-test-" + std::to_string(ticks) + "-" + std::to_string(counter++));
        std::filesystem::create_directories(m_path);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] std::string Path() const { return m_path.string(); }
    // The path of a file in this folder, whether it exists or not.
    [[nodiscard]] std::string File(std::string_view name) const { return (m_path / name).string(); }

    // Makes the folders that the name speaks of.
    std::string Write(std::string_view name, std::string_view content) const {
        std::string path = File(name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
        return path;
    }
    [[nodiscard]] std::string Read(std::string_view name) const {
        std::ifstream file(File(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path m_path;
};

}  // namespace brennvar::test
