// The advanced rules as they are stored, and every change of them: each asks for the security password, is sent as
// one batch, and when the service has had time to write (kWritingPause) the file is read again. What is stored is
// what is shown. User-interface thread only; nothing here waits, but for the editor.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "advanced/RuleEditor.h"
#include "base/Refreshed.h"
#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "commands/Commander.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

// One reading, which never changes.
struct StoredRules {
    bool isReadable = true;           // else the file is there, and could not be read: no rules are known
    std::vector<AdvancedRule> rules;  // in the order of the file
};

// Who shows them.
class AdvancedRulesWatcher {
public:
    virtual ~AdvancedRulesWatcher() = default;
    // They have been read again.
    virtual void OnRulesRead() = 0;
    // A change was sent and is not in what was read since: the service was not there, or has refused it.
    virtual void OnChangeLost() = 0;
};

class AdvancedRules {
public:
    // Reads the file, on the queue; blocks.
    using Load = std::function<std::optional<std::vector<AdvancedRule>>()>;
    // All are borrowed for the life of the program.
    struct Parts {
        TaskQueue& reads;
        Load load;
        Commander& commander;
        RuleEditor& editor;
    };
    explicit AdvancedRules(Parts parts);
    AdvancedRules(const AdvancedRules&) = delete;
    AdvancedRules& operator=(const AdvancedRules&) = delete;

    // One at a time; null: nobody any more.
    void Watch(AdvancedRulesWatcher* watcher) { m_watcher = watcher; }
    // As read last; null: not read yet.
    [[nodiscard]] const std::shared_ptr<const StoredRules>& Stored() const { return m_stored; }
    void Read();

    // The password, the editor with these fields, then commands 4 and 7. The service puts a new rule behind the
    // others.
    void Add(const AdvancedRule& first);
    // The password, the editor, then commands 5 and 7. When the rule has gone or has become another one meanwhile,
    // the user is told and asked what to do.
    void Edit(std::uint32_t id);
    void SetEnabled(std::span<const std::uint32_t> ids, bool isEnabled);  // 5 for each that is otherwise, then 7
    void Delete(std::span<const std::uint32_t> ids);                      // 6 for each, then 7
    // So many places towards the end, or with a negative number towards the beginning: 31 or 30 for each place of
    // each rule, then 7. Rules that move together keep their order, and stop at the first or the last place.
    void Move(std::span<const std::uint32_t> ids, int places);

private:
    const Parts m_parts;
    AdvancedRulesWatcher* m_watcher = nullptr;
    std::shared_ptr<const StoredRules> m_stored;
    WhileAlive m_alive;
};

}  // namespace brennvar
