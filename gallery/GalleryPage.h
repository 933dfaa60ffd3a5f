// A page of the gallery: controls in all of their states, side by side.
#pragma once

#include <memory>

#include "ui/Look_win.h"
#include "ui/Paint_win.h"

namespace brennvar::gallery {

class GalleryPage {
public:
    GalleryPage() = default;
    GalleryPage(const GalleryPage&) = delete;
    GalleryPage& operator=(const GalleryPage&) = delete;
    virtual ~GalleryPage() = default;

    // The room that the page needs, pixels of the screen.
    [[nodiscard]] virtual SIZE Size() const = 0;
    // Makes the page's controls. They live as long as the page.
    virtual void Fill(HWND window, const Look& look) = 0;
    // The window's ground.
    virtual void PaintGround(HDC dc, const RECT& client, const Look& look) const {
        FillSolid(dc, client, look.colours.page);
    }
    // The window is shown now: where a dialog or a menu is to be opened.
    virtual void OnShown(HWND /*window*/, const Look& /*look*/) {}
    // What the window does not deal with itself.
    virtual void OnCommand(HWND /*window*/, int /*id*/, int /*notification*/) {}
};

// One function for each page; main.cpp has the list of their names.
[[nodiscard]] std::unique_ptr<GalleryPage> MakeControlsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeEventsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeMessageGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeQuestionGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationDenyGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationNoneGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationUnknownGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationHostGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationTemporaryGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationLongestGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConfirmationFirstGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeActivityGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeQuestionsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeAboutGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeMenuGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeTrayBlockGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeTrayAllowGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeNoticeGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeNoticeLinkGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeModesGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeBalloonGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeTreeGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakePasswordGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakePasswordWrongGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakePasswordUnconfirmedGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeSetPasswordGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeSetPasswordWrongGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeSetPasswordUnconfirmedGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakePacketDetailsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeLargePacketDetailsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeLogDetailsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeConnectionDetailsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeImportGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeImportAdvancedGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeImportUnreadableGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeNewRuleGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeEditRuleGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeWrongRuleGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeTraceGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeWhoIsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeGraphsGallery();
[[nodiscard]] std::unique_ptr<GalleryPage> MakeStatisticsGallery();

}  // namespace brennvar::gallery
