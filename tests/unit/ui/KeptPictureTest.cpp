#include "ui/KeptPicture_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/Button_win.h"
#include "controls/DrawnText_win.h"
#include "controls/Label_win.h"
#include "controls/PushGraph_win.h"
#include "dialogs/Page_win.h"
#include "support/ControlWindow.h"
#include "tree/Tree_win.h"

namespace brennvar {
namespace {

constexpr RECT kPlace{0, 0, 600, 500};

// A ground with texts, as a frame or a page has it.
class Ground final : public CWindow {
public:
    DrawnTexts texts{DrawnTexts::PaintedIn::Ground};

    Ground() {
        (void)Create({.text = "", .style = WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, .place = kPlace});
        texts.SetWindow(Window());
    }
    [[nodiscard]] bool TellParts(PictureParts& parts) const override {
        PictureParts whole;
        (void)TellWhole(whole);
        texts.TellParts(parts, whole.back().look);
        return true;
    }

private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM) override {
        if (message != WM_ERASEBKGND) return std::nullopt;
        FillSolid(reinterpret_cast<HDC>(wParam), ClientRect(), test::ControlWindow::kGround);
        texts.Paint(reinterpret_cast<HDC>(wParam));
        return TRUE;
    }
};

class Patch final : public CWindow {
public:
    explicit Patch(COLORREF colour) : m_colour(colour) {}
    int paintings = 0;
    [[nodiscard]] bool TellParts(PictureParts& parts) const override { return TellWhole(parts); }

private:
    void OnPaint(HDC dc, const RECT&) override {
        ++paintings;
        FillSolid(dc, ClientRect(), m_colour);
    }
    const COLORREF m_colour;
};

class Rows final : public TreeRows {
public:
    TreeCell first;
    TreeRow state;
    [[nodiscard]] int RowCount() const override { return 30; }
    [[nodiscard]] TreeRow Row(int row) const override { return row == 0 ? state : TreeRow{}; }
    [[nodiscard]] TreeCell Cell(int row, int column) const override {
        if (row == 0 && column == 0) return first;
        TreeCell cell;
        cell.text = std::to_string(row) + " of many, " + std::to_string(column);
        return cell;
    }
};

class KeptPictureTest : public testing::Test {
protected:
    void SetUp() override {
        const HWND parent = ground.Window();
        button.Create(parent, kButton, "Press", 1, look);
        button.MoveTo(10, 10);
        label.Create(parent, "tells nothing", LabelKind::Plain, 0, 2, look);
        label.Place({120, 10, 250, 40});
        text.Create(ground.texts, "a text", LabelKind::Bold, SS_ENDELLIPSIS, 3, look);
        text.Place({260, 10, 400, 40});
        rows.first.text = "the first";
        const TreeColumn columns[] = {{.title = "One", .width = 200}, {.title = "Two", .width = 300}};
        ASSERT_TRUE(tree.Create({.parent = parent, .id = 4, .selectsMany = true}, look, columns, rows));
        tree.Place({10, 50, 300, 300});
        samples.Push(20, 0);
        const Skin plain(nullptr, "");
        ASSERT_TRUE(graph.Create(parent, 5, "Graph", PushGraphColours(plain, "G", RGB(0, 255, 0)), look));
        graph.Place({310, 50, 590, 300});
        samples.Push(30, 0);
        for (Patch* patch : {red.get(), blue.get()}) ASSERT_TRUE(patch->Create({.parent = parent, .text = {}}));
        red->Place({10, 310, 200, 400});
        blue->Place({150, 350, 300, 480});
        (void)Picture();
    }
    [[nodiscard]] std::vector<COLORREF> Picture() {
        const HDC screen = ::GetDC(ground.Window());
        const HDC dc = picture.BringUpToDate(ground.Window(), screen);
        ::ReleaseDC(ground.Window(), screen);
        const LONG width = ground.ClientRect().right, height = ground.ClientRect().bottom;
        std::vector<COLORREF> pixels(static_cast<std::size_t>(width * height));
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(info.bmiHeader), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        const auto bitmap = static_cast<HBITMAP>(::GetCurrentObject(dc, OBJ_BITMAP));
        EXPECT_NE(::GetDIBits(dc, bitmap, 0, static_cast<UINT>(height), pixels.data(), &info, DIB_RGB_COLORS), 0);
        return pixels;
    }

