#include "ui/PopupMenu.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include "config/Resources_win.h"
#include "image/DecodeImage.h"
#include "ui/Paint.h"
#include "ui/ResourceIds.h"
#include "ui/SmoothDc.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kImageSize = 16;
constexpr int kBarWidth = 28;  // behind the images
constexpr int kTextGap = 8;
constexpr int kShortcutGap = 24;
constexpr int kRightEdge = 20;  // where the arrow of a sub-menu stands
constexpr int kItemHeight = 24;
constexpr int kItemPadding = 3;  // above and below a text that needs more
constexpr int kSeparatorHeight = 7;
constexpr int kArrowSize = 4;  // its width, and its height from the middle

// Of 255, towards the ground.
constexpr int kSeparatorShare = 128;
constexpr int kDisabledTextShare = 110;
constexpr int kDisabledSelectionShare = 128;
constexpr BYTE kDisabledOpacity = 110;

constexpr ULONG_PTR kMenuClass = 32768;
constexpr char kMenuClassName[] = "#32768";

// MN_GETHMENU of Windows' menu windows: the menu that one of them shows.
constexpr UINT kGetMenuOfWindow = 0x01E1;
constexpr UINT_PTR kSubclassId = 1;

struct MenuColours {
    explicit MenuColours(const Skin& skin)
        : border(skin.GetSkinColor("COLOR_TRAY_BORDER", 0, 0, 0)),
          selection(skin.GetSkinColor("COLOR_TRAY_SELECTION", 255, 173, 27)),
          text(skin.GetSkinColor("COLOR_TRAY_TEXT", 0, 0, 0)),
          ground(skin.GetSkinColor("COLOR_TRAY_TEXT_BACK", 255, 255, 255)),
          bar(skin.GetSkinColor("COLOR_TRAY_VERTICAL_BAR", 0, 0, 0)) {}
    COLORREF border;
    COLORREF selection;
    COLORREF text;
    COLORREF ground;
    COLORREF bar;
};

struct ItemText {
    std::string label;
    std::string shortcut;
};
ItemText SplitAtTab(const std::string& text) {
    const std::size_t tab = text.find('\t');
    if (tab == std::string::npos) return {text, ""};
    return {text.substr(0, tab), text.substr(tab + 1)};
}

// The letter after the first single "&", in upper case; 0 without one. An "&" is no part of a double-byte
// character.
char MnemonicOf(const std::string& text) {
    for (std::size_t at = text.find('&'); at != std::string::npos && at + 1 < text.size();
         at = text.find('&', at + 2)) {
        if (text[at + 1] == '&') continue;
        char letter = text[at + 1];
        ::CharUpperBuffA(&letter, 1);
        return letter;
    }
    return 0;
}

}  // namespace

// One showing of a menu: Windows' menus for it, and the handlers that it needs in the owner and in the menu
// windows.
class CMenuTracker {
public:
    CMenuTracker(const CPopupMenu& menu, HWND owner, const Look& look, const CSkinImage* images)
        : m_root(menu), m_owner(owner), m_look(look), m_images(images), m_colours(look.skin) {}
    CMenuTracker(const CMenuTracker&) = delete;
    CMenuTracker& operator=(const CMenuTracker&) = delete;
    ~CMenuTracker() = default;
    int Track(POINT point, UINT flags);

private:
    using Item = CPopupMenu::Item;

    static LRESULT CALLBACK OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                           DWORD_PTR object) noexcept;
    static LRESULT CALLBACK MenuProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                          DWORD_PTR object) noexcept;
    static LRESULT CALLBACK OnWindowCreated(int code, WPARAM wParam, LPARAM lParam) noexcept;

    UniqueMenu Build(const CPopupMenu& menu);
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    // Null for an item of somebody else's menu.
    [[nodiscard]] const Item* FindItem(ULONG_PTR data) const;
    void Measure(const Item& item, MEASUREITEMSTRUCT& measure) const;
    [[nodiscard]] int TextWidth(HDC dc, const std::string& text, UINT format) const;
    void Draw(const Item& item, const DRAWITEMSTRUCT& draw) const;
    void DrawRow(const Item& item, HDC dc, const RECT& row, UINT state) const;
    void DrawTexts(const Item& item, HDC dc, RECT place, COLORREF colour, bool showsMnemonic) const;
    void DrawImage(const Item& item, HDC dc, const RECT& bar) const;
    void DrawCheckMark(HDC dc, const RECT& box) const;
    [[nodiscard]] LRESULT ChooseByLetter(HMENU menu, char letter) const;
    void DrawEdge(HWND menuWindow, HDC dc) const;
    [[nodiscard]] HFONT FontOf(const Item& item) const {
        return item.state.isDefault ? m_look.fonts.Bold() : m_look.fonts.Text();
    }

    // The showing that is going on, for the hook; the one before it waits.
    inline static thread_local CMenuTracker* s_current = nullptr;

    const CPopupMenu& m_root;
    const HWND m_owner;
    const Look& m_look;
    const CSkinImage* const m_images;
    const MenuColours m_colours;
    UniqueBrush m_ground;
    std::map<HMENU, const CPopupMenu*> m_menus;
};

