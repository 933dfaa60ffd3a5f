#include <array>
#include <bitset>
#include <vector>

#include "EventsDialog.h"
#include "EventsPage.h"
#include "GalleryPage.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "controls/IpAddressBox_win.h"
#include "controls/Label_win.h"
#include "controls/RadioButton_win.h"
#include "dialogs/SkinDialog_win.h"
#include "tree/Tree_win.h"
#include "tree/VisibleRows.h"
#include "ui/ChildControls_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar::gallery {
namespace {

// At 96 pixels per inch.
constexpr int kLeftWidth = 216;
constexpr int kRightLeft = 240;
constexpr SIZE kContent = {720, 440};
constexpr int kLogTop = 296;

class EventRows final : public TreeRows {
public:
    EventRows() {
        std::vector<int> parents;
        for (int entry = 0; entry < kEntries; ++entry) {
            parents.push_back(IsProgram(entry) ? VisibleRows::kNone : entry - entry % kEntriesEach);
        }
        m_visible.SetParents(parents);
        m_visible.SetAllExpanded(false);
        m_visible.SetExpanded(0, true);
    }
    [[nodiscard]] int RowCount() const override { return m_visible.RowCount(); }
    [[nodiscard]] TreeRow Row(int row) const override {
        const int entry = m_visible.EntryOf(row);
        return {m_visible.LevelOf(entry), m_visible.HasChildren(entry), m_visible.IsExpanded(entry)};
    }
    [[nodiscard]] TreeCell Cell(int row, int column) const override {
        const int entry = m_visible.EntryOf(row);
        TreeCell cell;
        if (column == 1) {
            cell.text = std::to_string(entry);
        } else if (IsProgram(entry)) {
            cell.text = "program" + std::to_string(entry / kEntriesEach) + ".exe";
        } else {
            cell.text = "Rule " + std::to_string(entry % kEntriesEach);
            cell.checked = m_isChecked[static_cast<std::size_t>(entry)];
        }
        return cell;
    }
    void SetExpanded(int row, bool isExpanded) override {
        m_visible.SetExpanded(m_visible.EntryOf(row), isExpanded);
    }
    void SetChecked(int row, bool isChecked) {
        m_isChecked[static_cast<std::size_t>(m_visible.EntryOf(row))] = isChecked;
    }

private:
    static constexpr int kEntriesEach = 1 + kRulesEach;
    static constexpr int kEntries = kPrograms * kEntriesEach;
    static bool IsProgram(int entry) { return entry % kEntriesEach == 0; }

    VisibleRows m_visible;
    std::bitset<kEntries> m_isChecked;
};

class EventsDialog final : public CSkinDialog {
public:
    explicit EventsDialog(const CFonts& fonts) : CSkinDialog(fonts) {}

private:
    void OnCreateContent() override {
        ::SetWindowTextA(Window(), kEventsCaption);
        SetContentPixels({Scale(kContent.cx), Scale(kContent.cy)});
        m_origin = {ContentRect().left, ContentRect().top};
        CreateChoices();
        CreateFields();
        CreateTree();
        m_log.Create(Window(), "", LabelKind::Plain, SS_LEFT | SS_NOPREFIX, kEventLog, GetLook());
        m_log.Place(At(0, kLogTop, kContent.cx, 96));
        CreateButtons();
    }

    [[nodiscard]] RECT At(int left, int top, int width, int height) const {
        return {m_origin.x + Scale(left), m_origin.y + Scale(top), m_origin.x + Scale(left + width),
                m_origin.y + Scale(top + height)};
    }

    void CreateChoices() {
        m_apply.Create(Window(), kButtonDialog, "A&pply", kApply, GetLook());
        m_apply.MoveTo(At(0, 0, 0, 0).left, At(0, 0, 0, 0).top);
        m_remember.Create(Window(), "&Remember", kRemember, GetLook());
        m_remember.Place(At(0, 40, kLeftWidth, 24));
        for (int i = 0; i < 3; ++i) {
            CRadioButton& radio = m_choices[static_cast<std::size_t>(i)];
            radio.Create(Window(), "Choice " + std::to_string(i + 1),
                         i == 0 ? RadioPlace::FirstOfGroup : RadioPlace::Further, kFirstChoice + i, GetLook());
            radio.Place(At(0, 72 + i * 24, kLeftWidth, 24));
        }
        m_choices[0].SetChecked(true);
        m_mode.Create(Window(), kMode, GetLook());
        // The group of the radio buttons ends here.
        ::SetWindowLongPtrA(m_mode.Window(), GWL_STYLE,
                            ::GetWindowLongPtrA(m_mode.Window(), GWL_STYLE) | static_cast<LONG_PTR>(WS_GROUP));
        for (const char* mode : kModes) m_mode.Add(mode);
        m_mode.Select(0);
        m_mode.Place(At(0, 152, kLeftWidth, 24));
    }