    test::TestSkin skin;
    const Look look = skin.MakeLook();
    Ground ground;
    CButton button;
    CLabel label;
    CDrawnText text;
    Rows rows;
    CTree tree;
    PushGraphSamples samples{{.minimum = 0, .maximum = 100, .minimumLabel = "0", .maximumLabel = "100"}};
    C2DPushGraph graph{samples};
    // These two lie over each other.
    std::unique_ptr<Patch> red = std::make_unique<Patch>(RGB(255, 0, 0));
    std::unique_ptr<Patch> blue = std::make_unique<Patch>(RGB(0, 0, 255));
    KeptPicture picture;
};

TEST_F(KeptPictureTest, IsWhatWouldBePaintedAnewAfterWhateverChanges) {
    const auto move = [](HWND window, HWND behind, int width, int height, UINT flags) {
        ::SetWindowPos(window, behind, 0, 0, width, height, flags | SWP_NOMOVE | SWP_NOACTIVATE);
    };
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"text", [this] { text.SetText("another text"); }},
        {"text's colour", [this] { text.SetColour(RGB(0, 128, 0)); }},
        {"button pressed", [this] { ::SendMessageA(button.Window(), BM_SETSTATE, TRUE, 0); }},
        {"button let go", [this] { ::SendMessageA(button.Window(), BM_SETSTATE, FALSE, 0); }},
        {"button selected", [this] { button.SetSelected(true); }},
        {"button's text", [this] { button.SetText("Other"); }},
        {"what tells nothing", [this] { label.SetText("really nothing"); }},
        {"cell's text", [this] { rows.first.text = "the second"; }},
        {"cell's tone", [this] { rows.first.tone = Tone::Deny; }},
        {"cell's glyph", [this] { rows.first.glyph = CellGlyph::Filled; }},
        {"cell's check", [this] { rows.first.checked = true; }},
        {"row's mark", [this] { rows.state.mark = RowMark::New; }},
        {"row selected", [this] { tree.SelectRow(0); }},
        {"keyboard in the list", [this] { ::SetFocus(tree.Window()); }},
        {"scrolled by more than is seen", [this] { tree.ScrollTo(20); }},
        {"scrolled sideways", [this] { ::SendMessageA(tree.Window(), WM_MOUSEHWHEEL, 120U << 16, 0); }},
        {"sample", [this] { samples.Push(80, 0), graph.Update("80"); }},
        {"value", [this] { graph.Update("81"); }},
        {"window moved",
         [this] {
             red->Place({20, 320, 210, 410});
         }},
        {"order of windows", [&] { move(red->Window(), HWND_BOTTOM, 0, 0, SWP_NOSIZE); }},
        {"window ended", [this] { blue.reset(); }},
        {"size", [&] { move(ground.Window(), nullptr, 560, 450, SWP_NOZORDER); }},
    };
    std::vector<COLORREF> last = Picture();
    for (const auto& [name, change] : changes) {
        change();
        tree.RefreshRow(0);
        const std::vector<COLORREF> kept = Picture();
        CKeptBitmap::DropAll();
        const std::vector<COLORREF> fresh = Picture();
        EXPECT_TRUE(kept == fresh) << name;
        EXPECT_FALSE(fresh == last) << name << " is not seen";
        last = fresh;
    }
}

TEST_F(KeptPictureTest, PaintsOnlyWhatHasChanged) {
    const struct {
        std::function<void()> change;
        int reds, blues;
    } rows[] = {
        {[] {}, 0, 0},
        {[this] { text.SetText("a text far from them"); }, 0, 0},
        {[this] {
             red->Place({20, 320, 140, 340});
         },
         1, 1},  // it was over both
        {[this] { red->Repaint(); }, 1, 0},
        {[this] { ground.Repaint(); }, 1, 1},
    };
    for (const auto& row : rows) {
        red->paintings = blue->paintings = 0;
        row.change();
        (void)Picture();
        EXPECT_EQ(std::pair(red->paintings, blue->paintings), std::pair(row.reds, row.blues)) << &row - rows;
    }
}

TEST(KeptBitmapTest, GivesUpTheOldestWhereTheyBecomeTooMany) {
    constexpr SIZE kThird{1024, static_cast<LONG>(CKeptBitmap::kMostBytes / 3 / 4 / 1024)};
    const HDC screen = ::GetDC(nullptr);
    CKeptBitmap kept[4];
    for (CKeptBitmap& bitmap : kept) EXPECT_TRUE(bitmap.Make(screen, kThird));
    EXPECT_FALSE(kept[0].Dc());
    for (const int left : {1, 2, 3}) EXPECT_TRUE(kept[left].Dc()) << left;
    CKeptBitmap large;
    EXPECT_FALSE(large.Make(screen, {kThird.cx, 3 * kThird.cy + 1}));
    EXPECT_TRUE(kept[1].Dc()) << "given up for nothing";
    kept[2].Drop();
    EXPECT_TRUE(kept[0].Make(screen, kThird));
    EXPECT_TRUE(kept[1].Dc() && kept[3].Dc());
    CKeptBitmap::DropAll();
    for (const CKeptBitmap& bitmap : kept) EXPECT_FALSE(bitmap.Dc());
    ::ReleaseDC(nullptr, screen);
}

}  // namespace
}  // namespace brennvar
