// What screen readers and other aids are told of our windows, by Windows' Active Accessibility. Every window,
// dialog and control of ours is an AccessibleSource and says what it is in an AccessibleThing; what a window paints
// that is no window of its own (texts of a page, rows of a list) are its parts, counted from 1. The COM side is
// written once, in AccessibleObject_win.h. User-interface thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar {

class AccessibleObject;

// The numbers are those of Windows (ROLE_SYSTEM_).
enum class AccessibleRole : std::uint8_t {
    Alert = 0x08,  // a window that comes of its own accord and wants to be read out
    ToolTip = 0x0D,
    Pane = 0x10,
    Chart = 0x11,
    Dialog = 0x12,
    Grouping = 0x14,
    ColumnHeader = 0x19,
    Link = 0x1E,
    List = 0x21,
    ListItem = 0x22,
    Tree = 0x23,
    TreeItem = 0x24,
    PageTab = 0x25,
    PropertyPage = 0x26,
    StaticText = 0x29,
    Text = 0x2A,  // to type into, or to be selected in
    Button = 0x2B,
    CheckBox = 0x2C,
    RadioButton = 0x2D,
    ComboBox = 0x2E,
    ProgressBar = 0x30,
    IpAddress = 0x3F,
};

// What its default action does; its name is a text of the language.
enum class AccessibleAction : std::uint8_t { None, Press, Check, Uncheck, Select, Open, Expand, Collapse };

// Texts are bytes in the language's character set.
struct AccessibleThing {
    AccessibleRole role = AccessibleRole::Pane;
    DWORD state = 0;  // STATE_SYSTEM_ flags
    AccessibleAction action = AccessibleAction::None;
    std::string name;
    std::optional<std::string> value;
    std::string description;
    char shortcut = 0;     // the letter that works with Alt
    RECT place{};          // in the client coordinates of the window
    HFONT font = nullptr;  // says what the bytes of the texts mean; borrowed, null: the system's own character set

    // The caption of a control: "&" marks the letter of the shortcut and is no part of the name, "&&" is one "&".
    void SetCaption(std::string_view caption);
    void Set(DWORD flag, bool isSet) { state = isSet ? state | flag : state & ~flag; }
};

// What a window paints in itself and a client can ask for by number, from 1 on. A number that it is asked for is
// one of a part that is there.
class AccessibleParts {
public:
    // What a client asks a list to do with a row. The numbers are those of Windows (SELFLAG_).
    static constexpr LONG kTakeFocus = 1, kTakeSelection = 2, kExtendSelection = 4, kAddSelection = 8,
                          kRemoveSelection = 16;

    virtual ~AccessibleParts() = default;
    [[nodiscard]] virtual int PartCount() const = 0;
    // Its font, and that it is seen and works, are those of the window.
    virtual void TellPart(int part, AccessibleThing& thing) const = 0;
    // In client coordinates; 0: none.
    [[nodiscard]] virtual int PartAt(POINT point) const = 0;
    // While the window has the keyboard; 0: the window itself.
    [[nodiscard]] virtual int FocusedPart() const { return 0; }
    // At most so many.
    [[nodiscard]] virtual std::vector<int> SelectedParts(std::size_t /*most*/) const { return {}; }
    // flags: of those above. False: nothing of the kind can be done.
    virtual bool SelectPart(int /*part*/, LONG /*flags*/) { return false; }
    // The default action, as the user does it; it may open dialogs.
    virtual void DoPart(int /*part*/) {}
    // The text that names a control of the window; empty: none of them does.
    [[nodiscard]] virtual std::string LabelOf(HWND /*control*/) const { return {}; }
};

class AccessibleSource {
public:
    AccessibleSource() = default;
    AccessibleSource(const AccessibleSource&) = delete;
    AccessibleSource& operator=(const AccessibleSource&) = delete;
    virtual ~AccessibleSource() { EndAccessible(); }

    // The object of such a window of this thread; null for every other window.
    [[nodiscard]] static AccessibleSource* Of(HWND window);

    // Null while there is no window.
    [[nodiscard]] virtual HWND AccessibleWindow() const = 0;
    // Its place is there already, and whether it is seen, works and has the keyboard. The window text is not: that
    // of a field for a password stays where it is.
    // Whether a click of the user would reach the window.
    [[nodiscard]] bool TakesInput() const;
    virtual void TellAccessible(AccessibleThing& thing) const = 0;
    // The default action, as the user does it; it may open dialogs.
    virtual void DoAccessible() {}
    // Null: there are none.
    [[nodiscard]] virtual AccessibleParts* GetAccessibleParts() { return nullptr; }

    [[nodiscard]] int AccessiblePartCount();
    // As it is now; 0: the window itself. Nothing for a part that is not there.
    [[nodiscard]] std::optional<AccessibleThing> AccessibleThingAt(int part);
    // Tells those who listen of a change: an EVENT_ number.
    void Announce(DWORD event, int part = 0) const {
        if (const HWND window = AccessibleWindow()) ::NotifyWinEvent(event, window, OBJID_CLIENT, part);
    }
    // The default action, later: whoever asks for it does not wait until the dialogs that it opens are closed.
    // False: the user could not do it now either.
    bool PostAccessibleAction(int part) const;

protected:
    // For the procedure of the window, before all else: a client wants the object, or an action is due. Nothing for
    // other messages.
    [[nodiscard]] std::optional<LRESULT> AnswerAccessible(UINT message, WPARAM wParam, LPARAM lParam);
    // The window has gone; clients may hold its object for as long as they like.
    void EndAccessible();

private:
    void DoNow(int part);

    AccessibleObject* m_object = nullptr;  // one reference, since the first client
};

// For fields without a caption of their own: the name is what the parent draws for it, else that of the label
// before it. A check box that stands right before a field is part of its name.
void NameByLabel(HWND field, AccessibleThing& thing);

}  // namespace brennvar
