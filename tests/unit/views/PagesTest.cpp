#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <vector>

#include "config/ResourceIds.h"
#include "support/CommanderRig.h"
#include "tree/TreeMessages_win.h"
#include "ui/ChildControls_win.h"
#include "views/ApplicationsPage_win.h"
#include "views/ConnectionsPage_win.h"

namespace brennvar {
namespace {

std::string Cell(const CPage& page, int row, int column) {
    const HWND list = page.Item(IDC_PAGE_LIST);
    ::SendMessageA(list, kTreeQueryCell, static_cast<WPARAM>(row), column);
    return TextOfWindow(list);
}
int SelectedRowOf(const CPage& page) {
    const HWND list = page.Item(IDC_PAGE_LIST);
    const auto row = ::SendMessageA(list, kTreeGetFocusedRow, 0, 0);
    return ::SendMessageA(list, kTreeIsRowSelected, static_cast<WPARAM>(row), 0) == 1 ? static_cast<int>(row) : -1;
}
void SelectRowOf(const CPage& page, int row) {
    ::SendMessageA(page.Item(IDC_PAGE_LIST), kTreeSelectRow, static_cast<WPARAM>(row), 0);
}

ConnectionRow Row(std::uint32_t processId, std::uint16_t localPort, std::uint32_t state) {
    return {.address = "1.2.3.4:" + std::to_string(localPort),
            .name = "a.exe",
            .path = R"(c:\a.exe)",
            .state = state,
            .processId = processId,
            .localPort = localPort,
            .bytesIn = 4'000'000'000};
}

class PagesTest : public testing::Test {
protected:
    CFonts fonts;
    Language language{nullptr};
    struct Values final : UserValues {
        std::map<std::string, std::uint32_t> values;
        [[nodiscard]] bool ReadUserValue(const std::string& name, std::uint32_t& value) const override {
            const auto found = values.find(name);
            if (found != values.end()) value = found->second;
            return found != values.end();
        }
        bool WriteUserValue(const std::string& name, std::uint32_t value) override {
            values[name] = value;
            return true;
        }
    } values;
    const ListPageContext lists{fonts, language, values};
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    int readings = 0;
    std::function<void(ConnectionsPage::Reading)> answer;
    const ConnectionsPage::Reader read = [this](auto done) {
        ++readings;
        answer = std::move(done);
    };
    ConnectionsPage page{lists, {"title", "line", ""}, read};

    void SetUp() override {
        ASSERT_TRUE(page.Create(parent));
        page.Place({0, 0, 800, 500});
    }
    ~PagesTest() override { ::DestroyWindow(parent); }
    void Tick() { ::SendMessageA(page.Window(), WM_TIMER, 1, 0); }
};

TEST_F(PagesTest, ConnectionsAreReadWhenOpenedAndThenOnTicks) {
    Tick();
    EXPECT_EQ(readings, 0);  // hidden: a tick may come late
    page.Show();
    EXPECT_EQ(readings, 1);
    answer(std::vector{Row(4711, 80, 2)});
    const char* const expected[] = {"a.exe", "1.2.3.4:80", "SYN_RCVD", "4711", "4000000000", "0", R"(c:\a.exe)"};
    for (int column = 0; column < 7; ++column) EXPECT_EQ(Cell(page, 0, column), expected[column]) << column;
    Tick();
    EXPECT_EQ(readings, 2);
    // The answer comes when the page is hidden: it is taken.
    page.Hide();
    answer(std::vector{Row(5, 80, 3), Row(6, 81, 3)});
    page.Show();
    EXPECT_EQ(readings, 3);
    EXPECT_EQ(Cell(page, 0, 3), "5");
    answer(std::nullopt);  // the driver is not reachable: what was read stays
    EXPECT_EQ(Cell(page, 1, 1), "1.2.3.4:81");
    page.Reload();
    answer(std::vector<ConnectionRow>{});
    EXPECT_EQ(TextOfWindow(page.Item(IDC_PAGE_LIST)), "There are no connections and no listening ports.");
}

TEST_F(PagesTest, SelectionFollowsItsConnection) {
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

TEST_F(PagesTest, ApplicationsAreReadWhenTheyAreOpenedAndWhenTheRulesChange) {
    const auto row = [](std::string path) {
        return ApplicationRow{"a.exe", std::move(path), ApplicationState::Deny};
    };
    std::vector<ApplicationRow> rules = {row("b"), row(std::string(400, 'a'))};
    test::CommanderRig rig;
    ApplicationChanges changes(rig.commander);
    ApplicationsPage applications(lists, {"title", "line", ""},
                                  {.read = [&](const auto& done) { done(rules); },
                                   .changes = changes,
                                   .isServiceMissing = [] { return false; }});
    ASSERT_TRUE(applications.Create(parent));
    applications.Show();
    EXPECT_EQ(Cell(applications, 1, 1), std::string(400, 'a'));
    SelectRowOf(applications, 1);
    rules.insert(rules.begin(), row("new"));
    applications.OnRulesChanged();  // nothing moves: what is new comes last
    EXPECT_EQ(Cell(applications, 2, 1), "new");
    EXPECT_EQ(SelectedRowOf(applications), 1);
    applications.Reload();
    EXPECT_EQ(SelectedRowOf(applications), 2);
    rules.resize(2);
    applications.OnRulesChanged();
    EXPECT_EQ(SelectedRowOf(applications), -1);
}

TEST_F(PagesTest, ListsAreSearchedSortedAndKeepTheirSelection) {
    page.Show();
    answer(std::vector{Row(1, 80, 1), Row(2, 8080, 4), Row(3, 443, 4)});
    SelectRowOf(page, 1);
    const HWND list = page.Item(IDC_PAGE_LIST);
    ::SetWindowTextA(page.Item(IDC_PAGE_SEARCH), ":80");  // the field tells of it itself
    EXPECT_EQ(::SendMessageA(list, kTreeGetRowCount, 0, 0), 2);
    EXPECT_EQ(TextOfWindow(page.Item(IDC_PAGE_COUNT)), "Entries: 2 / 3");
    EXPECT_EQ(SelectedRowOf(page), 1);
    constexpr int kPidColumn = 3;
    for (const char* const first : {"1", "2", "1"}) {  // upwards, downwards, as read
        ::SendMessageA(list, kTreeClickHeader, kPidColumn, 0);
        EXPECT_EQ(Cell(page, 0, kPidColumn), first);
        EXPECT_EQ(Cell(page, SelectedRowOf(page), kPidColumn), "2");
    }
    ::SetWindowTextA(page.Item(IDC_PAGE_SEARCH), "nowhere");
    EXPECT_EQ(TextOfWindow(list), "Nothing here holds the text that you are looking for.");
    answer(std::vector<ConnectionRow>{});  // nothing to look through
    EXPECT_EQ(TextOfWindow(list), "There are no connections and no listening ports.");
}

}  // namespace
}  // namespace brennvar
