// Fields for an IPv4 address: four numbers with dots between.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "controls/FieldFrame_win.h"
#include "ui/Control_win.h"

namespace brennvar {

// A SysIPAddress32: IPM_ messages, its keys and its window text work; the parent gets IPN_FIELDCHANGED and
// EN_CHANGE.
class CIpAddressBox final : public CControl {
public:
    // Makes it, visible, of no size yet; FieldHeight() suits it.
    void Create(HWND parent, int id, const Look& look);
    // Takes over an address box of a dialog template; its border goes.
    void Adopt(HWND control, const Look& look);

    // An address in host order: 0x7F000001 is 127.0.0.1. An empty number counts as 0.
    [[nodiscard]] std::uint32_t Address() const;
    void SetAddress(std::uint32_t address) const;
    // All four numbers are empty.
    [[nodiscard]] bool IsBlank() const;
    void Clear() const;
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void SetUp(const Look& look);
    void LayOutFields() const;
    // A click beside the numbers: x in client coordinates.
    void FocusFieldAt(int x) const;
    [[nodiscard]] bool HasFieldFocus() const;
    [[nodiscard]] FieldState State() const;
    void OnPaint(HDC dc, const RECT& client) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    Palette m_colours;
    int m_lineHeight = 0;
    std::array<HWND, 4> m_fields{};  // from left to right
};

}  // namespace brennvar
