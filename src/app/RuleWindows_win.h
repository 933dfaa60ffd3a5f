// What is done about a connection wherever one is seen: the dialog that tells what decides about it, made when it
// is first wanted, and the editor of a rule for it. User-interface thread only.
#pragma once

#include <memory>
#include <optional>

#include "advanced/WhyDialog_win.h"
#include "app/Session_win.h"
#include "base/Windows_win.h"
#include "dialogs/RuleTools.h"
#include "lists/PageOwner.h"

namespace brennvar {

class RuleWindows final : public RuleTools {
public:
    // Borrowed.
    RuleWindows(Session& session, PageOwner& pages) : m_session(session), m_pages(pages) {}

    // The control center, which gets the commands of these from now on and hands them to OnCommand; null: it goes,
    // and nothing is opened any more.
    void Attach(HWND window);
    bool OnCommand(int id);

    // Both by a command, which comes when the handler that asks is over.
    void MakeRule(const TrafficFacts& facts) override;
    void Explain(const TrafficFacts& facts) override;

    // Takes the dialog from the screen.
    void Close();

private:
    void Post(int command) const;

    Session& m_session;
    PageOwner& m_pages;
    HWND m_window = nullptr;
    std::unique_ptr<WhyDialog> m_why;  // null: never wanted so far
    // Of the next command.
    std::optional<TrafficFacts> m_toMake;
    std::optional<TrafficFacts> m_toExplain;
};

}  // namespace brennvar
