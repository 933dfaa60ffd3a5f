#include "lists/ListChoices_win.h"

#include <algorithm>
#include <string>

#include "config/ResourceIds.h"
#include "controls/FieldFrame_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kHeight = 26;
constexpr int kGapToList = 8;
constexpr int kLabelGap = 6;
constexpr int kGap = 16;
constexpr int kBarWidth = 120;
constexpr int kBarHeight = 8;
constexpr int kTextWidth = 120;
constexpr int kCheckRoom = 28;   // of the box of a check box, with its gaps
constexpr int kWidestBox = 176;  // however long what can be chosen is

constexpr int kSteps = 100;    // of the bar, as it is made
constexpr int kNoNumber = -1;  // of texts that nobody asks for

int PositionOf(const ListProgress& progress) {
    if (progress.total == 0) return 0;
    const double share =
        static_cast<double>(std::min(progress.done, progress.total)) / static_cast<double>(progress.total);
    return static_cast<int>(share * kSteps);
}

// More letters than the widest box has room for are not measured: that takes the longer the more there are.
constexpr std::size_t kMostMeasured = 40;

// Pixels of the screen that show each of the items whole.
int WidthFor(HFONT font, const std::vector<std::string>& items) {
    LONG widest = 0;
    for (const std::string& item : items) {
        widest = std::max(widest, MeasureText(font, item.substr(0, kMostMeasured), 0).cx);
    }
    return static_cast<int>(widest) + 2 * kFieldFrame + FieldPadding() + Scale(kDropArrowWidth);
}

void SetShown(HWND window, bool isShown) {
    // Of its own: a page that nobody sees hides all of its controls.
    const bool wasShown = (::GetWindowLongPtrA(window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (wasShown != isShown) ::ShowWindow(window, isShown ? SW_SHOWNA : SW_HIDE);
}

}  // namespace

void ListChoices::Create(DrawnTexts& texts, const Look& look, const Language& language,
                         const std::vector<ListChoice>& choices) {
    if (choices.empty()) return;
    const HWND window = texts.Window();
    m_font = look.fonts.Text();
    for (const ListChoice& choice : choices) {
        Control& control = m_controls.emplace_back();
        control.id = choice.id;
        control.width = Scale(choice.width);
        if (choice.items.empty()) {
            control.check.Create(window, choice.label, choice.id, look);
        } else {
            constexpr DWORD kOneLine = SS_LEFT | SS_CENTERIMAGE;
            control.label.Create(texts, choice.label, LabelKind::Quiet, kOneLine, choice.id, look);
            control.box.Create(window, choice.id, look);
        }
    }
    constexpr DWORD kAtRight = SS_RIGHT | SS_CENTERIMAGE | SS_ENDELLIPSIS;
    m_progressText.Create(texts, "", LabelKind::Quiet, kAtRight, kNoNumber, look);
    m_progress.Create(window, IDC_PAGE_PROGRESS, look);
    m_stop.Create(window, kButton, language.GetText(1403, "Stop"), IDC_PAGE_STOP, look);
    Show(choices);
    ShowProgress(std::nullopt);
}

void ListChoices::Show(const std::vector<ListChoice>& choices) {
    bool hasOthers = false;
    for (const ListChoice& choice : choices) {
        const auto found = std::find_if(m_controls.begin(), m_controls.end(),
                                        [&](const Control& control) { return control.id == choice.id; });
        if (found == m_controls.end()) continue;
        if (found->IsCheck()) {
            ::SendMessageA(found->check.Window(), BM_SETCHECK, choice.chosen ? BST_CHECKED : BST_UNCHECKED, 0);
            continue;
        }
        if (found->items != choice.items) {
            found->items = choice.items;
            found->box.Clear();
            for (const std::string& item : choice.items) (void)found->box.Add(item);
            found->width =
                std::max(Scale(choice.width), std::min(WidthFor(m_font, choice.items), Scale(kWidestBox)));
            hasOthers = true;
        }
        if (found->box.Selected() != choice.chosen) found->box.Select(choice.chosen);
    }
    if (hasOthers && !::IsRectEmpty(&m_band)) Place(m_band);
}

void ListChoices::ShowProgress(const std::optional<ListProgress>& progress) {
    if (m_controls.empty()) return;
    if (progress) {
        m_progress.SetPosition(PositionOf(*progress));
        m_progressText.SetText(progress->text);
    }
    // The keyboard must not stay on a button that nobody sees.
    if (!progress && ::GetFocus() == m_stop.Window()) ::SetFocus(::GetParent(m_stop.Window()));
    m_progressText.SetShown(progress.has_value());
    for (const HWND window : {m_progress.Window(), m_stop.Window()}) SetShown(window, progress.has_value());
}

int ListChoices::Height() const {
    return m_controls.empty() ? 0 : Scale(kHeight + kGapToList);
}

void ListChoices::PlaceControl(Control& control, LONG& left, const RECT& band) const {
    const LONG middle = (band.top + band.bottom) / 2;
    if (control.IsCheck()) {
        const int width = MeasureText(m_font, control.check.Text(), 0).cx + Scale(kCheckRoom);
        control.check.Place({left, band.top, left + width, band.bottom});
        left += width + Scale(kGap);
        return;
    }
    const int label = control.label.Measure(0).cx;
    control.label.Place({left, band.top, left + label, band.bottom});
    left += label + (label > 0 ? Scale(kLabelGap) : 0);
    const int height = FieldHeight();
    const LONG top = middle - height / 2;
    control.box.Place({left, top, left + control.width, top + height});
    left += control.width + Scale(kGap);
}

void ListChoices::Place(const RECT& band) {
    if (m_controls.empty()) return;
    m_band = band;
    RECT line = band;
    line.bottom = line.top + Scale(kHeight);
    LONG left = line.left;
    for (Control& control : m_controls) PlaceControl(control, left, line);
    const LONG middle = (line.top + line.bottom) / 2;
    const SIZE button = m_stop.Size();
    LONG right = line.right - button.cx;
    m_stop.MoveTo(right, middle - button.cy / 2);
    right -= Scale(kLabelGap);
    const LONG barTop = middle - Scale(kBarHeight) / 2;
    m_progress.Place({right - Scale(kBarWidth), barTop, right, barTop + Scale(kBarHeight)});
    right -= Scale(kBarWidth + kLabelGap);
    m_progressText.Place({std::max(left, right - Scale(kTextWidth)), line.top, right, line.bottom});
}

std::optional<std::pair<int, int>> ListChoices::Chosen(int id, int notification) const {
    const auto found = std::find_if(m_controls.begin(), m_controls.end(),
                                    [id](const Control& control) { return control.id == id; });
    if (found == m_controls.end()) return std::nullopt;
    if (found->IsCheck()) {
        if (notification != BN_CLICKED) return std::nullopt;
        return std::pair(id, ::SendMessageA(found->check.Window(), BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0);
    }
    if (notification != CBN_SELCHANGE) return std::nullopt;
    return std::pair(id, found->box.Selected());
}

}  // namespace brennvar
