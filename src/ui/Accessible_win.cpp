#include "ui/Accessible_win.h"

#include "base/ComOfThread_win.h"
#include "ui/AccessibleObject_win.h"
#include "ui/Control_win.h"
#include "ui/Dialog_win.h"
#include "ui/Paint_win.h"
#include "ui/Window_win.h"

namespace brennvar {
namespace {

// Posted to the window itself: wParam is the part. Whoever else posts it gets no more than by a click.
constexpr UINT kDoAccessible = WM_APP + 0x2001;

RECT PlaceIn(HWND parent, HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

bool IsOnOneLine(const RECT& left, const RECT& right) {
    return left.right <= right.left && left.top < right.bottom && right.top < left.bottom;
}

// The sibling before a field that is a label or, on its line, a check box.
AccessibleSource* NamingSibling(HWND field, AccessibleRole role) {
    const HWND before = ::GetWindow(field, GW_HWNDPREV);
    // Another field would look for its own name first, and so on.
    char className[8] = {};
    ::GetClassNameA(before, className, sizeof className);
    const char* const wanted = role == AccessibleRole::StaticText ? "Static" : "Button";
    if (::lstrcmpiA(className, wanted) != 0) return nullptr;
    AccessibleSource* const source = AccessibleSource::Of(before);
    const std::optional<AccessibleThing> thing = source ? source->AccessibleThingAt(0) : std::nullopt;
    if (!thing || thing->role != role || (thing->state & STATE_SYSTEM_INVISIBLE) != 0) return nullptr;
    const HWND parent = ::GetParent(field);
    const bool isLabel = role == AccessibleRole::StaticText;
    return isLabel || IsOnOneLine(PlaceIn(parent, before), PlaceIn(parent, field)) ? source : nullptr;
}

}  // namespace

void AccessibleThing::SetCaption(std::string_view caption) {
    name.clear();
    shortcut = 0;
    for (std::size_t at = 0; at < caption.size(); ++at) {
        if (caption[at] == '&' && at + 1 < caption.size() && caption[++at] != '&' && shortcut == 0) {
            shortcut = caption[at];
        }
        const bool endsLine = caption[at] == '\r' || caption[at] == '\n';
        if (!endsLine || !name.ends_with(' ')) name += endsLine ? ' ' : caption[at];
    }
}

AccessibleSource* AccessibleSource::Of(HWND window) {
    if (CControl* const control = CControl::Of(window)) return control;
    if (CWindow* const own = CWindow::Of(window)) return own;
    return CDialog::Of(window);
}

int AccessibleSource::AccessiblePartCount() {
    const AccessibleParts* const parts = GetAccessibleParts();
    return parts ? parts->PartCount() : 0;
}

std::optional<AccessibleThing> AccessibleSource::AccessibleThingAt(int part) {
    const HWND window = AccessibleWindow();
    if (!window || part < 0 || part > AccessiblePartCount()) return std::nullopt;
    AccessibleThing thing;
    thing.font = reinterpret_cast<HFONT>(::SendMessageA(window, WM_GETFONT, 0, 0));
    ::GetClientRect(window, &thing.place);
    const bool takesKeys = (::GetWindowLongPtrA(window, GWL_STYLE) & WS_TABSTOP) != 0;
    thing.Set(STATE_SYSTEM_INVISIBLE, !::IsWindowVisible(window));
    thing.Set(STATE_SYSTEM_UNAVAILABLE, !::IsWindowEnabled(window));
    thing.Set(STATE_SYSTEM_FOCUSABLE, takesKeys);
    thing.Set(STATE_SYSTEM_FOCUSED, ::GetFocus() == window);
    TellAccessible(thing);
    if (part == 0) return thing;
    AccessibleThing partThing;
    partThing.font = thing.font;
    partThing.state = thing.state & (STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_UNAVAILABLE);
    GetAccessibleParts()->TellPart(part, partThing);
    return partThing;
}

bool AccessibleSource::TakesInput() const {
    const HWND window = AccessibleWindow();
    // A window that an open dialog keeps from input keeps its controls from it as well.
    return window && ::IsWindowVisible(window) && ::IsWindowEnabled(window) &&
           ::IsWindowEnabled(::GetAncestor(window, GA_ROOT));
}

bool AccessibleSource::PostAccessibleAction(int part) const {
    return TakesInput() && ::PostMessageA(AccessibleWindow(), kDoAccessible, static_cast<WPARAM>(part), 0);
}

std::optional<LRESULT> AccessibleSource::AnswerAccessible(UINT message, WPARAM wParam, LPARAM lParam) {
    // Only half of the object's number is told.
    const bool isWanted = message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT;
    if (!isWanted && message != kDoAccessible) return std::nullopt;
    try {
        if (message == kDoAccessible) {
            DoNow(static_cast<int>(wParam));
            return 0;
        }
        // Its messages come through the loop of this thread.
        thread_local const ComOfThread com;
        if (!m_object) m_object = new AccessibleObject(*this);
        return ::LresultFromObject(__uuidof(IAccessible), wParam, m_object);
    } catch (...) {
        return 0;  // nothing may be thrown across Windows
    }
}

void AccessibleSource::DoNow(int part) {
    const std::optional<AccessibleThing> thing = AccessibleThingAt(part);
    if (!thing || thing->action == AccessibleAction::None || !TakesInput()) return;
    if (part == 0) return DoAccessible();
    GetAccessibleParts()->DoPart(part);
}

void AccessibleSource::EndAccessible() {
    if (!m_object) return;
    m_object->Disconnect();
    m_object->Release();
    m_object = nullptr;
}

void NameByLabel(HWND field, AccessibleThing& thing) {
    AccessibleSource* const parent = AccessibleSource::Of(::GetParent(field));
    const AccessibleParts* const texts = parent ? parent->GetAccessibleParts() : nullptr;
    const std::string drawn = texts ? texts->LabelOf(field) : std::string();
    thing.name.clear();
    if (AccessibleSource* const check = NamingSibling(field, AccessibleRole::CheckBox)) {
        thing.name = check->AccessibleThingAt(0)->name + (drawn.empty() ? "" : " " + drawn);
    } else if (!drawn.empty()) {
        thing.name = drawn;
    } else if (AccessibleSource* const label = NamingSibling(field, AccessibleRole::StaticText)) {
        const std::optional<AccessibleThing> told = label->AccessibleThingAt(0);
        thing.name = told->name;
        thing.shortcut = told->shortcut;
    }
    // The colon leads the eye to the field.
    if (thing.name.ends_with(':')) thing.name.pop_back();
}

}  // namespace brennvar