int CMenuTracker::Track(POINT point, UINT flags) {
    m_ground.Reset(::CreateSolidBrush(m_colours.ground));
    const UniqueMenu menu = Build(m_root);
    if (!::SetWindowSubclass(m_owner, &CMenuTracker::OwnerProcedure, reinterpret_cast<UINT_PTR>(this),
                             reinterpret_cast<DWORD_PTR>(this))) {
        return 0;
    }
    CMenuTracker* const outer = std::exchange(s_current, this);
    const HHOOK hook = ::SetWindowsHookExA(WH_CBT, &CMenuTracker::OnWindowCreated, nullptr, ::GetCurrentThreadId());
    const int chosen = ::TrackPopupMenu(menu.Get(), flags | TPM_RETURNCMD, point.x, point.y, 0, m_owner, nullptr);
    ::UnhookWindowsHookEx(hook);
    s_current = outer;
    ::RemoveWindowSubclass(m_owner, &CMenuTracker::OwnerProcedure, reinterpret_cast<UINT_PTR>(this));
    return chosen;
}

UniqueMenu CMenuTracker::Build(const CPopupMenu& menu) {
    UniqueMenu built(::CreatePopupMenu());
    m_menus[built.Get()] = &menu;
    MENUINFO look{};
    look.cbSize = sizeof(look);
    look.fMask = MIM_BACKGROUND;
    look.hbrBack = m_ground.Get();
    ::SetMenuInfo(built.Get(), &look);
    UINT position = 0;
    for (const Item& item : menu.m_items) {
        MENUITEMINFOA info{};
        info.cbSize = sizeof(info);
        // With its text, though it is drawn by us: a screen reader asks for it.
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_DATA | (item.IsSeparator() ? 0U : MIIM_STRING);
        info.fType = MFT_OWNERDRAW | (item.IsSeparator() ? MFT_SEPARATOR : 0U);
        info.fState = (item.state.isChecked ? MFS_CHECKED : 0U) | (item.state.isDisabled ? MFS_DISABLED : 0U) |
                      (item.state.isDefault ? MFS_DEFAULT : 0U);
        info.wID = static_cast<UINT>(item.command);
        info.dwItemData = reinterpret_cast<ULONG_PTR>(&item);
        std::string text = item.text;
        info.dwTypeData = text.data();
        UniqueMenu subMenu;
        if (item.subMenu) {
            subMenu = Build(*item.subMenu);
            info.fMask |= MIIM_SUBMENU;
            info.hSubMenu = subMenu.Get();
        }
        // A sub-menu goes with the menu that holds it.
        if (::InsertMenuItemA(built.Get(), position, TRUE, &info)) (void)subMenu.Release();
        ++position;
    }
    return built;
}

LRESULT CALLBACK CMenuTracker::OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                              DWORD_PTR object) noexcept {
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(window, &CMenuTracker::OwnerProcedure, id);
    std::optional<LRESULT> result;
    try {
        result = reinterpret_cast<CMenuTracker*>(object)->Dispatch(message, wParam, lParam);
    } catch (...) {  // NOLINT(bugprone-empty-catch): must not cross Windows, which handles the message then
    }
    return result ? *result : ::DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> CMenuTracker::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_MEASUREITEM: {
            auto& measure = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
            const Item* item = measure.CtlType == ODT_MENU ? FindItem(measure.itemData) : nullptr;
            if (!item) return std::nullopt;
            Measure(*item, measure);
            return TRUE;
        }
        case WM_DRAWITEM: {
            const auto& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            const Item* item = draw.CtlType == ODT_MENU ? FindItem(draw.itemData) : nullptr;
            if (!item) return std::nullopt;
            Draw(*item, draw);
            return TRUE;
        }
        case WM_MENUCHAR: {
            const auto menu = reinterpret_cast<HMENU>(lParam);
            if (!m_menus.contains(menu)) return std::nullopt;
            return ChooseByLetter(menu, static_cast<char>(LOWORD(wParam)));
        }
        default: return std::nullopt;
    }
}

