// Push buttons in three pictures: at rest, under the mouse, pressed.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "ui/ActionMark_win.h"
#include "ui/Control_win.h"
#include "ui/SkinImage_win.h"
#include "ui/Touch.h"

namespace brennvar {

enum class ButtonForm {
    Labelled,   // the text in the middle
    PageEntry,  // in the column of pages: the text at the left, beside the picture's icon
    Caption,    // in a window's caption band: only the picture; the text is its name for screen readers
};

// How much a labelled button wants to be pressed. One of a dialog or a card is primary, and has the skin's picture.
enum class ButtonRank {
    Plain,
    Primary,
    Destructive,  // plain, with a word in the colour of danger: what it does cannot be undone
};

// What tells one kind of button from another. The picture holds the three states side by side.
struct ButtonKind {
    const char* imageKey;     // the picture's key in the skin file
    const char* defaultFile;  // and its file where the skin does not name one
    const char* colourKey;    // begins the names of the text colours: _DEFAULT, _ACTIVE (under the mouse), _DOWN
    SIZE plainSize;           // the size without a picture, pixels at 96 per inch: that of the skins we deliver
    ButtonForm form = ButtonForm::Labelled;
    char plainGlyph =
        0;  // Caption without a picture: '-' minimise, '#' maximise, 'x' close, else the character itself
    ButtonRank rank = ButtonRank::Plain;
};

inline constexpr ButtonKind kButton = {"BUTTON", "button.png", "BUTTON", {88, 26}};
inline constexpr ButtonKind kButtonDialog = {"BUTTON_DIALOG", "button_dialog.png", "BUTTON", {104, 30}};
inline constexpr ButtonKind kButtonMedium = {"BUTTON_MEDIUM", "button_medium.png", "BUTTON", {144, 30}};
inline constexpr ButtonKind kButtonLarge = {"BUTTON_LARGE", "button_large.png", "BUTTON", {200, 30}};

[[nodiscard]] constexpr ButtonKind Ranked(ButtonKind kind, ButtonRank rank) {
    kind.rank = rank;
    return kind;
}
inline constexpr ButtonKind kPrimaryButton = Ranked(kButtonDialog, ButtonRank::Primary);

// Whether a button of this kind shows all of the text, in a window of this look.
[[nodiscard]] bool FitsButton(const ButtonKind& kind, const Look& look, const std::string& text);

inline constexpr SIZE kCaptionButtonSize = {32, 28};
inline constexpr ButtonKind kButtonMin = {"BUTTON_MIN",       "button_min.png",    "BUTTON",
                                          kCaptionButtonSize, ButtonForm::Caption, '-'};
inline constexpr ButtonKind kButtonMax = {"BUTTON_MAX",       "button_max.png",    "BUTTON",
                                          kCaptionButtonSize, ButtonForm::Caption, '#'};
inline constexpr ButtonKind kButtonHelp = {"BUTTON_HELP",      "button_help.png",   "BUTTON",
                                           kCaptionButtonSize, ButtonForm::Caption, '?'};
inline constexpr ButtonKind kButtonAbout = {"BUTTON_ABOUT",     "button_about.png",  "BUTTON",
                                            kCaptionButtonSize, ButtonForm::Caption, 'i'};
// Our own key: the skin format has none for closing.
inline constexpr ButtonKind kButtonClose = {"BUTTON_CLOSE",     "button_close.png",  "BUTTON",
                                            kCaptionButtonSize, ButtonForm::Caption, 'x'};

inline constexpr ButtonKind PageButtonKind(const char* imageKey, const char* defaultFile) {
    return {imageKey, defaultFile, "BUTTON_MENU", {184, 40}, ButtonForm::PageEntry};
}
// Key and file differ in name: skins rely on both.
inline constexpr ButtonKind kButtonMenuStatistics =
    PageButtonKind("BUTTON_MENU_STATISTICS", "button_menu_status.png");
inline constexpr ButtonKind kButtonMenuConnections =
    PageButtonKind("BUTTON_MENU_CONNECTIONS", "button_menu_connections.png");
inline constexpr ButtonKind kButtonMenuAdvanced =
    PageButtonKind("BUTTON_MENU_ADVANCED", "button_menu_advanced.png");
inline constexpr ButtonKind kButtonMenuOptions = PageButtonKind("BUTTON_MENU_OPTIONS", "button_menu_options.png");
inline constexpr ButtonKind kButtonMenuApplications =
    PageButtonKind("BUTTON_MENU_APPLICATIONS", "button_menu_applications.png");
inline constexpr ButtonKind kButtonMenuTrafficLog =
    PageButtonKind("BUTTON_MENU_TRAFFICLOG", "button_menu_trafficlog.png");
inline constexpr ButtonKind kButtonMenuSupport = PageButtonKind("BUTTON_MENU_SUPPORT", "button_menu_support.png");
inline constexpr ButtonKind kButtonMenuAbout = PageButtonKind("BUTTON_MENU_ABOUT", "button_menu_about.png");

// A BUTTON: BM_CLICK, Space, Enter and mnemonics work as Windows' own; the parent gets BN_CLICKED.
class CButton final : public CControl {
public:
    // Makes the button, of its own size, at the left upper corner. Caption buttons are no tab stops.
    void Create(HWND parent, const ButtonKind& kind, const std::string& text, int id, const Look& look);
    // Takes over a push button of a dialog template: it keeps its place and text, and gets the kind's size.
    void Adopt(HWND control, const ButtonKind& kind, const Look& look);

    // Pixels of the screen: the height of the picture and a third of its width (integer division); without a
    // picture of a usable size the kind's plain size. {0, 0} before Create or Adopt.
    [[nodiscard]] SIZE Size() const { return m_size; }
    // Moves it and leaves its size alone.
    void MoveTo(int left, int top) const;
    // A mark stands before a labelled button's text.
    void SetMark(ActionMark mark);
    // The button of the page that is shown is drawn as pressed.
    void SetSelected(bool selected);
    [[nodiscard]] bool IsSelected() const { return m_isSelected; }

    void TellAccessible(AccessibleThing& thing) const override;
    [[nodiscard]] bool TellParts(PictureParts& parts) const override;

private:
    void Resolve(const ButtonKind& kind, const Look& look);
    [[nodiscard]] Touch CurrentTouch() const;
    [[nodiscard]] bool IsDefault() const;
    void OnPaint(HDC dc, const RECT& client) override;
    // Of a skin without a picture.
    void PaintPlain(HDC dc, const RECT& client, Touch touch) const;
    // Without the skin's picture: plain, or disabled.
    [[nodiscard]] bool IsFlat() const;
    void PaintFlat(HDC dc, const RECT& client, Touch touch) const;
    void PaintFocus(HDC dc, const RECT& client, Touch touch) const;
    [[nodiscard]] COLORREF TextColour(Touch touch) const;
    void PaintText(HDC dc, const RECT& client, Touch touch) const;
    // Paints the mark; what is left of the place for the text behind it.
    [[nodiscard]] RECT PaintMark(HDC dc, const RECT& place) const;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    ButtonForm m_form = ButtonForm::Labelled;
    ButtonRank m_rank = ButtonRank::Plain;
    char m_plainGlyph = 0;
    SIZE m_size{};
    CSkinImage m_image;
    Palette m_colours;
    std::array<COLORREF, 3> m_textColours{};  // by Touch
    std::optional<ActionMark> m_mark;
    bool m_isSelected = false;
    HWND m_focusBefore = nullptr;  // Caption: who gets the keyboard back after the click
};

}  // namespace brennvar
