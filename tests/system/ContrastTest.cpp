// What can be read and what can be seen, measured of what is really on the screen: every page of the gallery, in
// both skins. Texts are found where screen readers are told that they are.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "Desktop.h"
#include "Product.h"
#include "base/ComOfThread_win.h"
#include "config/Contrast.h"
#include "support/AccessibleReader_win.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

// What is there comes at once; a page that reads badly need not be waited for longer.
constexpr auto kBrief = 5s;

// What the skins and the system's own texts lay down, and what is no text of ours.
struct Exception {
    const char* page;  // of the gallery
    const char* name;  // what the text begins with
    const char* why;
};
constexpr Exception kExceptions[] = {
    {"tree", "Rule for one port", "its colour is its owner's"},
    {"questions", "OK", "smoothing leaves no pixel of its two letters in their colour, which has 6.9:1"},
};

bool IsExcepted(const std::string& page, const std::string& fault) {
    return std::any_of(std::begin(kExceptions), std::end(kExceptions), [&](const Exception& exception) {
        return page == exception.page && fault.starts_with(exception.name);
    });
}

// A window as the screen shows it.
class Picture {
public:
    explicit Picture(HWND window) : m_pixels(PixelsAt(window)) { ::GetWindowRect(window, &m_place); }

    [[nodiscard]] bool Shows(const RECT& place) const {
        RECT common{};
        return ::IntersectRect(&common, &m_place, &place) && ::EqualRect(&common, &place) &&
               m_pixels.size() ==
                   static_cast<std::size_t>((m_place.right - m_place.left) * (m_place.bottom - m_place.top));
    }
    // As 0xBBGGRR.
    [[nodiscard]] std::uint32_t At(LONG x, LONG y) const {
        const LONG width = m_place.right - m_place.left;
        const std::uint32_t pixel =
            m_pixels[static_cast<std::size_t>((y - m_place.top) * width + (x - m_place.left))];
        return (pixel & 0xFF) << 16 | (pixel & 0xFF00) | (pixel >> 16 & 0xFF);
    }
    // How well the strongest ink in the place reads on the colour that there is most of; 1: there is no ink.
    [[nodiscard]] double InkIn(const RECT& place) const {
        std::map<std::uint32_t, int> counts;
        for (LONG y = place.top; y < place.bottom; ++y) {
            for (LONG x = place.left; x < place.right; ++x) ++counts[At(x, y)];
        }
        const auto ground = std::max_element(counts.begin(), counts.end(),
                                             [](const auto& a, const auto& b) { return a.second < b.second; });
        double best = 1;
        for (const auto& [colour, count] : counts) best = std::max(best, Contrast(colour, ground->first));
        return best;
    }

private:
    RECT m_place{};
    Pixels m_pixels;
};

bool IsText(LONG role) {
    constexpr LONG kRoles[] = {ROLE_SYSTEM_STATICTEXT,  ROLE_SYSTEM_PUSHBUTTON, ROLE_SYSTEM_CHECKBUTTON,
                               ROLE_SYSTEM_RADIOBUTTON, ROLE_SYSTEM_LINK,       ROLE_SYSTEM_LISTITEM,
                               ROLE_SYSTEM_OUTLINEITEM, ROLE_SYSTEM_PAGETAB,    ROLE_SYSTEM_ALERT,
                               ROLE_SYSTEM_CHART};
    return std::find(std::begin(kRoles), std::end(kRoles), role) != std::end(kRoles);
}

// Of a field that can be filled in and has not the keyboard: with it the frame has the accent, which is laid down,
// and a caret stands in it. The parts of an address have one frame for all.
bool HasFieldFrame(const Told& one) {
    if (one.role != ROLE_SYSTEM_TEXT && one.role != ROLE_SYSTEM_COMBOBOX && one.role != ROLE_SYSTEM_IPADDRESS) {
        return false;
    }
    char className[16] = {};
    ::GetClassNameA(one.window, className, sizeof className);
    const bool isPlain = one.role == ROLE_SYSTEM_TEXT && ::lstrcmpiA(className, "Edit") != 0;
    const HWND parent = ::GetParent(one.window);
    const bool isPart = AccessibleReader(parent) && AccessibleReader(parent).Role() == ROLE_SYSTEM_IPADDRESS;
    return !isPlain && !isPart && !one.Is(STATE_SYSTEM_READONLY | STATE_SYSTEM_FOCUSED);
}

