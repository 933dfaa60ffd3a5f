#include "dialogs/MessageDialog_win.h"

#include <algorithm>
#include <utility>

#include "ui/ActionMark_win.h"
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

// In a square of 32 units.
class SignPainter {
public:
    SignPainter(HDC dc, const RECT& place) : m_smooth(dc, place), m_side(CSmoothDc::kFactor * WidthOf(place)) {}

    // Strokes: those of a font would be lost in this size.
    // A warning and a failure have marks instead (ui/ActionMark_win.h).
    void Draw(MessageSign sign, const Palette& colours) const {
        if (!m_smooth.Dc()) return;
        constexpr COLORREF kInk = RGB(18, 50, 74);  // reads on the accent in every skin
        switch (sign) {
            case MessageSign::Information:
                Disc(colours.accent);
                Line(16, 15, 16, 23, kInk);
                Dot(9, kInk);
                break;
            case MessageSign::Warning:
            case MessageSign::Failure: break;
            case MessageSign::Question:
                Disc(colours.accent);
                DrawMark(kInk);
                break;
        }
    }

private:
    [[nodiscard]] int At(int value) const { return MulDiv(value, m_side, 32); }
    void Disc(COLORREF colour) const { m_smooth.FillDisc({0, 0, m_side, m_side}, colour); }
    void Dot(int y, COLORREF colour) const { m_smooth.FillDisc({At(14), At(y - 2), At(18), At(y + 2)}, colour); }
    void Line(int left, int top, int right, int bottom, COLORREF colour) const {
        const POINT ends[] = {{At(left), At(top)}, {At(right), At(bottom)}};
        m_smooth.DrawLines(ends, 2, At(3), colour);
    }
    void DrawMark(COLORREF colour) const {
        const UniqueFont font(::CreateFontA(At(24), 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, ANSI_CHARSET,
                                            OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                                            DEFAULT_PITCH | FF_SWISS, "Segoe UI"));
        DrawLabel(m_smooth.Dc(), font.Get(), {0, 0, m_side, m_side}, "?", colour,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }

    CSmoothDc m_smooth;
    int m_side;
};

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

MessageSign MessageDialog::Sign() const {
    if (m_texts.sign) return *m_texts.sign;
    if (!IsQuestion()) return MessageSign::Information;
    return m_texts.isCancelDefault ? MessageSign::Warning : MessageSign::Question;
}

void MessageDialog::OnPaintGround(HDC dc) {
    const RECT content = ContentRect();
    const int side = Scale(kSignSize);
    const RECT place{content.left, content.top, content.left + side, content.top + side};
    if (Sign() == MessageSign::Warning) return DrawWarningTriangle(dc, place);
    if (Sign() == MessageSign::Failure) return DrawActionMark(dc, place, ActionMark::Deny);
    SignPainter(dc, place).Draw(Sign(), GetLook().colours);
}

void MessageDialog::OnCommand(int id, int notification) {
    if ((id == IDOK || id == IDC_MESSAGE_OTHER) && notification == BN_CLICKED) End(id);
}

void MessageDialog::TellAccessible(AccessibleThing& thing) const {
    CSkinDialog::TellAccessible(thing);
    thing.description = m_texts.message;
}

}  // namespace brennvar
