#include <array>
#include <deque>

#include "GalleryPage.h"
// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "controls/GradientStatic_win.h"
#include "controls/GroupBox_win.h"
#include "controls/IpAddressBox_win.h"
#include "controls/Label_win.h"
#include "controls/ProgressBar_win.h"
#include "controls/RadioButton_win.h"

namespace brennvar::gallery {
namespace {

enum class Force { Rest, Hot, Pressed, Disabled };
constexpr std::array kForced = {Force::Rest, Force::Hot, Force::Pressed, Force::Disabled};
constexpr const char* kForcedNames[] = {"Rest", "Hot", "Pressed", "Disabled"};
constexpr int kColumn = 152;  // from one state to the next

// The mouse was never there: its leaving is not passed on.
LRESULT CALLBACK StayHot(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    return message == WM_MOUSELEAVE ? 0 : ::DefSubclassProc(window, message, wParam, lParam);
}

void ForceState(HWND control, Force state) {
    switch (state) {
        case Force::Rest: return;
        case Force::Hot:
            ::SetWindowSubclass(control, &StayHot, 2, 0);
            ::SendMessageA(control, WM_MOUSEMOVE, 0, MAKELPARAM(2, 2));
            return;
        case Force::Pressed: ::SendMessageA(control, BM_SETSTATE, TRUE, 0); return;
        case Force::Disabled: ::EnableWindow(control, FALSE); return;
    }
}

class ControlsGallery final : public GalleryPage {
public:
    [[nodiscard]] SIZE Size() const override { return {1184, 744}; }
    void Fill(HWND window, const Look& look) override {
        m_window = window;
        m_look = &look;
        m_column = CSkinImage::Load(look.skin.GetSkinImagePath("MAIN_MENU", "menu.png"));
        m_band = CSkinImage::Load(look.skin.GetSkinImagePath("MAIN_TOP", "top.png"));
        FillHeads();
        FillButtons();
        FillPageButtons();
        FillToggles();
        FillFields();
        FillRest();
        m_look = nullptr;
    }

    void PaintGround(HDC dc, const RECT& client, const Look& look) const override {
        GalleryPage::PaintGround(dc, client, look);
        // The dark grounds of the column and the caption band, for the buttons that stand on them.
        m_column.DrawPart(dc, At(984, 0, 184, 368), {0, 0, m_column.Width(), m_column.Height()});
        m_band.DrawPart(dc, At(632, 24, 176, 144), {0, 0, m_band.Width(), m_band.Height()});
    }

private:
    static RECT At(int left, int top, int width, int height) { return {left, top, left + width, top + height}; }

    void AddLabel(const std::string& text, LabelKind kind, const RECT& place, DWORD style = SS_ENDELLIPSIS,
                  bool isEnabled = true) {
        CLabel& label = m_labels.emplace_back();
        label.Create(m_window, text, kind, style, -1, *m_look);
        label.Place(place);
        ::EnableWindow(label.Window(), isEnabled);
    }

    CButton& AddButton(const ButtonKind& kind, const std::string& text, int left, int top) {
        CButton& button = m_buttons.emplace_back();
        button.Create(m_window, kind, text, 100 + static_cast<int>(m_buttons.size()), *m_look);
        button.MoveTo(left, top);
        return button;
    }

    void FillHeads() {
        for (int i = 0; i < 4; ++i) AddLabel(kForcedNames[i], LabelKind::Quiet, At(16 + i * kColumn, 8, 120, 24));
    }

