#include "ui/AccessibleObject_win.h"

#include <algorithm>
#include <utility>

#include "config/Resources_win.h"
#include "ui/Paint_win.h"
#include "ui/WideText_win.h"

namespace brennvar {
namespace {

#define SAME_ROLE(name, windows) static_assert(static_cast<int>(AccessibleRole::name) == ROLE_SYSTEM_##windows)
SAME_ROLE(Alert, ALERT);
SAME_ROLE(ToolTip, TOOLTIP);
SAME_ROLE(Pane, PANE);
SAME_ROLE(Chart, CHART);
SAME_ROLE(Dialog, DIALOG);
SAME_ROLE(Grouping, GROUPING);
SAME_ROLE(ColumnHeader, COLUMNHEADER);
SAME_ROLE(Link, LINK);
SAME_ROLE(List, LIST);
SAME_ROLE(ListItem, LISTITEM);
SAME_ROLE(Tree, OUTLINE);
SAME_ROLE(TreeItem, OUTLINEITEM);
SAME_ROLE(PageTab, PAGETAB);
SAME_ROLE(PropertyPage, PROPERTYPAGE);
SAME_ROLE(StaticText, STATICTEXT);
SAME_ROLE(Text, TEXT);
SAME_ROLE(Button, PUSHBUTTON);
SAME_ROLE(CheckBox, CHECKBUTTON);
SAME_ROLE(RadioButton, RADIOBUTTON);
SAME_ROLE(ComboBox, COMBOBOX);
SAME_ROLE(ProgressBar, PROGRESSBAR);
SAME_ROLE(IpAddress, IPADDRESS);
#undef SAME_ROLE
static_assert(AccessibleParts::kTakeFocus == SELFLAG_TAKEFOCUS &&
              AccessibleParts::kTakeSelection == SELFLAG_TAKESELECTION &&
              AccessibleParts::kExtendSelection == SELFLAG_EXTENDSELECTION &&
              AccessibleParts::kAddSelection == SELFLAG_ADDSELECTION &&
              AccessibleParts::kRemoveSelection == SELFLAG_REMOVESELECTION);

Text NameOf(AccessibleAction action) {
    switch (action) {
        case AccessibleAction::Press: return Text{2490, "Press"};
        case AccessibleAction::Check: return Text{2491, "Check"};
        case AccessibleAction::Uncheck: return Text{2492, "Uncheck"};
        case AccessibleAction::Select: return Text{2493, "Select"};
        case AccessibleAction::Open: return Text{2494, "Open"};
        case AccessibleAction::Expand: return Text{2495, "Expand"};
        case AccessibleAction::Collapse: return Text{2496, "Collapse"};
        case AccessibleAction::None: break;
    }
    return {};
}

// Several clients may ask again and again; the language changes with a restart only.
const Language& Words() {
    static const Language language = OpenLanguage();
    return language;
}

VARIANT Number(LONG value) {
    VARIANT variant{};
    variant.vt = VT_I4;
    variant.lVal = value;
    return variant;
}

// The numbers of several parts, one after the other.
class PartNumbers final : public IEnumVARIANT {
public:
    explicit PartNumbers(std::vector<int> parts) : m_parts(std::move(parts)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        const bool isKnown = id == __uuidof(IUnknown) || id == __uuidof(IEnumVARIANT);
        *object = isKnown ? static_cast<IEnumVARIANT*>(this) : nullptr;
        if (isKnown) AddRef();
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
        if (!items || (!fetched && count != 1)) return E_POINTER;
        ULONG got = 0;
        for (; got < count && m_next < m_parts.size(); ++got) items[got] = Number(m_parts[m_next++]);
        if (fetched) *fetched = got;
        return got == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = m_parts.size() - m_next;
        m_next += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        m_next = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

private:
    ~PartNumbers() = default;

    const std::vector<int> m_parts;
    std::size_t m_next = 0;
    std::atomic<ULONG> m_references = 1;
};

std::wstring WideOf(const std::string& text, const AccessibleThing& thing) {
    return Widen(text, thing.font);
}

// The windows in a window that can be seen when it is, in the order of Tab.
std::vector<HWND> WindowsIn(HWND parent) {
    std::vector<HWND> windows;
    for (HWND child = ::GetWindow(parent, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if ((::GetWindowLongPtrA(child, GWL_STYLE) & WS_VISIBLE) != 0) windows.push_back(child);
    }
    return windows;
}

HRESULT ObjectOf(HWND window, LONG part, IDispatch** object) {
    return ::AccessibleObjectFromWindow(window, static_cast<DWORD>(part), __uuidof(IDispatch),
                                        reinterpret_cast<void**>(object));
}

HRESULT TellWindow(HWND window, LONG part, VARIANT* child) {
    const HRESULT result = ObjectOf(window, part, &child->pdispVal);
    if (SUCCEEDED(result)) child->vt = VT_DISPATCH;
    return result;
}

// Parts come first and then the windows, all of them counted from 1. Nothing: there is no such neighbour.
std::optional<LONG> Neighbour(LONG direction, LONG start, LONG count) {
    LONG wanted = 0;
    switch (direction) {
        case NAVDIR_FIRSTCHILD: wanted = start == 0 ? 1 : 0; break;
        case NAVDIR_LASTCHILD: wanted = start == 0 ? count : 0; break;
        case NAVDIR_NEXT: wanted = start == 0 ? 0 : start + 1; break;
        case NAVDIR_PREVIOUS: wanted = start - 1; break;
        default: break;
    }
    return wanted >= 1 && wanted <= count ? std::optional(wanted) : std::nullopt;
}

}  // namespace

HRESULT AccessibleObject::QueryInterface(REFIID id, void** object) {
    if (!object) return E_POINTER;
    const bool isKnown = id == __uuidof(IUnknown) || id == __uuidof(IDispatch) || id == __uuidof(IAccessible);
    *object = isKnown ? static_cast<IAccessible*>(this) : nullptr;
    if (isKnown) AddRef();
    return isKnown ? S_OK : E_NOINTERFACE;
}

ULONG AccessibleObject::Release() {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
}

HRESULT AccessibleObject::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

template <class Answer>
HRESULT AccessibleObject::WithSource(const Answer& answer) const noexcept {
    // A client inside of this process gets the object itself, and could call it on any thread.
    if (::GetCurrentThreadId() != m_thread) return RPC_E_WRONG_THREAD;
    if (!m_source || !m_source->AccessibleWindow()) return CO_E_OBJNOTCONNECTED;
    try {
        return answer(*m_source);
    } catch (...) {
        return E_OUTOFMEMORY;  // no exception may cross COM
    }
}

template <class Answer>
HRESULT AccessibleObject::WithThing(const VARIANT& child, const Answer& answer) const noexcept {
    return WithSource([&](AccessibleSource& source) -> HRESULT {
        if (child.vt != VT_I4) return E_INVALIDARG;
        const std::optional<AccessibleThing> thing = source.AccessibleThingAt(child.lVal);
        return thing ? answer(source, child.lVal, *thing) : E_INVALIDARG;
    });
}

template <class Get>
HRESULT AccessibleObject::TellText(const VARIANT& child, BSTR* text, const Get& get) const noexcept {
    if (!text) return E_POINTER;
    *text = nullptr;
    return WithThing(child, [&](AccessibleSource&, int, const AccessibleThing& thing) -> HRESULT {
        const std::wstring told = get(thing);
        if (told.empty()) return S_FALSE;
        *text = ::SysAllocStringLen(told.data(), static_cast<UINT>(told.size()));
        return *text ? S_OK : E_OUTOFMEMORY;
    });
}

HRESULT AccessibleObject::get_accParent(IDispatch** parent) {
    if (!parent) return E_POINTER;
    *parent = nullptr;
    return WithSource(
        [&](AccessibleSource& source) { return ObjectOf(source.AccessibleWindow(), OBJID_WINDOW, parent); });
}

HRESULT AccessibleObject::get_accChildCount(LONG* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return WithSource([&](AccessibleSource& source) {
        *count = source.AccessiblePartCount() + static_cast<LONG>(WindowsIn(source.AccessibleWindow()).size());
        return S_OK;
    });
}

HRESULT AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    return WithSource([&](AccessibleSource& source) -> HRESULT {
        if (child.vt != VT_I4 || child.lVal < 0) return E_INVALIDARG;
        if (child.lVal == CHILDID_SELF)
            return QueryInterface(__uuidof(IDispatch), reinterpret_cast<void**>(object));
        const int parts = source.AccessiblePartCount();
        if (child.lVal <= parts) return S_FALSE;  // it has no object of its own
        const std::vector<HWND> windows = WindowsIn(source.AccessibleWindow());
        const auto index = static_cast<std::size_t>(child.lVal - parts - 1);
        return index < windows.size() ? ObjectOf(windows[index], OBJID_WINDOW, object) : E_INVALIDARG;
    });
}

HRESULT AccessibleObject::get_accName(VARIANT child, BSTR* name) {
    return TellText(child, name, [](const AccessibleThing& thing) { return WideOf(thing.name, thing); });
}

HRESULT AccessibleObject::get_accValue(VARIANT child, BSTR* value) {
    return TellText(child, value, [](const AccessibleThing& thing) {
        return WideOf(thing.value.value_or(std::string()), thing);
    });
}

HRESULT AccessibleObject::get_accDescription(VARIANT child, BSTR* description) {
    return TellText(child, description,
                    [](const AccessibleThing& thing) { return WideOf(thing.description, thing); });
}

HRESULT AccessibleObject::get_accHelp(VARIANT child, BSTR* help) {
    return TellText(child, help, [](const AccessibleThing&) { return std::wstring(); });
}

HRESULT AccessibleObject::get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) {
    if (!topic) return E_POINTER;
    *topic = 0;
    return TellText(child, file, [](const AccessibleThing&) { return std::wstring(); });
}

HRESULT AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
    return TellText(child, shortcut, [](const AccessibleThing& thing) {
        if (thing.shortcut == 0) return std::wstring();
        std::wstring letter = WideOf(std::string(1, thing.shortcut), thing);
        ::CharUpperW(letter.data());
        return L"Alt+" + letter;
    });
}

