// What every window needs that asks the user of its own accord: buttons that do not work at first, so that nobody
// answers by accident, and a place above all other windows, within the work area, clear of other questions.
// User-interface thread.
#pragma once

#include <vector>

#include "base/Windows_win.h"
#include "ui/BalloonPlace.h"

namespace brennvar {

// False while this thread shows a menu, which is closed, or moves a window: a question would get in their way.
[[nodiscard]] bool IsTimeToAsk();

class QuestionStand {
public:
    // How long the buttons stay disabled: longer than a click or a key that was meant for another window takes.
    static constexpr UINT kButtonDelay = 700;  // ms
    static constexpr UINT_PTR kButtonTimer = 1;
    // How often it is looked whether the question has been covered or left behind.
    static constexpr UINT kPlacePeriod = 250;  // ms
    static constexpr UINT_PTR kPlaceTimer = 2;

    // Milliseconds that run evenly; tests let them pass.
    static inline ULONGLONG (*s_tickCount)() = [] { return ::GetTickCount64(); };

    QuestionStand();
    QuestionStand(const QuestionStand&) = delete;
    QuestionStand& operator=(const QuestionStand&) = delete;
    ~QuestionStand();

    // Where a window of this size opens.
    [[nodiscard]] RECT OpeningPlace(SIZE size) const;
    // When the window has its controls; the owner may bring itself over it. The buttons are disabled.
    void Begin(HWND window, HWND owner, std::vector<int> buttons);
    void OnTimer(UINT_PTR id);
    // A command may be posted by anybody; it counts as little as a click on a disabled button.
    [[nodiscard]] bool ButtonsWork() const { return m_buttonsWork; }

private:
    // What can bring another window over this one.
    struct Surroundings {
        HWND foreground = nullptr;
        bool isOwnerVisible = false;
        bool isOwnerIconic = false;
        friend bool operator==(const Surroundings&, const Surroundings&) = default;
    };

    void SetButtonsEnabled(bool enabled);
    void KeepInSight();
    void KeepInWorkArea() const;
    // Of the other questions on the screen.
    [[nodiscard]] std::vector<PixelBox> OtherPlaces() const;
    [[nodiscard]] RECT FreePlace(SIZE size, const RECT& area) const;

    HWND m_window = nullptr;
    HWND m_owner = nullptr;
    std::vector<int> m_buttons;
    bool m_buttonsWork = false;
    ULONGLONG m_begin = 0;  // by s_tickCount
    Surroundings m_surroundings;
    int m_raisesLeft;
};

}  // namespace brennvar
