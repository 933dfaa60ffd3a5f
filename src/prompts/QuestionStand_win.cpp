#include "prompts/QuestionStand_win.h"

#include <utility>

#include "prompts/QuestionPlace.h"
#include "ui/Look_win.h"
#include "ui/Paint_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kScreenMargin = 16;
constexpr int kGap = 8;  // between two questions
// At the bottom of a question: its buttons, and the margin below them.
constexpr int kButtonStrip = 64;

// So many times the question is raised when something may have come over it: a desktop can go on putting its
// windows in order for a while, of which no program is told.
constexpr int kRaises = 8;

// Those of this thread.
thread_local std::vector<const QuestionStand*> s_stands;

PixelBox BoxOf(const RECT& rectangle) {
    return {static_cast<int>(rectangle.left), static_cast<int>(rectangle.top), static_cast<int>(rectangle.right),
            static_cast<int>(rectangle.bottom)};
}

}  // namespace

bool IsTimeToAsk() {
    // Their loops would lie below the question's: a menu would get the clicks on its buttons, and could not close
    // before it is answered; a window that is moved would stick to the mouse afterwards.
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    if (!::GetGUIThreadInfo(::GetCurrentThreadId(), &state)) return true;
    if ((state.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE)) != 0) {
        ::EndMenu();
        return false;
    }
    if ((state.flags & GUI_INMOVESIZE) == 0) return true;
    // By the keyboard it could last for ever; the mouse button is released at some time.
    if (::GetAsyncKeyState(VK_LBUTTON) >= 0) ::PostMessageA(state.hwndMoveSize, WM_KEYDOWN, VK_ESCAPE, 0);
    return false;
}

QuestionStand::QuestionStand() : m_raisesLeft(kRaises) {
    s_stands.push_back(this);
}

QuestionStand::~QuestionStand() {
    std::erase(s_stands, this);
}

RECT QuestionStand::OpeningPlace(SIZE size) const {
    return FreePlace(size, MainWorkArea());
}

std::vector<PixelBox> QuestionStand::OtherPlaces() const {
    std::vector<PixelBox> others;
    for (const QuestionStand* const stand : s_stands) {
        RECT place{};
        if (stand == this || !::IsWindowVisible(stand->m_window)) continue;
        if (::GetWindowRect(stand->m_window, &place)) others.push_back(BoxOf(place));
    }
    return others;
}

RECT QuestionStand::FreePlace(SIZE size, const RECT& area) const {
    const PixelBox place = PlaceQuestion({.width = static_cast<int>(size.cx),
                                          .height = static_cast<int>(size.cy),
                                          .margin = Scale(kScreenMargin),
                                          .gap = Scale(kGap),
                                          .buttons = Scale(kButtonStrip)},
                                         BoxOf(area), OtherPlaces());
    return {place.left, place.top, place.right, place.bottom};
}

void QuestionStand::Begin(HWND window, HWND owner, std::vector<int> buttons) {
    m_window = window;
    m_owner = owner;
    m_buttons = std::move(buttons);
    SetButtonsEnabled(false);
    m_begin = s_tickCount();
    ::SetTimer(m_window, kButtonTimer, kButtonDelay, nullptr);
    ::SetTimer(m_window, kPlaceTimer, kPlacePeriod, nullptr);
}

void QuestionStand::SetButtonsEnabled(bool enabled) {
    m_buttonsWork = enabled;
    for (const int id : m_buttons) ::EnableWindow(::GetDlgItem(m_window, id), enabled);
}

void QuestionStand::OnTimer(UINT_PTR id) {
    if (id == kPlaceTimer) KeepInSight();
    if (id != kButtonTimer || m_buttonsWork) return;
    // By the clock: any program can send the timer's message.
    const ULONGLONG shown = s_tickCount() - m_begin;
    if (shown < kButtonDelay) {
        ::SetTimer(m_window, kButtonTimer, static_cast<UINT>(kButtonDelay - shown), nullptr);
        return;
    }
    ::KillTimer(m_window, kButtonTimer);
    SetButtonsEnabled(true);
}

void QuestionStand::KeepInSight() {
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    // A question that is moved stays where the mouse is, and one that is raised would cover a menu.
    constexpr DWORD kHeld = GUI_INMOVESIZE | GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE;
    if (::GetGUIThreadInfo(::GetCurrentThreadId(), &state) && (state.flags & kHeld) != 0) return;
    KeepInWorkArea();
    const Surroundings now{.foreground = ::GetForegroundWindow(),
                           .isOwnerVisible = m_owner && ::IsWindowVisible(m_owner),
                           .isOwnerIconic = m_owner && ::IsIconic(m_owner)};
    if (std::exchange(m_surroundings, now) != now) m_raisesLeft = kRaises;
    if (m_raisesLeft == 0) return;
    --m_raisesLeft;
    // A window that counts as the topmost one already would not be raised on the screen by being made it once more.
    for (const HWND above : {HWND_NOTOPMOST, HWND_TOPMOST}) {
        ::SetWindowPos(m_window, above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

void QuestionStand::KeepInWorkArea() const {
    // It may have become smaller: a task bar that has come, a screen that has gone. A question that has to move
    // does not move over another one, and no further than it must.
    RECT place{};
    ::GetWindowRect(m_window, &place);
    const RECT area = WorkAreaNear(place);
    const RECT fitting = FitInto(place, area);
    if (::EqualRect(&place, &fitting)) return;
    const RECT free =
        IsClearOf(BoxOf(fitting), OtherPlaces()) ? fitting : FreePlace({WidthOf(place), HeightOf(place)}, area);
    ::SetWindowPos(m_window, nullptr, free.left, free.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace brennvar
