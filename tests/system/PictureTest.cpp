// What is seen of the control center while it shows another page: the old one or the new one, and nothing else.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

#include "Product.h"
#include "config/ResourceIds.h"

namespace brennvar::test {
namespace {

// A page at rest.
struct Still {
    int command = 0;
    std::vector<RECT> moving;  // the places of what goes on by itself, in the picture
    Pixels pixels;             // with those places blank
};

class PictureTest : public ProductFixture {
protected:
    // What the screen shows of the window, without these places.
    [[nodiscard]] Pixels Take(const std::vector<RECT>& blank) const {
        Pixels pixels = PixelsAt(m_window);
        Blank(pixels, blank);
        return pixels;
    }
    void Blank(Pixels& pixels, const std::vector<RECT>& places) const {
        for (const RECT& place : places) {
            for (LONG y = place.top; y < place.bottom; ++y) {
                std::fill_n(pixels.begin() + y * m_width + place.left, place.right - place.left, 0U);
            }
        }
    }
    [[nodiscard]] bool Shows(const Still& page, const Pixels& pixels) const {
        if (page.moving.empty()) return pixels == page.pixels;
        Pixels still = pixels;
        Blank(still, page.moving);
        return still == page.pixels;
    }
    // Of the page that is shown: graphs go on with every second.
    [[nodiscard]] std::vector<RECT> Moving() const {
        std::vector<RECT> places;
        for (const int id : {IDC_STATISTICS_IN_GRAPH, IDC_STATISTICS_OUT_GRAPH, IDC_STATISTICS_ATTACK_GRAPH}) {
            const HWND graph = Control(id);
            if (!graph) continue;
            RECT place{};
            ::GetWindowRect(graph, &place);
            ::MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&place), 2);
            places.push_back(place);
        }
        return places;
    }
    // Each control by itself, which is to look as in the picture of all.
    void PaintOneByOne() const {
        const WNDENUMPROC paint = [](HWND window, LPARAM) -> BOOL {
            char name[16] = {};
            ::GetClassNameA(window, name, sizeof name);
            if (std::string_view(name) != "#32770") {
                ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_NOCHILDREN);
            }
            return TRUE;
        };
        ::EnumChildWindows(m_window, paint, 0);
    }
    [[nodiscard]] Still OpenAndRest(int command) const {
        Ask(m_window, WM_COMMAND, static_cast<WPARAM>(command));
        PaintOneByOne();
        Still still{.command = command, .moving = Moving(), .pixels = {}};
        (void)WaitUntil([&] {
            ExpectAnswers();
            const Pixels before = std::exchange(still.pixels, Take(still.moving));
            return before == still.pixels;
        });
        return still;
    }

    LONG m_width = 0;
};

TEST_F(PictureTest, APageChangeShowsTheOldPageOrTheNewOneAndNothingElse) {
    constexpr int kChanges = std::size(kPages) * (std::size(kPages) - 1);  // every page after every other one
    // Without connections, which show their age.
    Lines scenario = {"log-message Service started",
                      R"(log allowed tcp 10.0.0.5:1025 93.184.216.34:443 out C:\Tools\aurora.exe)", "clear-tables",
                      "totals 0 0"};
    for (char name = 'a'; name < 'z'; ++name) {
        scenario.push_back(std::string(R"(rule deny C:\Tools\)") + name + ".exe");
        scenario.push_back(std::string("advanced-rule deny tcp in any:1 any ") + name);
    }
    Install();
    std::filesystem::copy(std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets" / "Skins",
                          m_installation->File("Skins"), std::filesystem::copy_options::recursive);
    Start(scenario);
    Require(m_service->WaitForJournal("EVENT scenario-done"));
    Activate();
    ::SetCursorPos(0, 0);
    RECT place{};
    ::GetWindowRect(m_window, &place);
    m_width = place.right - place.left;
    std::vector<Still> pages;
    // In the second round everything that the first one has asked for is there.
    for (int round = 0; round < 2; ++round) {
        pages.clear();
        for (const int page : kPages) pages.push_back(OpenAndRest(page));
    }

    int taken = 0, torn = 0;
    const Still* last = &pages.back();
    std::size_t at = pages.size() - 1;
    for (int change = 0; change < kChanges; ++change) {
        at = (at + 1 + static_cast<std::size_t>(change) / pages.size() % (pages.size() - 1)) % pages.size();
        const Still& next = pages[at];
        Command(next.command);
        const ULONGLONG deadline = ::GetTickCount64() + std::chrono::milliseconds(kPatience).count();
        for (;;) {
            const Pixels pixels = PixelsAt(m_window);
            ++taken;
            if (Shows(next, pixels)) break;
            if (!Shows(*last, pixels)) ++torn;
            ASSERT_LT(::GetTickCount64(), deadline) << "page " << next.command << " after " << last->command;
        }
        last = &next;
    }
    EXPECT_EQ(torn, 0) << "of " << taken << " pictures of " << kChanges << " changes";
    RecordProperty("pictures", taken);
}

}  // namespace
}  // namespace brennvar::test
