#include "views/ApplicationsTree_win.h"

#include <chrono>
#include <string>
#include <utility>

namespace brennvar {
namespace {

constexpr std::chrono::seconds kBalloonDuration{8};

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

}  // namespace

CApplicationsTree::CApplicationsTree(const CFonts& fonts) : m_balloon(fonts) {
    events.cellClicked = [this](int row, int column) { return ClickCell(row, column); };
    events.opened = [this](int row) { wishes.details(row); };
}

std::vector<TreeColumn> CApplicationsTree::Columns(const Language& language) {
    return {{.title = language.GetText(1027, "Name"), .width = 200},
            {.title = language.GetText(1026, "Path"), .width = 240, .takesRoom = true},
            {.title = language.GetText(1028, "Action"), .width = 96}};
}

TreeCell CApplicationsTree::ActionCell(ApplicationState state, const Language& language) {
    const auto cell = [](std::string text, Tone tone) {
        TreeCell made;
        made.text = std::move(text);
        made.tone = tone;
        return made;
    };
    switch (state) {
        case ApplicationState::Deny: return cell(language.GetText(1, "Deny"), Tone::Deny);
        case ApplicationState::Allow: return cell(language.GetText(2, "Allow"), Tone::Allow);
        default: return cell(language.GetText(3, "Ask"), Tone::Ask);
    }
}

bool CApplicationsTree::ClickCell(int row, int column) {
    if (column == kActionColumn) {
        wishes.otherAction(row);
        return true;
    }
    // While rows are being gathered a balloon would only be in the way.
    if (column == kNameColumn && !IsHeld(VK_CONTROL) && !IsHeld(VK_SHIFT)) wishes.details(row);
    return false;
}

void CApplicationsTree::ShowBalloon(int row, const BalloonTexts& texts, HICON icon) {
    RECT place = CellRect(row, kNameColumn);
    if (::IsRectEmpty(&place)) return;
    ::MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    UniqueIcon copy(icon ? ::CopyIcon(icon) : nullptr);
    (void)m_balloon.Show(texts, place, {.timeout = kBalloonDuration, .icon = copy.Get()});
    m_balloonIcon = std::move(copy);
}

void CApplicationsTree::OnDestroy() {
    HideBalloon();
    CTree::OnDestroy();
}

void CApplicationsTree::OnSize(int width, int height) {
    HideBalloon();
    CTree::OnSize(width, height);
}

void CApplicationsTree::OnLeftDown(POINT point, UINT keys) {
    HideBalloon();
    CTree::OnLeftDown(point, keys);
}

void CApplicationsTree::OnDoubleClick(POINT point, UINT keys) {
    HideBalloon();
    CTree::OnDoubleClick(point, keys);
}

void CApplicationsTree::OnWheel(int delta, bool isHorizontal) {
    HideBalloon();
    CTree::OnWheel(delta, isHorizontal);
}

bool CApplicationsTree::OnKeyDown(UINT key) {
    HideBalloon();
    // With Ctrl, Space selects as in every list; with Shift nothing is to happen by accident.
    if (key == VK_SPACE && FocusedRow() >= 0 && !IsHeld(VK_CONTROL) && !IsHeld(VK_SHIFT)) {
        wishes.otherAction(FocusedRow());
        return true;
    }
    if (key == VK_DELETE) {
        wishes.removal();
        return true;
    }
    return CTree::OnKeyDown(key);
}

std::optional<LRESULT> CApplicationsTree::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_CONTEXTMENU:
        case WM_KILLFOCUS: HideBalloon(); break;
        default: break;
    }
    return CTree::OnMessage(message, wParam, lParam);
}

}  // namespace brennvar