    void FillButtons() {
        constexpr const ButtonKind* kKinds[] = {&kButton, &kButtonDialog, &kButtonMedium};
        for (int row = 0; row < 3; ++row) {
            for (int i = 0; i < 4; ++i) {
                ForceState(AddButton(*kKinds[row], "&Apply", 16 + i * kColumn, 32 + row * 40).Window(),
                           kForced[static_cast<std::size_t>(i)]);
            }
        }
        CButton& standard = AddButton(kButtonDialog, "Default", 16, 152);
        ::SendMessageA(standard.Window(), BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
        AddButton(kButtonDialog, "A text that is too long", 16 + kColumn, 152);
        AddButton(kButtonLarge, "Large, for a longer text", 16 + 2 * kColumn, 152);
        constexpr const ButtonKind* kCaptions[] = {&kButtonMin, &kButtonMax, &kButtonHelp, &kButtonAbout,
                                                   &kButtonClose};
        for (int row = 0; row < 4; ++row) {
            for (int i = 0; i < 5; ++i) {
                ForceState(AddButton(*kCaptions[i], "Caption", 640 + i * 32, 32 + row * 32).Window(),
                           kForced[static_cast<std::size_t>(row)]);
            }
        }
    }

    void FillPageButtons() {
        struct Entry {
            const ButtonKind* kind;
            const char* text;
        };
        constexpr Entry kEntries[] = {
            {&kButtonMenuStatistics, "Statistics"},     {&kButtonMenuConnections, "Connections"},
            {&kButtonMenuAdvanced, "Advanced"},         {&kButtonMenuOptions, "Options"},
            {&kButtonMenuApplications, "Applications"}, {&kButtonMenuTrafficLog, "Traffic Log"},
            {&kButtonMenuSupport, "Support"},           {&kButtonMenuAbout, "About"}};
        int top = 16;
        int row = 0;
        for (const Entry& entry : kEntries) {
            CButton& button = AddButton(*entry.kind, entry.text, 984, top);
            if (row == 0) button.SetSelected(true);
            if (row > 0 && row < 4) ForceState(button.Window(), kForced[static_cast<std::size_t>(row)]);
            top += 40;
            ++row;
        }
    }

    void FillToggles() {
        for (int checked = 0; checked < 2; ++checked) {
            for (int i = 0; i < 4; ++i) {
                CCheckBox& box = m_checks.emplace_back();
                box.Create(m_window, checked ? "&Checked" : "&Not checked", 300, *m_look);
                box.Place(At(16 + i * kColumn, 200 + checked * 24, 144, 24));
                box.SetChecked(checked != 0);
                ForceState(box.Window(), kForced[static_cast<std::size_t>(i)]);
                CRadioButton& radio = m_radios.emplace_back();
                radio.Create(m_window, checked ? "Chosen" : "Not chosen", RadioPlace::FirstOfGroup, 301, *m_look);
                radio.Place(At(16 + i * kColumn, 256 + checked * 24, 144, 24));
                radio.SetChecked(checked != 0);
                ForceState(radio.Window(), kForced[static_cast<std::size_t>(i)]);
            }
        }
        CCheckBox& lines = m_checks.emplace_back();
        lines.Create(m_window,
                     "Remember this answer for the program and do not ask again until it is changed on the page "
                     "Applications",
                     302, *m_look);
        lines.Place(At(640, 200, 256, lines.HeightAt(256)));
        CRadioButton& longRadio = m_radios.emplace_back();
        longRadio.Create(m_window, "Ask for every program that is not known yet, and for those that have changed",
                         RadioPlace::FirstOfGroup, 303, *m_look);
        longRadio.Place(At(640, 264, 256, longRadio.HeightAt(256)));
    }

    void AddEdit(const std::string& text, const std::string& cue, DWORD style, const RECT& place, bool isEnabled) {
        CEdit& edit = m_edits.emplace_back();
        edit.Create(m_window, text, style, 310, *m_look);
        edit.SetCue(cue);
        edit.Place(place);
        ::EnableWindow(edit.Window(), isEnabled);
    }

    void FillFields() {
        const int height = FieldHeight();
        AddEdit("An edit field", "", ES_AUTOHSCROLL, At(16, 328, 136, height), true);
        AddEdit("", "Search", ES_AUTOHSCROLL, At(16 + kColumn, 328, 136, height), true);
        AddEdit("Only read", "", ES_AUTOHSCROLL | ES_READONLY, At(16 + 2 * kColumn, 328, 136, height), true);
        AddEdit("Disabled", "", ES_AUTOHSCROLL, At(16 + 3 * kColumn, 328, 136, height), false);
        AddEdit("Several lines of text,\r\nwith a scroll bar\r\nthat Windows\r\npaints\r\nand more", "",
                ES_MULTILINE | WS_VSCROLL | ES_AUTOVSCROLL, At(640, 328, 256, 72), true);
        for (int i = 0; i < 4; ++i) {
            CComboBox& combo = m_combos.emplace_back();
            combo.Create(m_window, 320, *m_look);
            for (const char* text : {"Normal", "Allow all", "Block all", "An item with a rather long text"}) {
                combo.Add(text);
            }
            combo.Select(i);
            combo.Place(At(16 + i * kColumn, 360, 136, 24));
            if (i != 2) ForceState(combo.Window(), kForced[static_cast<std::size_t>(i)]);
        }
        for (int i = 0; i < 3; ++i) {
            CIpAddressBox& box = m_addresses.emplace_back();
            box.Create(m_window, 330, *m_look);
            box.Place(At(16 + i * kColumn, 392, 136, height));
            if (i != 1) box.SetAddress(0x7F000001);
            if (i == 2) ::EnableWindow(box.Window(), FALSE);
        }
    }

    void FillRest() {
        CGroupBox& group = m_groups.emplace_back();
        group.Create(m_window, "A &group of choices", 340, *m_look);
        group.Place(At(16, 432, 288, 112));
        RECT row = group.Inside();
        for (int i = 0; i < 3; ++i) {
            CRadioButton& radio = m_radios.emplace_back();
            radio.Create(m_window, "Choice " + std::to_string(i + 1),
                         i == 0 ? RadioPlace::FirstOfGroup : RadioPlace::Further, 341 + i, *m_look);
            row.bottom = row.top + 24;
            radio.Place(row);
            radio.SetChecked(i == 1);
            ::OffsetRect(&row, 0, 24);
        }
        CGroupBox& quiet = m_groups.emplace_back();
        quiet.Create(m_window, "A disabled group", 350, *m_look);
        quiet.Place(At(320, 432, 288, 112));
        ::EnableWindow(quiet.Window(), FALSE);
        constexpr int kPositions[] = {0, 35, 100};
        for (int i = 0; i < 3; ++i) {
            CProgressBar& bar = m_bars.emplace_back();
            bar.Create(m_window, 360, *m_look);
            bar.Place(At(640 + i * 88, 440, 80, 16));
            bar.SetPosition(kPositions[i]);
        }
        CGradientStatic& heading = m_gradients.emplace_back();
        heading.Create(m_window, "A heading on a gradient", -1, *m_look);
        heading.Place(At(640, 472, 256, 24));
        AddLabel("Plain text", LabelKind::Plain, At(640, 512, 120, 24));
        AddLabel("Quiet text", LabelKind::Quiet, At(768, 512, 120, 24));
        AddLabel("Bold text", LabelKind::Bold, At(640, 536, 120, 24));
        AddLabel("A title", LabelKind::Title, At(768, 536, 120, 24));
        AddLabel("Disabled", LabelKind::Plain, At(640, 560, 120, 24), SS_ENDELLIPSIS, false);
        AddLabel("Right", LabelKind::Plain, At(768, 560, 128, 24), SS_RIGHT | SS_CENTERIMAGE);
        AddLabel("A text of several lines, which is broken where the room ends, and cut when it is too high.",
                 LabelKind::Plain, At(640, 592, 256, 40), SS_LEFT | SS_NOPREFIX);
        AddLabel("C:\\Program Files\\Somewhere\\Far below\\program.exe", LabelKind::Plain, At(640, 640, 256, 24),
                 SS_PATHELLIPSIS | SS_NOPREFIX);
    }

    HWND m_window = nullptr;
    CSkinImage m_column, m_band;
    const Look* m_look = nullptr;  // while the page is filled
    // Controls stay where they are in memory.
    std::deque<CLabel> m_labels;
    std::deque<CButton> m_buttons;
    std::deque<CCheckBox> m_checks;
    std::deque<CRadioButton> m_radios;
    std::deque<CEdit> m_edits;
    std::deque<CComboBox> m_combos;
    std::deque<CIpAddressBox> m_addresses;
    std::deque<CGroupBox> m_groups;
    std::deque<CProgressBar> m_bars;
    std::deque<CGradientStatic> m_gradients;
};

}  // namespace

std::unique_ptr<GalleryPage> MakeControlsGallery() {
    return std::make_unique<ControlsGallery>();
}

}  // namespace brennvar::gallery