// Neither below another window nor cut by one that it is in.
bool IsInSight(const Told& one) {
    const HWND root = ::GetAncestor(one.window, GA_ROOT);
    for (HWND window = HasFieldFrame(one) ? ::GetParent(one.window) : one.window; window != nullptr;
         window = window == root ? nullptr : ::GetParent(window)) {
        RECT inside{}, common{};
        ::GetClientRect(window, &inside);
        ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
        if (!::IntersectRect(&common, &inside, &one.place) || !::EqualRect(&common, &one.place)) return false;
    }
    // The corners of a window may be round.
    const LONG across = (one.place.right - one.place.left) / 4, down = (one.place.bottom - one.place.top) / 4;
    const POINT points[] = {{one.place.left + across, one.place.top + down},
                            {one.place.right - 1 - across, one.place.top + down},
                            {one.place.left + across, one.place.bottom - 1 - down},
                            {one.place.right - 1 - across, one.place.bottom - 1 - down}};
    return std::all_of(std::begin(points), std::end(points),
                       [root](POINT point) { return ::GetAncestor(::WindowFromPoint(point), GA_ROOT) == root; });
}

class ContrastTest : public ::testing::Test {
protected:
    void SetUp() override {
        const std::filesystem::path assets = std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets";
        const std::filesystem::path home = m_home.Path();
        for (const char* const part : {"Skins", "Languages"}) {
            std::filesystem::copy(assets / part, home / part, std::filesystem::copy_options::recursive);
        }
        std::filesystem::copy(BuiltProgram(R"(gallery\gallery.exe)"), home);
        m_data = EmptyDataFolder();
    }
    [[nodiscard]] std::string Gallery() const { return Quoted(m_home.File("gallery.exe")); }
    // The names of the pages, of which menus are no windows that screen readers are told of by us.
    [[nodiscard]] Lines Pages() const {
        const std::string list = m_home.File("pages.txt");
        { (void)RunningProgram(Gallery() + " --list", list).WaitForEnd(); }
        Lines pages;
        std::istringstream text(Content(list));
        for (std::string line; std::getline(text, line);) {
            const std::string name = line.substr(0, line.find(' '));
            if (!name.empty() && name.find("menu") == std::string::npos) pages.push_back(name);
        }
        return pages;
    }
    // What reads badly on the page now.
    [[nodiscard]] static Lines FaultsOf(HWND window, int& measured) {
        Lines faults;
        std::vector<Told> told;
        WalkAccessible(window, told);
        const Picture picture(window);
        for (Told& one : told) {
            if (one.Is(STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN)) continue;
            const bool isField = HasFieldFrame(one);
            if (isField) ::GetWindowRect(one.window, &one.place);
            if (::IsRectEmpty(&one.place) || !picture.Shows(one.place) || !IsInSight(one)) continue;
            std::ostringstream fault;
            fault << std::string(one.name.begin(), one.name.end()).substr(0, 40) << " (" << one.role << "): ";
            if (IsText(one.role) && !one.name.empty()) {
                ++measured;
                const double ink = picture.InkIn(one.place);
                if (ink < kTextContrast) faults.push_back(fault.str() + std::to_string(ink));
            } else if (isField &&
                       picture.Shows({one.place.left - 2, one.place.top, one.place.right, one.place.bottom})) {
                ++measured;
                const LONG middle = (one.place.top + one.place.bottom) / 2;
                const std::uint32_t frame = picture.At(one.place.left, middle);
                const double outside = Contrast(frame, picture.At(one.place.left - 2, middle));
                const double inside = Contrast(frame, picture.At(one.place.left + 3, middle));
                if (std::min(outside, inside) < kFrameContrast) {
                    faults.push_back(fault.str() + "frame " + std::to_string(outside) + " " +
                                     std::to_string(inside));
                }
            }
        }
        return faults;
    }

    const ComOfThread m_com;
    const TempFolder m_home;
    std::string m_data;
};

TEST_F(ContrastTest, EverythingInTheGalleryReadsInBothSkins) {
    for (const char* const skin : {"Default", "Graphite"}) {
        std::ofstream(m_data + R"(\settings.ini)") << "[Skin]\r\nDirectory=" << skin << "\r\n";
        for (const std::string& page : Pages()) {
            const RunningProgram program(Gallery() + " --page " + page);
            const HWND window = WaitForProgramWindow(program.Id(), "Gallery");
            Lines faults;
            int measured = 0;
            (void)WaitUntil(
                [&] {
                    faults.clear();
                    measured = 0;
                    // Over the gallery's own window there may be others.
                    (void)FindVisible(nullptr, [&](HWND other) {
                        if (ProcessOf(other) != program.Id() || ::GetAncestor(other, GA_ROOT) != other)
                            return false;
                        const bool isCovered = other == window && ::IsWindowEnabled(window) == FALSE;
                        if (!isCovered) {
                            const Lines found = FaultsOf(other, measured);
                            faults.insert(faults.end(), found.begin(), found.end());
                        }
                        return false;
                    });
                    std::erase_if(faults, [&](const std::string& fault) { return IsExcepted(page, fault); });
                    return measured > 0 && faults.empty();
                },
                kBrief);
            EXPECT_GT(measured, 0) << skin << " " << page;
            for (const std::string& fault : faults) ADD_FAILURE() << skin << " " << page << ": " << fault;
        }
    }
}

}  // namespace
}  // namespace brennvar::test
