// The COM object by which a client knows one of our windows. There is one for each window, however many clients
// hold it and for as long as they do: when the window has gone, its answer to everything is CO_E_OBJNOTCONNECTED.
// Numbers of parts come from the client and are checked against what is there now.
#pragma once

#include "ui/Accessible_win.h"
// windows.h must stand before this.
#include <oleacc.h>

#include <atomic>

namespace brennvar {

class AccessibleObject final : public IAccessible {
public:
    // More selected rows than these are not told.
    static constexpr std::size_t kMostSelected = 10'000;

    explicit AccessibleObject(AccessibleSource& source) : m_source(&source), m_thread(::GetCurrentThreadId()) {}
    void Disconnect() { m_source = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;

    // Nobody asks by name.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(LONG left, LONG top, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    // Texts are typed, not set.
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

private:
    // Ends with the last reference.
    ~AccessibleObject() = default;

    // Of the window, when there still is one and its thread asks.
    // answer: HRESULT(AccessibleSource&).
    template <class Answer>
    HRESULT WithSource(const Answer& answer) const noexcept;
    // Of the window or a part, when the client means one that is there.
    // answer: HRESULT(AccessibleSource&, int part, const AccessibleThing&).
    template <class Answer>
    HRESULT WithThing(const VARIANT& child, const Answer& answer) const noexcept;
    // S_FALSE for an empty text. get: std::wstring(const AccessibleThing&).
    template <class Get>
    HRESULT TellText(const VARIANT& child, BSTR* text, const Get& get) const noexcept;

    AccessibleSource* m_source;
    const DWORD m_thread;
    std::atomic<ULONG> m_references = 1;
};

}  // namespace brennvar
