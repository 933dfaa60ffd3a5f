// A data folder for one test, filled by the names that the program uses: "\Rules\rules.conf". Where a backslash is
// an ordinary character, the whole name becomes that of one file; it lies within the temporary folder all the same.
#pragma once

#include "support/TempFolder.h"

namespace brennvar::test {

class DataFolder {
public:
    DataFolder() { std::filesystem::create_directories(Path()); }
    [[nodiscard]] std::string Path() const { return m_folder.File("data"); }
    [[nodiscard]] std::string File(std::string_view name) const { return Path() + std::string(name); }
    std::string Write(std::string_view name, std::string_view content) const {
        return m_folder.Write("data" + std::string(name), content);
    }

private:
    TempFolder m_folder;
};

}  // namespace brennvar::test
