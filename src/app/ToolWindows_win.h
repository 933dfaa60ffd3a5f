// The dialogs of the network tools: one of each kind, beside the control center, made when it is first wanted.
// User-interface thread only.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/Windows_win.h"
#include "config/Language.h"
#include "dialogs/AddressTools.h"
#include "tools/ToolDialog_win.h"
#include "ui/Fonts_win.h"

namespace brennvar {

class ToolWindows final : public AddressTools {
public:
    // Opens an address of the web in the browser; waits for nothing.
    using OpenLink = std::function<void(const std::string& address)>;

    // All but the last are borrowed.
    ToolWindows(const CFonts& fonts, const Language& language, RuleTools& rules, OpenLink openLink)
        : m_fonts(fonts), m_language(language), m_rules(rules), m_openLink(std::move(openLink)) {}

    // The control center, which gets the commands of the tools from now on and hands them to OnCommand; null: it
    // goes, and nothing is opened any more.
    void Attach(HWND window) { m_window = window; }
    bool OnCommand(int id);

    // Address by the command of the tool, which comes when the handler that asks is over.
    void OpenTool(AddressTool tool, const std::string& hostOrAddress) override;

    void MakeRule(const TrafficFacts& facts) override { m_rules.MakeRule(facts); }
    void Explain(const TrafficFacts& facts) override { m_rules.Explain(facts); }

    // One is on the screen, or still ends.
    [[nodiscard]] bool IsAnyOpen() const;
    // A window of one of these dialogs, or of a dialog over one.
    [[nodiscard]] bool Owns(HWND window) const;
    // Takes them from the screen. What is at work is asked to stop, and waited for when this object goes (100 ms).
    void CloseAll();

private:
    static constexpr std::size_t kKinds = 2;  // trace route and whois

    [[nodiscard]] ToolDialog& Dialog(AddressTool tool);

    const CFonts& m_fonts;
    const Language& m_language;
    RuleTools& m_rules;
    const OpenLink m_openLink;
    HWND m_window = nullptr;
    std::array<std::unique_ptr<ToolDialog>, kKinds> m_dialogs;  // by AddressTool; null: never wanted so far
    std::array<std::string, kKinds> m_wanted;                   // what the next command is to ask about
};

}  // namespace brennvar