const CPopupMenu::Item* CMenuTracker::FindItem(ULONG_PTR data) const {
    for (const auto& [handle, menu] : m_menus) {
        for (const Item& item : menu->m_items) {
            if (reinterpret_cast<ULONG_PTR>(&item) == data) return &item;
        }
    }
    return nullptr;
}

void CMenuTracker::Measure(const Item& item, MEASUREITEMSTRUCT& measure) const {
    if (item.IsSeparator()) {
        measure.itemWidth = 0;
        measure.itemHeight = static_cast<UINT>(Scale(kSeparatorHeight));
        return;
    }
    const HDC dc = ::GetDC(m_owner);
    const ItemText text = SplitAtTab(item.text);
    int width = Scale(kBarWidth + kTextGap + kRightEdge);
    int height = 0;
    {
        const CSelect select(dc, FontOf(item));
        width += TextWidth(dc, text.label, 0);
        if (!text.shortcut.empty()) width += Scale(kShortcutGap) + TextWidth(dc, text.shortcut, DT_NOPREFIX);
        TEXTMETRICA metrics{};
        ::GetTextMetricsA(dc, &metrics);
        height = std::max<int>(Scale(kItemHeight), metrics.tmHeight + 2 * Scale(kItemPadding));
    }
    ::ReleaseDC(m_owner, dc);
    measure.itemWidth = static_cast<UINT>(width);
    measure.itemHeight = static_cast<UINT>(height);
}

int CMenuTracker::TextWidth(HDC dc, const std::string& text, UINT format) const {
    RECT box{};
    ::DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &box, DT_SINGLELINE | DT_CALCRECT | format);
    return WidthOf(box);
}

void CMenuTracker::Draw(const Item& item, const DRAWITEMSTRUCT& draw) const {
    const RECT& row = draw.rcItem;
    {
        const CBufferedDc buffer(draw.hDC, row);
        DrawRow(item, buffer.Dc(), row, draw.itemState);
    }
    // Windows would draw its own arrow of a sub-menu over ours.
    ::ExcludeClipRect(draw.hDC, row.left, row.top, row.right, row.bottom);
}

void CMenuTracker::DrawRow(const Item& item, HDC dc, const RECT& row, UINT state) const {
    const RECT bar{row.left, row.top, row.left + Scale(kBarWidth), row.bottom};
    RECT text{bar.right + Scale(kTextGap), row.top, row.right - Scale(kRightEdge), row.bottom};
    FillSolid(dc, row, m_colours.ground);
    FillSolid(dc, bar, m_colours.bar);
    if (item.IsSeparator()) {
        const LONG middle = (row.top + row.bottom) / 2;
        FillSolid(dc, {text.left, middle, row.right, middle + 1},
                  MixColours(m_colours.border, m_colours.ground, kSeparatorShare));
        return;
    }
    // The one that the keyboard has reached is to be seen, though it cannot be chosen.
    if ((state & ODS_SELECTED) != 0) {
        const COLORREF selection = item.state.isDisabled
                                       ? MixColours(m_colours.selection, m_colours.ground, kDisabledSelectionShare)
                                       : m_colours.selection;
        FillSolid(dc, row, selection);
    }
    const COLORREF colour =
        item.state.isDisabled ? MixColours(m_colours.text, m_colours.ground, kDisabledTextShare) : m_colours.text;
    DrawImage(item, dc, bar);
    DrawTexts(item, dc, text, colour, (state & ODS_NOACCEL) == 0);
    if (!item.subMenu) return;
    const LONG middle = (row.top + row.bottom) / 2;
    const LONG size = Scale(kArrowSize);
    const LONG left = row.right - Scale(kRightEdge) / 2 - size / 2;
    for (LONG i = 0; i < size; ++i) {
        FillSolid(dc, {left + i, middle - size + i + 1, left + i + 1, middle + size - i}, colour);
    }
}

