#include "ui/MessageDialog.h"

#include <algorithm>

#include "ui/Controls.h"
#include "ui/ResourceIds.h"
#include "ui/WorkArea.h"

namespace brennvar {
namespace {

constexpr int kMargin = 16;
constexpr int kIconSize = 32;
constexpr int kTextWidth = 376;
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 28;
constexpr int kButtonGap = 8;

}  // namespace

MessageDialog::MessageDialog(const CFonts& fonts, MessageTexts texts) : m_fonts(fonts), m_texts(std::move(texts)) {}

bool MessageDialog::Ask(HWND owner) {
    return DoModal(owner, m_texts.cancel.empty() ? IDD_MESSAGE_OK : IDD_MESSAGE_OK_CANCEL) == IDOK;
}

void MessageDialog::OnInitDialog() {
    ::SetWindowTextA(Window(), m_texts.caption.c_str());
    ::SetDlgItemTextA(Window(), IDC_MESSAGE, m_texts.message.c_str());
    ::SetDlgItemTextA(Window(), IDOK, m_texts.ok.c_str());
    if (Item(IDCANCEL)) ::SetDlgItemTextA(Window(), IDCANCEL, m_texts.cancel.c_str());
    for (const int id : {IDC_MESSAGE, IDOK, IDCANCEL}) {
        if (Item(id)) SetControlFont(Item(id), m_fonts.Text());
    }
    const bool isQuestion = Item(IDCANCEL) != nullptr;
    ::SendDlgItemMessageA(
        Window(), IDC_MESSAGE_ICON, STM_SETICON,
        reinterpret_cast<WPARAM>(::LoadIconA(nullptr, isQuestion ? IDI_WARNING : IDI_INFORMATION)), 0);

    // The text decides about the height; the margins stay.
    const int margin = Scale(kMargin);
    const int textLeft = margin + Scale(kIconSize) + margin;
    const int textWidth = Scale(kTextWidth);
    const int textHeight =
        std::max<int>(Scale(kIconSize), MeasureText(Window(), m_fonts.Text(), m_texts.message, textWidth).cy);
    const int buttonTop = margin + textHeight + margin + Scale(kButtonGap);
    RECT client{0, 0, textLeft + textWidth + margin, buttonTop + Scale(kButtonHeight) + margin};
    const auto place = [this](int id, int left, int top, int width, int height) {
        ::SetWindowPos(Item(id), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    };
    place(IDC_MESSAGE_ICON, margin, margin, Scale(kIconSize), Scale(kIconSize));
    place(IDC_MESSAGE, textLeft, margin, textWidth, textHeight);
    int right = client.right - margin;
    for (const int id : {IDCANCEL, IDOK}) {
        if (!Item(id)) continue;
        place(id, right - Scale(kButtonWidth), buttonTop, Scale(kButtonWidth), Scale(kButtonHeight));
        right -= Scale(kButtonWidth) + Scale(kButtonGap);
    }
    ::AdjustWindowRectEx(&client, static_cast<DWORD>(::GetWindowLongPtrA(Window(), GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongPtrA(Window(), GWL_EXSTYLE)));
    ::SetWindowPos(Window(), nullptr, 0, 0, client.right - client.left, client.bottom - client.top,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CenterWindow(Window(), ::GetWindow(Window(), GW_OWNER));
}

void MessageDialog::OnCommand(int id, int notification) {
    if (id == IDOK && notification == BN_CLICKED) End(IDOK);
}

}  // namespace brennvar
