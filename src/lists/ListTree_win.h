// The list of a list page: a tree that tells of the keys that may be actions, and the balloon with a row's details.
#pragma once

#include <functional>
#include <optional>

#include "base/Handles_win.h"
#include "lists/ListModel.h"
#include "tree/Tree_win.h"
#include "ui/Balloon_win.h"

namespace brennvar {

class CListTree final : public CTree {
public:
    // The fonts are borrowed.
    explicit CListTree(const CFonts& fonts) : m_balloon(fonts) {}

    // Space without Ctrl and Shift, Del, Ctrl with an arrow; Enter is an event of every tree. True: it was an
    // action. Has to be there.
    std::function<bool(ListKey key)> keyPressed;

    // Points at the row's first cell. Closes by itself: after a time, and with whatever the user does in the list.
    // The icon is copied.
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

    CBalloon m_balloon;
    UniqueIcon m_balloonIcon;  // the balloon stays longer than a list's icon may
};

}  // namespace brennvar