HRESULT AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* action) {
    return TellText(child, action, [](const AccessibleThing& thing) {
        return thing.action == AccessibleAction::None ? std::wstring()
                                                      : WideOf(Words().GetText(NameOf(thing.action)), thing);
    });
}

HRESULT AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
    if (!role) return E_POINTER;
    *role = {};
    return WithThing(child, [&](AccessibleSource&, int, const AccessibleThing& thing) {
        *role = Number(static_cast<LONG>(thing.role));
        return S_OK;
    });
}

HRESULT AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
    if (!state) return E_POINTER;
    *state = {};
    return WithThing(child, [&](AccessibleSource&, int, const AccessibleThing& thing) {
        *state = Number(static_cast<LONG>(thing.state));
        return S_OK;
    });
}

HRESULT AccessibleObject::get_accFocus(VARIANT* child) {
    if (!child) return E_POINTER;
    *child = {};
    return WithSource([&](AccessibleSource& source) -> HRESULT {
        const HWND focus = ::GetFocus();
        if (focus == source.AccessibleWindow()) {
            const AccessibleParts* const parts = source.GetAccessibleParts();
            *child = Number(parts ? parts->FocusedPart() : CHILDID_SELF);
            return S_OK;
        }
        return ::IsChild(source.AccessibleWindow(), focus) ? TellWindow(focus, OBJID_CLIENT, child) : S_FALSE;
    });
}

