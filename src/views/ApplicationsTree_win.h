// The list of the Applications page: name with icon, path, action. What a click or key in it means, how the action
// looks, and the balloon with a row's details.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "base/Handles_win.h"
#include "config/Language.h"
#include "rules/ApplicationRules.h"
#include "tree/Tree_win.h"
#include "ui/Balloon_win.h"

namespace brennvar {

class CApplicationsTree final : public CTree {
public:
    static constexpr int kNameColumn = 0, kPathColumn = 1, kActionColumn = 2;

    // The fonts are borrowed.
    explicit CApplicationsTree(const CFonts& fonts);

    // What the user did. All have to be there.
    struct Wishes {
        std::function<void(int row)> otherAction;  // a click in the action cell, or Space
        std::function<void(int row)> details;      // a click in the name cell, a double click, or Enter
        std::function<void()> removal;             // of the selected rows: Del
    };
    Wishes wishes;

    // Columns for Create.
    [[nodiscard]] static std::vector<TreeColumn> Columns(const Language& language);
    // The action as a word in its colour.
    [[nodiscard]] static TreeCell ActionCell(ApplicationState state, const Language& language);

    // Points at the row's name. Closes by itself: after a time, and with whatever the user does in the list.
    void ShowBalloon(int row, const BalloonTexts& texts, HICON icon);
    void HideBalloon() { m_balloon.Hide(); }

private:
    void OnDestroy() override;
    void OnSize(int width, int height) override;
    void OnLeftDown(POINT point, UINT keys) override;
    void OnDoubleClick(POINT point, UINT keys) override;
    void OnWheel(int delta, bool isHorizontal) override;
    bool OnKeyDown(UINT key) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] bool ClickCell(int row, int column);

    CBalloon m_balloon;
    UniqueIcon m_balloonIcon;  // a copy: the balloon stays longer than a list's icon may
};

}  // namespace brennvar
