// A window as a screen reader sees it, of this process or another one. COM has to be ready on the thread.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/Windows_win.h"
// windows.h must stand before this.
#include <oleacc.h>

namespace brennvar::test {

[[nodiscard]] inline VARIANT Part(LONG number) {
    VARIANT part{};
    part.vt = VT_I4;
    part.lVal = number;
    return part;
}

class AccessibleReader {
public:
    explicit AccessibleReader(HWND window) {
        m_found = ::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                               reinterpret_cast<void**>(&m_object));
    }
    AccessibleReader(AccessibleReader&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr)), m_found(other.m_found) {}
    AccessibleReader& operator=(AccessibleReader&&) = delete;
    ~AccessibleReader() {
        if (m_object) m_object->Release();
    }
    [[nodiscard]] HRESULT Found() const { return m_found; }
    explicit operator bool() const { return m_object != nullptr; }
    IAccessible* operator->() const { return m_object; }

    [[nodiscard]] std::wstring Name(LONG part = 0) const { return Text(&IAccessible::get_accName, part); }
    [[nodiscard]] std::wstring Value(LONG part = 0) const { return Text(&IAccessible::get_accValue, part); }
    [[nodiscard]] std::wstring Description(LONG part = 0) const {
        return Text(&IAccessible::get_accDescription, part);
    }
    [[nodiscard]] std::wstring Shortcut(LONG part = 0) const {
        return Text(&IAccessible::get_accKeyboardShortcut, part);
    }
    [[nodiscard]] std::wstring Action(LONG part = 0) const {
        return Text(&IAccessible::get_accDefaultAction, part);
    }
    [[nodiscard]] LONG Role(LONG part = 0) const { return Number(&IAccessible::get_accRole, part); }
    [[nodiscard]] LONG State(LONG part = 0) const { return Number(&IAccessible::get_accState, part); }
    [[nodiscard]] bool Is(DWORD flag, LONG part = 0) const { return (static_cast<DWORD>(State(part)) & flag) != 0; }
    // On the screen; empty when it is not told.
    [[nodiscard]] RECT Place(LONG part = 0) const {
        LONG left = 0, top = 0, width = 0, height = 0;
        if (FAILED(m_object->accLocation(&left, &top, &width, &height, Part(part)))) return {};
        return {left, top, left + width, top + height};
    }
    [[nodiscard]] LONG Count() const {
        LONG count = -1;
        return SUCCEEDED(m_object->get_accChildCount(&count)) ? count : -1;
    }
    [[nodiscard]] HRESULT Do(LONG part = 0) const { return m_object->accDoDefaultAction(Part(part)); }

private:
    std::wstring Text(HRESULT (STDMETHODCALLTYPE IAccessible::*get)(VARIANT, BSTR*), LONG part) const {
        BSTR text = nullptr;
        if (FAILED((m_object->*get)(Part(part), &text)) || !text) return {};
        std::wstring told(text, ::SysStringLen(text));
        ::SysFreeString(text);
        return told;
    }
    LONG Number(HRESULT (STDMETHODCALLTYPE IAccessible::*get)(VARIANT, VARIANT*), LONG part) const {
        VARIANT number{};
        return SUCCEEDED((m_object->*get)(Part(part), &number)) && number.vt == VT_I4 ? number.lVal : -1;
    }

    IAccessible* m_object = nullptr;
    HRESULT m_found = E_FAIL;
};

// Everything in a window, at any depth, as a screen reader comes upon it.
struct Told {
    LONG role;
    std::wstring name;
    LONG state;
    HWND window;  // that it is, or that it is a part of
    RECT place;   // on the screen

    [[nodiscard]] bool Is(DWORD flag) const { return (static_cast<DWORD>(state) & flag) != 0; }
};

inline void WalkAccessible(HWND window, std::vector<Told>& told) {
    const AccessibleReader reader(window);
    if (!reader) return;
    const auto add = [&](LONG part) {
        told.push_back({reader.Role(part), reader.Name(part), reader.State(part), window, reader.Place(part)});
    };
    add(0);
    for (LONG part = 1; part <= reader.Count(); ++part) {
        IDispatch* object = nullptr;
        const HRESULT result = reader->get_accChild(Part(part), &object);
        if (result == S_FALSE) {
            add(part);
            continue;
        }
        if (FAILED(result) || !object) continue;
        IAccessible* child = nullptr;
        if (SUCCEEDED(object->QueryInterface(__uuidof(IAccessible), reinterpret_cast<void**>(&child)))) {
            HWND inside = nullptr;
            if (SUCCEEDED(::WindowFromAccessibleObject(child, &inside)) && inside != window) {
                WalkAccessible(inside, told);
            }
            child->Release();
        }
        object->Release();
    }
}

}  // namespace brennvar::test