void CMenuTracker::DrawTexts(const Item& item, HDC dc, RECT place, COLORREF colour, bool showsMnemonic) const {
    const ItemText text = SplitAtTab(item.text);
    constexpr UINT kFormat = DT_SINGLELINE | DT_VCENTER;
    DrawLabel(dc, FontOf(item), place, text.label, colour, kFormat | (showsMnemonic ? 0U : DT_HIDEPREFIX));
    DrawLabel(dc, FontOf(item), place, text.shortcut, colour, kFormat | DT_RIGHT | DT_NOPREFIX);
}

void CMenuTracker::DrawImage(const Item& item, HDC dc, const RECT& bar) const {
    const int size = Scale(kImageSize);
    const RECT place = Centred(bar, {size, size});
    const bool hasImage = m_images && *m_images && item.image != MenuImage::None;
    if (item.state.isChecked) {
        // On a ground of its own: the mark has the colour of the text, which may be that of the bar as well.
        const RECT box = Inset(place, -Scale(2));
        FillSolid(dc, box, m_colours.ground);
        DrawFrame(dc, box, m_colours.border);
        if (!hasImage) DrawCheckMark(dc, place);
    }
    if (!hasImage) return;
    m_images->DrawFrame(dc, place, static_cast<int>(item.image), static_cast<int>(MenuImage::Count),
                        item.state.isDisabled ? kDisabledOpacity : 255);
}

void CMenuTracker::DrawCheckMark(HDC dc, const RECT& box) const {
    const CSmoothDc smooth(dc, box);
    if (!smooth.Dc()) return;
    // In a square of 16 units.
    std::array<POINT, 3> points = {{{4, 8}, {7, 11}, {12, 5}}};
    const int unit = CSmoothDc::kFactor * WidthOf(box);
    for (POINT& point : points) point = {point.x * unit / 16, point.y * unit / 16};
    smooth.DrawLines(points.data(), static_cast<int>(points.size()), unit / 8, m_colours.text);
}

LRESULT CMenuTracker::ChooseByLetter(HMENU menu, char letter) const {
    ::CharUpperBuffA(&letter, 1);
    const std::vector<Item>& items = m_menus.at(menu)->m_items;
    std::vector<std::size_t> matches;
    std::size_t selected = items.size();
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (MnemonicOf(SplitAtTab(items[i].text).label) == letter) matches.push_back(i);
        const UINT state = ::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        if ((state & MF_HILITE) != 0) selected = i;
    }
    if (matches.empty()) return MAKELRESULT(0, MNC_IGNORE);
    if (matches.size() == 1) return MAKELRESULT(matches.front(), MNC_EXECUTE);
    // Several of them: each press goes to the next.
    const auto next = std::find_if(matches.begin(), matches.end(),
                                   [&](std::size_t at) { return selected < items.size() && at > selected; });
    return MAKELRESULT(next == matches.end() ? matches.front() : *next, MNC_SELECT);
}

