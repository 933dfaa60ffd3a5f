// The grounds of a page's groups, its cards. A card may lead to another page: a short cut for the mouse, without a
// window of its own, since the keyboard and screen readers have the buttons of the pages for the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/Windows_win.h"
#include "ui/Look_win.h"
#include "ui/PicturePart_win.h"
#include "ui/Touch.h"

namespace brennvar {

struct PageCard {
    RECT place{};     // in the page's client coordinates
    int command = 0;  // for the window that the page belongs to, when the card is clicked; 0: it leads nowhere
};

class CardLinks {
public:
    // What the mouse did to the cards before is over.
    void Set(std::vector<PageCard> cards) { m_cards.assign(cards.begin(), cards.end()); }
    void Paint(HDC dc, const Palette& colours) const;
    // For a picture that is kept: each card where it stands.
    void TellParts(PictureParts& parts) const;
    // The page hands on its messages; an answer where it has nothing else to do. They are believed from anybody:
    // all that comes of them is a page that opens.
    [[nodiscard]] std::optional<LRESULT> OnMessage(HWND page, UINT message, LPARAM lParam);

private:
    struct Shown : PageCard {
        Shown(const PageCard& card) : PageCard(card) {}
        Touch touch = Touch::Rest;
        std::uint64_t look = NextLook();
    };

    [[nodiscard]] Shown* LinkAt(POINT point);
    // That one alone is touched; null: none is.
    void SetTouch(HWND page, const Shown* touched, Touch touch);
    void OnMove(HWND page, POINT point);
    void OnRelease(HWND page, POINT point);

    std::vector<Shown> m_cards;
};

}  // namespace brennvar
