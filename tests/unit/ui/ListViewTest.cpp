#include "ui/ListView.h"

#include <gtest/gtest.h>

#include <set>

#include "ui/Controls.h"
#include "ui/Page.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

// A page with a list of numbered rows.
class ListPage final : public CPage, private ListRows {
public:
    explicit ListPage(const CFonts& fonts) : CPage(fonts, "title", "line") {}
    int rows = 0;
    std::string suffix;
    mutable std::set<int> asked;
    CListView list;

    [[nodiscard]] std::string Cell(int row, int column) const {
        char text[64] = "?";
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof(text);
        ::SendMessageA(list.Window(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return item.pszText;
    }

private:
    void OnCreateContent() override {
        const ListColumn columns[] = {{.title = "A", .width = 100}, {.title = "B", .width = 50, .takesRoom = true}};
        list.Create(Window(), IDC_PAGE_LIST, IDC_LIST_EMPTY, Fonts().Text(), columns, *this);
    }
    void OnPlaceContent(const RECT& place) override { list.Place(place); }
    LRESULT OnNotify(NMHDR& header) override { return list.OnNotify(header); }
    [[nodiscard]] int RowCount() const override { return rows; }
    [[nodiscard]] std::string CellText(int row, int column) const override {
        asked.insert(row);
        return std::to_string(row) + "/" + std::to_string(column) + suffix;
    }
};

class CListViewTest : public testing::Test {
protected:
    CFonts fonts;
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 600, 400,
                                    nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    ListPage page{fonts};

    void SetUp() override {
        ASSERT_TRUE(page.Create(parent));
        page.Place({0, 0, 600, 400});
        page.Show();
    }
    ~CListViewTest() override { ::DestroyWindow(parent); }
    void SetRows(int count) {
        page.rows = count;
        page.list.Refresh();
    }
};

TEST_F(CListViewTest, AsksOnlyForWhatIsVisible) {
    SetRows(100'000);
    page.asked.clear();
    ::RedrawWindow(page.list.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_FALSE(page.asked.empty());
    EXPECT_LT(page.asked.size(), 100U);
    EXPECT_EQ(page.Cell(99'999, 1), "99999/1");
}

TEST_F(CListViewTest, CutsTextToTheBufferItIsGiven) {
    SetRows(1);
    page.suffix = std::string(1000, 'x');
    const std::string cell = page.Cell(0, 0);
    EXPECT_EQ(cell.size(), 63U);
    EXPECT_TRUE(cell.starts_with("0/0xxx"));
}

TEST_F(CListViewTest, AnswersForRowsThatAreGone) {
    SetRows(5);
    page.rows = 2;  // the list has not heard of it yet
    EXPECT_EQ(page.Cell(4, 0), "");
    EXPECT_FALSE(page.asked.contains(4));
}

TEST_F(CListViewTest, KeepsASelectionOnlyWhileItsRowExists) {
    SetRows(5);
    EXPECT_EQ(page.list.SelectedRow(), -1);
    page.list.SelectRow(4);
    page.list.SelectRow(3);
    EXPECT_EQ(page.list.SelectedRow(), 3);
    SetRows(4);
    EXPECT_EQ(page.list.SelectedRow(), 3);
    SetRows(3);
    EXPECT_EQ(page.list.SelectedRow(), -1);
}

TEST_F(CListViewTest, SaysWhyItIsEmptyOnlyWhileItIs) {
    page.list.SetEmptyText("nothing here");
    const HWND text = page.Item(IDC_LIST_EMPTY);
    EXPECT_EQ(TextOfWindow(text), "nothing here");
    EXPECT_TRUE(::IsWindowVisible(text));
    SetRows(1);
    EXPECT_FALSE(::IsWindowVisible(text));
    SetRows(0);
    EXPECT_TRUE(::IsWindowVisible(text));
}

TEST_F(CListViewTest, OneColumnTakesTheRoomThatIsLeft) {
    const auto width = [this](int column) { return ListView_GetColumnWidth(page.list.Window(), column); };
    RECT client{};
    ::GetClientRect(page.list.Window(), &client);
    EXPECT_EQ(width(0) + width(1), client.right);
    page.Place({0, 0, 150, 400});
    EXPECT_EQ(width(1), Scale(50));  // its least width, whatever the room
}

}  // namespace
}  // namespace brennvar
