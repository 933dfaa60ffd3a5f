#include "dialogs/MessageDialog_win.h"

#include <algorithm>
#include <utility>

#include "ui/Paint_win.h"
#include "ui/SmoothDc_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kSignSize = 32;
constexpr int kSignGap = 16;
constexpr int kTextWidth = 376;
constexpr int kWideTextWidth = 560;  // for a text that would be a column
constexpr int kTallText = 240;
constexpr int kButtonTop = 24;  // below the text
constexpr int kButtonGap = 8;

// A disc with "i" or "?" on it: their strokes would be lost in a font of this size.
void DrawSign(HDC dc, const RECT& place, bool isQuestion, const Palette& colours) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    // In a square of 32 units.
    const int side = CSmoothDc::kFactor * WidthOf(place);
    const auto at = [side](int value) { return MulDiv(value, side, 32); };
    constexpr COLORREF kInk = RGB(18, 50, 74);  // reads on the accent in every skin
    smooth.FillDisc({0, 0, side, side}, colours.accent);
    const int width = at(3);
    if (isQuestion) {
        const UniqueFont font(::CreateFontA(at(24), 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, ANSI_CHARSET,
                                            OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                                            DEFAULT_PITCH | FF_SWISS, "Segoe UI"));
        DrawLabel(smooth.Dc(), font.Get(), {0, 0, side, side}, "?", kInk,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        return;
    }
    const POINT stem[] = {{at(16), at(15)}, {at(16), at(23)}};
    smooth.DrawLines(stem, 2, width, kInk);
    smooth.FillDisc({at(14), at(7), at(18), at(11)}, kInk);
}

}  // namespace

MessageDialog::MessageDialog(const CFonts& fonts, MessageTexts texts)
    : CSkinDialog(fonts), m_texts(std::move(texts)) {}

MessageAnswer MessageDialog::Choose(HWND owner) {
    switch (DoModal(owner, IsQuestion() ? IDD_MESSAGE_OK_CANCEL : IDD_MESSAGE_OK)) {
        case IDOK: return MessageAnswer::Ok;
        case IDC_MESSAGE_OTHER: return MessageAnswer::Other;
        default: return MessageAnswer::Cancel;
    }
}

void MessageDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_texts.caption.c_str());
    ::SetDlgItemTextA(Window(), IDC_MESSAGE, m_texts.message.c_str());
    ::SetDlgItemTextA(Window(), IDOK, m_texts.ok.c_str());
    if (IsQuestion()) ::SetDlgItemTextA(Window(), IDCANCEL, m_texts.cancel.c_str());
    m_message.Adopt(Item(IDC_MESSAGE), LabelKind::Plain, GetLook());
    const ButtonRank rank = m_texts.isCancelDefault ? ButtonRank::Destructive : ButtonRank::Primary;
    m_ok.Adopt(Item(IDOK), Ranked(kButtonDialog, rank), GetLook());
    if (IsQuestion()) m_cancel.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
    if (m_texts.isCancelDefault) {
        SetFirstFocus(IDCANCEL);
        ::SendMessageA(Window(), DM_SETDEFID, IDCANCEL, 0);
    }
    if (!m_texts.other.empty()) {
        m_other.Create(Window(), kButtonDialog, m_texts.other, IDC_MESSAGE_OTHER, GetLook());
        // Tab goes from left to right.
        ::SetWindowPos(m_other.Window(), m_ok.Window(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }

    // The text decides about the size.
    int textWidth = Scale(kTextWidth);
    if (m_message.Measure(textWidth).cy > Scale(kTallText)) textWidth = Scale(kWideTextWidth);
    const SIZE text = m_message.Measure(textWidth);
    textWidth = std::max<int>(textWidth, text.cx);  // a word that cannot be broken
    const int textHeight = std::max<int>(Scale(kSignSize), text.cy);
    const int textLeft = Scale(kSignSize + kSignGap);
    const int buttonTop = textHeight + Scale(kButtonTop);
    SetContentPixels({textLeft + textWidth, buttonTop + m_ok.Size().cy});

    const RECT content = ContentRect();
    // From below: a window that had to be cut to the work area cuts the text and not its buttons.
    const LONG buttons = content.bottom - m_ok.Size().cy;
    // A text of one line stands in the middle of the sign.
    const LONG textTop = content.top + (textHeight - text.cy) / 2;
    m_message.Place({content.left + textLeft, textTop, content.right,
                     std::min(textTop + text.cy, buttons - Scale(kButtonTop))});
    LONG right = content.right;
    for (const CButton* button : {&m_cancel, &m_other, &m_ok}) {
        if (!button->Window()) continue;
        button->MoveTo(right - button->Size().cx, buttons);
        right -= button->Size().cx + Scale(kButtonGap);
    }
}

void MessageDialog::OnPaintGround(HDC dc) {
    const RECT content = ContentRect();
    const int side = Scale(kSignSize);
    DrawSign(dc, {content.left, content.top, content.left + side, content.top + side}, IsQuestion(),
             GetLook().colours);
}

void MessageDialog::OnCommand(int id, int notification) {
    if ((id == IDOK || id == IDC_MESSAGE_OTHER) && notification == BN_CLICKED) End(id);
}

void MessageDialog::TellAccessible(AccessibleThing& thing) const {
    CSkinDialog::TellAccessible(thing);
    thing.description = m_texts.message;
}

}  // namespace brennvar
