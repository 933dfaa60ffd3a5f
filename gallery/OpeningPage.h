// A page that only opens something.
#pragma once

#include <functional>
#include <utility>

#include "GalleryPage.h"

namespace brennvar::gallery {

class OpeningPage final : public GalleryPage {
public:
    using Open = std::function<void(HWND window, const Look& look)>;
    explicit OpeningPage(Open open) : m_open(std::move(open)) {}
    [[nodiscard]] SIZE Size() const override { return {960, 640}; }
    void Fill(HWND, const Look&) override {}
    void OnShown(HWND window, const Look& look) override { m_open(window, look); }

private:
    const Open m_open;
};

}  // namespace brennvar::gallery