HRESULT AccessibleObject::get_accSelection(VARIANT* children) {
    if (!children) return E_POINTER;
    *children = {};
    return WithSource([&](AccessibleSource& source) -> HRESULT {
        const AccessibleParts* const all = source.GetAccessibleParts();
        std::vector<int> parts = all ? all->SelectedParts(kMostSelected) : std::vector<int>();
        if (parts.empty()) return S_FALSE;
        if (parts.size() == 1) {
            *children = Number(parts.front());
            return S_OK;
        }
        children->punkVal = new PartNumbers(std::move(parts));
        children->vt = VT_UNKNOWN;
        return S_OK;
    });
}

HRESULT AccessibleObject::accSelect(LONG flags, VARIANT child) {
    return WithThing(child, [&](AccessibleSource& source, int part, const AccessibleThing& thing) -> HRESULT {
        if ((thing.state & (STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_UNAVAILABLE)) != 0) return S_FALSE;
        if (!source.TakesInput()) return S_FALSE;  // behind a dialog
        if (part > 0) return source.GetAccessibleParts()->SelectPart(part, flags) ? S_OK : E_INVALIDARG;
        if (flags != SELFLAG_TAKEFOCUS) return E_INVALIDARG;
        ::SetFocus(source.AccessibleWindow());
        return S_OK;
    });
}