LRESULT CALLBACK CMenuTracker::OnWindowCreated(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HCBT_CREATEWND && s_current) {
        const auto window = reinterpret_cast<HWND>(wParam);
        const auto* created = reinterpret_cast<const CBT_CREATEWNDA*>(lParam)->lpcs;
        // The class of menu windows, as a number or by its name.
        const bool isMenu = IS_INTRESOURCE(created->lpszClass)
                                ? reinterpret_cast<ULONG_PTR>(created->lpszClass) == kMenuClass
                                : ::lstrcmpA(created->lpszClass, kMenuClassName) == 0;
        if (isMenu) {
            ::SetWindowSubclass(window, &CMenuTracker::MenuProcedure, kSubclassId,
                                reinterpret_cast<DWORD_PTR>(s_current));
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK CMenuTracker::MenuProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                             DWORD_PTR object) noexcept {
    const LRESULT result = ::DefSubclassProc(window, message, wParam, lParam);
    const auto& tracker = *reinterpret_cast<const CMenuTracker*>(object);
    switch (message) {
        case WM_NCDESTROY: ::RemoveWindowSubclass(window, &CMenuTracker::MenuProcedure, id); break;
        case WM_PRINT: tracker.DrawEdge(window, reinterpret_cast<HDC>(wParam)); break;
        case WM_NCPAINT:
        case WM_PAINT: {
            const HDC dc = ::GetWindowDC(window);
            tracker.DrawEdge(window, dc);
            ::ReleaseDC(window, dc);
            break;
        }
        default: break;
    }
    return result;
}

void CMenuTracker::DrawEdge(HWND menuWindow, HDC dc) const {
    RECT window{};
    ::GetWindowRect(menuWindow, &window);
    const RECT all{0, 0, WidthOf(window), HeightOf(window)};
    const auto menu = reinterpret_cast<HMENU>(::SendMessageA(menuWindow, kGetMenuOfWindow, 0, 0));
    RECT first{};
    RECT last{};
    const int count = ::GetMenuItemCount(menu);
    // What lies between the frame and the items; with scroll arrows there is no telling where those stand.
    if (count > 0 && ::GetMenuItemRect(nullptr, menu, 0, &first) &&
        ::GetMenuItemRect(nullptr, menu, static_cast<UINT>(count) - 1, &last)) {
        RECT items{};
        ::UnionRect(&items, &first, &last);
        ::OffsetRect(&items, -window.left, -window.top);
        if (items.left >= 0 && items.top >= 0 && items.right <= all.right && items.bottom <= all.bottom) {
            const LONG barRight = items.left + Scale(kBarWidth);
            for (const auto& [top, bottom] : {std::pair{0L, items.top}, std::pair{items.bottom, all.bottom}}) {
                FillSolid(dc, {0, top, barRight, bottom}, m_colours.bar);
                FillSolid(dc, {barRight, top, all.right, bottom}, m_colours.ground);
            }
            FillSolid(dc, {items.right, 0, all.right, all.bottom}, m_colours.ground);
            FillSolid(dc, {0, 0, items.left, all.bottom}, m_colours.bar);
        }
    }
    DrawFrame(dc, all, m_colours.border);
}

CSkinImage LoadMenuImages() {
    const HRSRC found = ::FindResourceA(nullptr, MAKEINTRESOURCEA(IDR_MENU_IMAGES), RT_RCDATA);
    const HGLOBAL loaded = found ? ::LoadResource(nullptr, found) : nullptr;
    const void* bytes = loaded ? ::LockResource(loaded) : nullptr;
    if (!bytes) return {};
    const std::optional<Bitmap> image =
        DecodeImage({static_cast<const std::byte*>(bytes), ::SizeofResource(nullptr, found)});
    return image ? CSkinImage::FromBitmap(*image) : CSkinImage();
}

void CPopupMenu::Add(int command, const std::string& text, MenuImage image, MenuState state) {
    m_items.push_back({.command = command, .text = text, .image = image, .state = state, .subMenu = nullptr});
}

void CPopupMenu::AddSeparator() {
    m_items.emplace_back();
}

void CPopupMenu::AddSubMenu(CPopupMenu&& menu, const std::string& text, MenuImage image, MenuState state) {
    m_items.push_back({.command = 0,
                       .text = text,
                       .image = image,
                       .state = state,
                       .subMenu = std::make_unique<CPopupMenu>(std::move(menu))});
}

int CPopupMenu::Track(HWND owner, POINT point, UINT flags, const Look& look, const CSkinImage* images) const {
    const int chosen = CMenuTracker(*this, owner, look, images).Track(point, flags);
    if (chosen != 0 && (flags & TPM_RETURNCMD) == 0) {
        ::PostMessageA(owner, WM_COMMAND, static_cast<WPARAM>(chosen), 0);
    }
    return chosen;
}

int CPopupMenu::TrackAtTray(HWND owner, POINT point, UINT flags, const Look& look, const CSkinImage* images) const {
    // Only the menu of the foreground window hears of a click elsewhere, and only a message after it lets the next
    // one open.
    ::SetForegroundWindow(owner);
    const int chosen = Track(owner, point, flags, look, images);
    ::PostMessageA(owner, WM_NULL, 0, 0);
    return chosen;
}

ListCommand TrackListMenu(HWND owner, POINT point, const Look& look, bool hasSelection) {
    const Language language = OpenLanguage();
    CPopupMenu menu;
    menu.Add(static_cast<int>(ListCommand::Copy), language.GetText(1070, "&Copy") + "\tCtrl+C", MenuImage::Copy,
             {.isDisabled = !hasSelection});
    menu.Add(static_cast<int>(ListCommand::SelectAll), language.GetText(1071, "Select &all") + "\tCtrl+A",
             MenuImage::SelectAll);
    menu.AddSeparator();
    menu.Add(static_cast<int>(ListCommand::Refresh), language.GetText(1072, "&Refresh") + "\tF5",
             MenuImage::Refresh);
    const CSkinImage images = LoadMenuImages();
    return static_cast<ListCommand>(menu.Track(owner, point, TPM_RETURNCMD, look, &images));
}

}  // namespace brennvar
