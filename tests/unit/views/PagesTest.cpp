#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "ui/Controls.h"
#include "ui/ResourceIds.h"
#include "views/ApplicationsPage_win.h"
#include "views/ConnectionsPage_win.h"

namespace brennvar {
namespace {

std::string Cell(const CPage& page, int row, int column) {
    char text[300] = "";
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = sizeof(text);
    ::SendMessageA(page.Item(IDC_PAGE_LIST), LVM_GETITEMTEXTA, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&item));
    return item.pszText;
}
int RowCountOf(const CPage& page) {
    return ListView_GetItemCount(page.Item(IDC_PAGE_LIST));
}
int SelectedRowOf(const CPage& page) {
    return ListView_GetNextItem(page.Item(IDC_PAGE_LIST), -1, LVNI_SELECTED);
}
void SelectRowOf(const CPage& page, int row) {
    ListView_SetItemState(page.Item(IDC_PAGE_LIST), row, LVIS_SELECTED, LVIS_SELECTED);
}
std::string EmptyText(const CPage& page) {
    return TextOfWindow(page.Item(IDC_LIST_EMPTY));
}

class PagesTest : public testing::Test {
protected:
    CFonts fonts;
    Language language{nullptr};
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    ~PagesTest() override { ::DestroyWindow(parent); }
};

ConnectionRow Row(std::uint32_t processId, std::uint16_t localPort, std::uint32_t state) {
    ConnectionRow row;
    row.name = "a.exe";
    row.path = R"(c:\a.exe)";
    row.address = "1.2.3.4:" + std::to_string(localPort);
    row.processId = processId;
    row.localPort = localPort;
    row.state = state;
    row.bytesIn = 4'000'000'000;
    return row;
}

class ConnectionsPageTest : public PagesTest {
protected:
    int readings = 0;
    std::function<void(ConnectionsPage::Reading)> answer;
    std::optional<std::size_t> count;
    ConnectionsPage page{fonts,
                         language,
                         "title",
                         "line",
                         [this](std::function<void(ConnectionsPage::Reading)> done) {
                             ++readings;
                             answer = std::move(done);
                         },
                         [this](std::optional<std::size_t> shown) { count = shown; }};

    void SetUp() override {
        ASSERT_TRUE(page.Create(parent));
        page.Place({0, 0, 800, 500});
    }
    void Tick() { ::SendMessageA(page.Window(), WM_TIMER, 1, 0); }
};

TEST_F(ConnectionsPageTest, ReadsWhenOpenedAndThenOnTicks) {
    Tick();
    EXPECT_EQ(readings, 0);  // hidden: a tick may come late
    page.Show();
    EXPECT_EQ(readings, 1);
    answer(std::vector{Row(5, 80, 3)});
    EXPECT_EQ(count, 1U);
    Tick();
    EXPECT_EQ(readings, 2);
    // The answer comes when the page is hidden: it is taken, but not counted.
    page.Hide();
    EXPECT_EQ(count, std::nullopt);
    answer(std::vector{Row(5, 80, 3), Row(6, 81, 3)});
    EXPECT_EQ(count, std::nullopt);
    EXPECT_EQ(RowCountOf(page), 2);
    page.Show();
    EXPECT_EQ(readings, 3);
    EXPECT_EQ(count, 2U);
}

TEST_F(ConnectionsPageTest, FillsTheColumns) {
    page.Show();
    answer(std::vector{Row(4711, 80, 2)});
    const char* const expected[] = {"a.exe", "1.2.3.4:80", "SYN_RCVD", "4711", "4000000000", "0", R"(c:\a.exe)"};
    for (int column = 0; column < 7; ++column) EXPECT_EQ(Cell(page, 0, column), expected[column]) << column;
}

TEST_F(ConnectionsPageTest, SelectionFollowsItsConnection) {
    page.Show();
    answer(std::vector{Row(1, 80, 1), Row(2, 81, 4), Row(2, 81, 11)});
    SelectRowOf(page, 1);
    page.Reload();
    // The connection has gone on to another state and has moved; the listener on its port is another row.
    answer(std::vector{Row(2, 81, 11), Row(3, 82, 1), Row(1, 80, 4), Row(2, 81, 7)});
    EXPECT_EQ(SelectedRowOf(page), 3);
    page.Reload();
    answer(std::vector{Row(2, 81, 11), Row(3, 82, 1), Row(1, 80, 4), Row(4, 81, 7)});
    EXPECT_EQ(SelectedRowOf(page), -1);
}

TEST_F(ConnectionsPageTest, KeepsItsRowsAndSaysWhyItIsEmpty) {
    page.Show();
    const std::string whileReading = EmptyText(page);
    answer(std::nullopt);
    const std::string withoutDriver = EmptyText(page);
    EXPECT_NE(withoutDriver.find("driver is not reachable"), std::string::npos);
    EXPECT_NE(withoutDriver, whileReading);
    page.Reload();
    answer(std::vector{Row(5, 80, 3)});
    page.Reload();
    answer(std::nullopt);
    EXPECT_EQ(RowCountOf(page), 1);
    page.Reload();
    answer(std::vector<ConnectionRow>{});
    EXPECT_EQ(RowCountOf(page), 0);
    EXPECT_EQ(EmptyText(page), "There are no connections and no listening ports.");
}

TEST_F(PagesTest, ApplicationsAreReadWhenTheyAreOpenedAndWhenTheRulesChange) {
    std::vector<ApplicationRow> rules = {{"b.exe", R"(c:\b.exe)", ApplicationState::Deny},
                                         {"a.exe", R"(c:\a.exe)", ApplicationState::Allow},
                                         {"c.exe", R"(c:\c.exe)", static_cast<ApplicationState>(7)}};
    int loads = 0;
    ApplicationsPage page(fonts, language, "title", "line", [&](const auto& done) {
        ++loads;
        done(rules);
    });
    ASSERT_TRUE(page.Create(parent));
    page.OnRulesChanged();
    EXPECT_EQ(loads, 0);
    page.Show();
    EXPECT_EQ(loads, 1);
    EXPECT_EQ(Cell(page, 0, 0), "b.exe");
    EXPECT_EQ(Cell(page, 0, 1), R"(c:\b.exe)");
    const char* const actions[] = {"Deny", "Allow", "Ask"};
    for (int row = 0; row < 3; ++row) EXPECT_EQ(Cell(page, row, 2), actions[row]) << row;

    SelectRowOf(page, 1);
    rules.insert(rules.begin(), {"new.exe", R"(c:\new.exe)", ApplicationState::Deny});
    page.OnRulesChanged();
    EXPECT_EQ(loads, 2);
    EXPECT_EQ(SelectedRowOf(page), 2);
    rules.clear();
    page.Reload();
    EXPECT_EQ(RowCountOf(page), 0);
    EXPECT_TRUE(::IsWindowVisible(page.Item(IDC_LIST_EMPTY)));
}

}  // namespace
}  // namespace brennvar