HRESULT AccessibleObject::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
    if (!left || !top || !width || !height) return E_POINTER;
    *left = *top = *width = *height = 0;
    return WithThing(child, [&](AccessibleSource& source, int, const AccessibleThing& thing) {
        RECT place = thing.place;
        ::MapWindowPoints(source.AccessibleWindow(), nullptr, reinterpret_cast<POINT*>(&place), 2);
        *left = place.left;
        *top = place.top;
        *width = WidthOf(place);
        *height = HeightOf(place);
        return S_OK;
    });
}

HRESULT AccessibleObject::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
    if (!end) return E_POINTER;
    *end = {};
    return WithSource([&](AccessibleSource& source) -> HRESULT {
        const std::vector<HWND> windows = WindowsIn(source.AccessibleWindow());
        const LONG parts = source.AccessiblePartCount();
        const LONG count = parts + static_cast<LONG>(windows.size());
        if (start.vt != VT_I4 || start.lVal < 0 || start.lVal > count) return E_INVALIDARG;
        const std::optional<LONG> wanted = Neighbour(direction, start.lVal, count);
        if (!wanted) return S_FALSE;
        if (*wanted > parts)
            return TellWindow(windows[static_cast<std::size_t>(*wanted - parts - 1)], OBJID_WINDOW, end);
        *end = Number(*wanted);
        return S_OK;
    });
}

HRESULT AccessibleObject::accHitTest(LONG left, LONG top, VARIANT* child) {
    if (!child) return E_POINTER;
    *child = {};
    return WithSource([&](AccessibleSource& source) -> HRESULT {
        const HWND window = source.AccessibleWindow();
        POINT point{left, top};
        ::ScreenToClient(window, &point);
        const HWND hit = ::ChildWindowFromPointEx(window, point, CWP_SKIPINVISIBLE);
        if (!hit) return S_FALSE;
        if (hit != window) return TellWindow(hit, OBJID_WINDOW, child);
        const AccessibleParts* const parts = source.GetAccessibleParts();
        *child = Number(parts ? parts->PartAt(point) : CHILDID_SELF);
        return S_OK;
    });
}

HRESULT AccessibleObject::accDoDefaultAction(VARIANT child) {
    return WithThing(child, [](AccessibleSource& source, int part, const AccessibleThing& thing) -> HRESULT {
        if (thing.action == AccessibleAction::None) return DISP_E_MEMBERNOTFOUND;
        return source.PostAccessibleAction(part) ? S_OK : E_FAIL;
    });
}

}  // namespace brennvar
