// The real files, but one call fails, or the program ends at it, or somebody holds a file.
#pragma once

#include <functional>

#include "rules/RuleFiles.h"

namespace brennvar::test {

class FailingRuleFiles final : public RuleFiles {
public:
    struct Died {};
    enum class How { Once, FromThenOn, Dies };

    // Calls that change or read something are counted, from 0; the call with this number fails. -1: none.
    int failAt = -1;
    How how = How::Once;
    WriteResult result = WriteResult::Failed;
    int calls = 0;
    std::function<WriteResult(const std::string& from, const std::string& to)>
        whenReplaced;  // instead of the rename
    // Files that cannot be read.
    std::function<bool(const std::string& path)> isHeld = [](const std::string&) { return false; };

    std::optional<std::string> Read(const std::string& path, std::uint64_t limit) override {
        return Fails() || isHeld(path) ? std::nullopt : m_disk.Read(path, limit);
    }
    bool IsMissing(const std::string& path) override { return m_disk.IsMissing(path); }
    std::vector<std::string> List(const std::string& folder) override { return m_disk.List(folder); }
    WriteResult Write(const std::string& path, std::string_view content) override {
        return Fails() ? result : m_disk.Write(path, content);
    }
    WriteResult Replace(const std::string& from, const std::string& to) override {
        if (Fails()) return result;
        if (whenReplaced) {
            if (const auto instead = whenReplaced(from, to); instead != WriteResult::Written) return instead;
        }
        return m_disk.Replace(from, to);
    }
    WriteResult Keep(const std::string& path, const std::string& as) override {
        return Fails() ? result : m_disk.Keep(path, as);
    }
    bool Remove(const std::string& path) override { return !Fails() && m_disk.Remove(path); }
    bool MakeFolder(const std::string& path) override { return !Fails() && m_disk.MakeFolder(path); }
    void RemoveFolder(const std::string& path) override {
        if (!Fails()) m_disk.RemoveFolder(path);
    }
    std::unique_ptr<FolderLock> Lock(const std::string& path) override {
        return Fails() ? nullptr : m_disk.Lock(path);
    }

private:
    bool Fails() {
        const int call = calls++;
        if (failAt < 0 || call < failAt) return false;
        if (how == How::Dies) throw Died{};
        return how == How::FromThenOn || call == failAt;
    }

    DiskRuleFiles m_disk;
};

}  // namespace brennvar::test
