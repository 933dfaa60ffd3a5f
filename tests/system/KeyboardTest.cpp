// The finished program worked by the keyboard alone, as it is typed: every page and section is walked by Tab, and
// what users do most is done without a pointer.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "Product.h"
#include "Typing.h"

namespace brennvar::test {
namespace {

// What comes after a key comes at once; a test that has failed need not wait for long.
constexpr std::chrono::seconds kBrief{10};
constexpr std::size_t kMostStops = 200;

RECT PlaceOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

// No user reads upwards without going to the right, nor back to the left in a row.
bool IsReadAfter(const RECT& next, const RECT& before) {
    const bool isAbove = next.bottom <= before.top, isBelow = next.top >= before.bottom;
    const bool isLeft = next.right <= before.left;
    return isBelow || (!isLeft && !(isAbove && next.left < before.right && next.left <= before.left));
}

class KeyboardTest : public ProductFixture {
protected:
    [[nodiscard]] bool WaitForFocus(HWND control) const {
        return WaitUntil([&] { return FocusOf(m_window) == control; }, kBrief);
    }
    // The next stop of Tab.
    [[nodiscard]] HWND Next() const {
        const HWND before = FocusOf(m_window);
        Type({VK_TAB});
        (void)WaitUntil([&] { return FocusOf(m_window) != before; }, kBrief);
        return FocusOf(m_window);
    }
    // Until it comes back to where it began. In a second round each stop is seen to get the keyboard.
    [[nodiscard]] std::vector<HWND> Walk(const std::string& where) const {
        const HWND first = Next();
        std::vector<HWND> stops{first};
        for (HWND at = Next(); at != first && stops.size() < kMostStops; at = Next()) stops.push_back(at);
        for (std::size_t i = 1; i <= stops.size(); ++i) {
            const HWND next = stops[i % stops.size()];
            const Pixels without = PixelsAt(next);
            EXPECT_EQ(Next(), next) << where;
            EXPECT_TRUE(WaitUntil([&] { return PixelsAt(next) != without; }, kBrief))
                << where << ": nobody sees that " << ::GetDlgCtrlID(next) << " has the keyboard";
        }
        return stops;
    }
    // All that can be worked with is a stop, once, and the stops of a window come in the order of reading.
    void ExpectReadable(const std::vector<HWND>& stops, const std::string& where) const {
        std::set<HWND> wanted;
        (void)FindVisible(m_window, [&](HWND window) {
            const auto style = static_cast<DWORD>(::GetWindowLongPtrA(window, GWL_STYLE));
            if ((style & WS_TABSTOP) != 0 && ::IsWindowEnabled(window)) wanted.insert(window);
            return false;
        });
        EXPECT_EQ(std::set<HWND>(stops.begin(), stops.end()), wanted) << where;
        EXPECT_EQ(stops.size(), wanted.size()) << where;
        std::map<HWND, std::vector<HWND>> windows;
        for (const HWND stop : stops) windows[::GetParent(stop)].push_back(stop);
        for (const auto& [parent, inside] : windows) {
            // The walk has begun anywhere, so once it goes back to the beginning.
            std::string back;
            int times = 0;
            for (std::size_t i = 0; i < inside.size(); ++i) {
                const HWND next = inside[(i + 1) % inside.size()];
                if (IsReadAfter(PlaceOf(next), PlaceOf(inside[i]))) continue;
                ++times;
                back += std::to_string(::GetDlgCtrlID(next)) + " after " +
                        std::to_string(::GetDlgCtrlID(inside[i])) + "; ";
            }
            EXPECT_LE(times, 1) << where << ": " << back;
        }
    }
    // Tab to a control, from wherever the keyboard is.
    void TabTo(HWND window, int id, Place place = Place::current()) const {
        const HWND wanted = FindVisibleControl(window, id);
        Require(wanted != nullptr, place);
        for (std::size_t step = 0; FocusOf(window) != wanted; ++step) {
            Require(step < kMostStops, place);
            const HWND before = FocusOf(window);
            Type({VK_TAB});
            Require(WaitUntil([&] { return FocusOf(window) != before; }, kBrief), place);
        }
    }
    // Where keys go.
    static void WaitForForeground(HWND window, Place place = Place::current()) {
        Require(WaitUntil([&] { return ::GetForegroundWindow() == window && FocusOf(window) != nullptr; }), place);
    }
};

TEST_F(KeyboardTest, TabReachesAllOfEveryPageInTheOrderOfReading) {
    constexpr int kSections = 10;
    Start({R"(rule deny C:\Tools\a.exe)", "advanced-rule deny tcp in any:1 any one",
           "connection ESTAB-OUT 10.0.0.5:1025 93.184.216.34:443 4711 10 20"});
    Require(m_service->WaitForJournal("EVENT scenario-done"));
    Activate();
    for (const int page : kPages) {
        if (page == kOptionsPage) continue;
        Ask(m_window, WM_COMMAND, static_cast<WPARAM>(page));
        const std::string where = "page " + std::to_string(page);
        ExpectReadable(Walk(where), where);
    }
    for (int section = 0; section < kSections; ++section) {
        OpenOptions(section);
        const std::string where = "section " + std::to_string(section);
        ExpectReadable(Walk(where), where);
    }
}

TEST_F(KeyboardTest, AQuestionIsAnsweredARuleRemovedAnOptionChanged) {
    constexpr int kFileSharing = 5, kFirstOfFileSharing = 1002;
    const std::string path = R"(C:\Tools\a.exe)";
    const std::string hexPath = Hex(path);
    Start({"question tcp 10.1.2.3:49152 93.184.216.34:443 4242 " + path});
    const HWND question = NextQuestion();
    // It leaves the keyboard where it is; a user goes there by Alt and Tab.
    ::SetForegroundWindow(question);
    WaitForForeground(question);
    const HWND yes = ::GetDlgItem(question, kYes);
    Require(WaitUntil([&] { return ::IsWindowEnabled(yes) != FALSE; }));
    TabTo(question, kRemember);
    Type({VK_SPACE});
    TabTo(question, kNo);
    Type({'Y'});
    ASSERT_TRUE(WaitForRecords("CONFIRM", 1));
    EXPECT_EQ(m_service->Journal("CONFIRM"), Lines{"CONFIRM 276 0:03 4:03 8:01 12:" + hexPath + " 272:9210"});

    // The rule that it has made.
    WaitForForeground(m_window);
    TabTo(m_window, kApplicationsPage);
    Type({VK_SPACE});
    Require(WaitUntil([&] { return List() != nullptr && ListRowCount(List()) == 1; }));
    TabTo(m_window, ::GetDlgCtrlID(List()));
    Type({VK_HOME, VK_DELETE});
    ExpectSent({"COMMAND 5596 0:16 132:" + hexPath + " 644:03"});

    TabTo(m_window, kOptionsPage);
    Type({VK_SPACE});
    Require(WaitUntil([&] { return Control(kOptionSections) != nullptr; }));
    TabTo(m_window, kOptionSections);
    Type({VK_HOME});
    for (int section = 0; section < kFileSharing; ++section) Type({VK_DOWN});
    Require(WaitUntil([&] { return Control(kFirstOfFileSharing) != nullptr; }));
    TabTo(m_window, kFirstOfFileSharing);
    Type({VK_SPACE});
    TabTo(m_window, kApply);
    Type({VK_SPACE});
    ExpectSent({"COMMAND 5596 0:08 5468:01 5592:02", "COMMAND 5596 0:08 5592:03", "COMMAND 5596 0:07",
                "COMMAND 5596 0:01 4:" + Hex("Options changed") + " 132:" + Hex("File sharing")});
}

}  // namespace
}  // namespace brennvar::test