    void CreateFields() {
        m_nameLabel.Create(Window(), "&Name:", LabelKind::Plain, SS_LEFT, -1, GetLook());
        m_nameLabel.Place(At(0, 192, 48, 24));
        m_name.Create(Window(), "", ES_AUTOHSCROLL, kName, GetLook());
        m_name.Place(At(56, 188, kLeftWidth - 56, 24));
        m_port.Create(Window(), "", ES_AUTOHSCROLL | ES_NUMBER, kPort, GetLook());
        m_port.Place(At(56, 220, 72, 24));
        ::SendMessageA(m_port.Window(), EM_LIMITTEXT, 5, 0);
        m_host.Create(Window(), kHost, GetLook());
        m_host.Place(At(56, 252, 136, 24));
        m_isCreated = true;
    }

    void CreateTree() {
        const TreeColumn columns[] = {{.title = "Rule", .width = 160, .takesRoom = true},
                                      {.title = "Number", .width = 80, .isNumber = true}};
        m_tree.events.checkToggled = [this](int row, int, bool isChecked) {
            m_rows.SetChecked(row, isChecked);
            Log("row " + std::to_string(row) + (isChecked ? " checked" : " unchecked"));
        };
        m_tree.events.opened = [this](int row) { Log("row " + std::to_string(row) + " opened"); };
        m_tree.events.contextMenu = [this](int, POINT screen) { ShowMenu(screen); };
        (void)m_tree.Create({.parent = Window(), .id = kRules, .hasLevels = true}, GetLook(), columns, m_rows);
        m_tree.Place(At(kRightLeft, 0, kContent.cx - kRightLeft, 280));
    }

    void CreateButtons() {
        m_ok.Create(Window(), kButtonDialog, "OK", IDOK, GetLook());
        m_cancel.Create(Window(), kButtonDialog, "Cancel", IDCANCEL, GetLook());
        const RECT last = At(0, 0, kContent.cx, kContent.cy);
        m_cancel.MoveTo(last.right - m_cancel.Size().cx, last.bottom - m_cancel.Size().cy);
        m_ok.MoveTo(last.right - 2 * m_cancel.Size().cx - Scale(8), last.bottom - m_ok.Size().cy);
        ::SendMessageA(Window(), DM_SETDEFID, IDOK, 0);
    }

    void ShowMenu(POINT screen) {
        CPopupMenu menu;
        menu.Add(kAllowItem, "&Allow");
        menu.Add(kDenyItem, "&Deny");
        const int chosen = menu.Track(m_tree.Window(), screen, TPM_RETURNCMD, GetLook(), nullptr);
        Log(chosen == 0 ? "menu left" : "menu " + std::to_string(chosen) + " chosen");
    }

    void OnCommand(int id, int notification) override {
        if (!m_isCreated) return;
        const std::string number = std::to_string(id);
        if (id == kMode) {
            if (notification != CBN_SELCHANGE) return;
            Log("combo " + number + " selected " + std::to_string(m_mode.Selected()));
        } else if (id == kName || id == kPort) {
            if (notification == EN_CHANGE) Log("edit " + number + " changed to " + TextOfWindow(Item(id)));
        } else if (id == kHost) {
            if (notification == EN_CHANGE) Log("address " + number + " changed to " + TextOfWindow(Item(id)));
        } else if (notification == BN_CLICKED) {
            OnClicked(id, number);
        }
    }

    void OnClicked(int id, const std::string& number) {
        if (id == kRemember) {
            Log("check " + number + (m_remember.IsChecked() ? " on" : " off"));
        } else if (id >= kFirstChoice && id <= kLastChoice) {
            Log("radio " + number + " chosen");
        } else {
            Log("button " + number + " clicked");
        }
    }

    void Log(const std::string& event) const {
        const std::string before = m_log.Text();
        m_log.SetText(before.empty() ? event : before + "\n" + event);
    }

    POINT m_origin{};
    bool m_isCreated = false;  // fields tell of their first text as well
    CButton m_apply;
    CCheckBox m_remember;
    std::array<CRadioButton, 3> m_choices;
    CComboBox m_mode;
    CLabel m_nameLabel;
    CEdit m_name;
    CEdit m_port;
    CIpAddressBox m_host;
    EventRows m_rows;
    CTree m_tree;
    CLabel m_log;
    CButton m_ok;
    CButton m_cancel;
};

class EventsGallery final : public GalleryPage {
public:
    [[nodiscard]] SIZE Size() const override { return {800, 560}; }
    void Fill(HWND, const Look&) override {}
    void OnShown(HWND window, const Look& look) override {
        EventsDialog dialog(look.fonts);
        const INT_PTR result = dialog.DoModal(window, IDD_EVENTS);
        if (result >= 0) ::PostQuitMessage(static_cast<int>(result));  // else the program ends already
    }
};

}  // namespace

std::unique_ptr<GalleryPage> MakeEventsGallery() {
    return std::make_unique<EventsGallery>();
}

}  // namespace brennvar::gallery
