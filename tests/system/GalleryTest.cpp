// What can be read, seen and reached, measured of what is really on the screen: the pages of the gallery, in both
// skins. Texts are found where screen readers are told that they are, and the keyboard is followed by Tab.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

#include "Product.h"
#include "ScreenPicture.h"
#include "TabWalk.h"
#include "Typing.h"
#include "base/ComOfThread_win.h"
#include "config/Contrast.h"
#include "config/ResourceIds.h"
#include "support/AccessibleReader_win.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

// What is there comes at once; a page that reads badly need not be waited for longer.
constexpr auto kBrief = 15s;
// The atom of the class of dialogs.
constexpr DWORD kDialogClass = 0x8002;

// The dialog of another page with other words in it, which have the same colours; and menus, which are no windows
// that screen readers are told of by us.
constexpr const char* kLikeOthers[] = {"message",
                                       "confirmation-deny",
                                       "confirmation-none",
                                       "confirmation-unknown",
                                       "confirmation-host",
                                       "confirmation-longest",
                                       "confirmation-first",
                                       "menu",
                                       "traymenu-block",
                                       "traymenu-allow",
                                       "notice",
                                       "password-wrong",
                                       "password-unconfirmed",
                                       "password-set-unconfirmed",
                                       "details-packet-large",
                                       "details-log",
                                       "import-advanced",
                                       "import-unreadable",
                                       "rule-new",
                                       "rule-edit"};

// What the skins and the system's own texts lay down, and what is no text of ours.
struct Exception {
    const char* page;
    const char* fault;  // how it begins
    const char* why;
};
constexpr Exception kExceptions[] = {
    {"tree", "Bytes: 0 ", "smoothing leaves no pixel of single digits in their colour, which has 14:1"},
    {"events", "Number: ", "the same"},
    {"events", "Rule ", "smoothing again, of a title whose colour has 5.8:1"},
    {"statistics", "Received ", "the same"},
    {"events", "Enter presses nothing", "its button only writes down that it was pressed"},
    {"rule-wrong", "Enter presses something", "a message that tells the first fault, for OK is disabled by it"},
    {"questions", "OK", "smoothing leaves no pixel of its two letters in their colour, which has 6.9:1"},
};

// A sign that tells something: so far from the corner of what screen readers are told of.
struct Sign {
    const char* page;
    LONG role;
    const wchar_t* name;  // how it begins
    RECT place;           // pixels, from the left and the top
    int least;            // pixels of it that are told from its ground
    const char* what;
};
constexpr Sign kSigns[] = {
    {"modes", ROLE_SYSTEM_PUSHBUTTON, L"", {8, 4, 32, 28}, 40, "the shield of the mode"},
    {"confirmation-temporary", ROLE_SYSTEM_STATICTEXT, L"runs from", {-20, 0, -6, 16}, 12, "the warning"},
};

bool IsText(LONG role) {
    constexpr LONG kRoles[] = {ROLE_SYSTEM_STATICTEXT,  ROLE_SYSTEM_PUSHBUTTON, ROLE_SYSTEM_CHECKBUTTON,
                               ROLE_SYSTEM_RADIOBUTTON, ROLE_SYSTEM_LINK,       ROLE_SYSTEM_COLUMNHEADER,
                               ROLE_SYSTEM_LISTITEM,    ROLE_SYSTEM_PAGETAB,    ROLE_SYSTEM_ALERT,
                               ROLE_SYSTEM_CHART};
    return std::find(std::begin(kRoles), std::end(kRoles), role) != std::end(kRoles);
}

bool IsRow(const Told& one) {
    return one.role == ROLE_SYSTEM_LISTITEM || one.role == ROLE_SYSTEM_OUTLINEITEM;
}

// Of a field that can be filled in and has not the keyboard: with it the mark of the focus is measured. The parts
// of an address have one frame for all.
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

// One look at the windows of a page.
class Inspection {
public:
    Inspection(std::string page, HWND window)
        : m_page(std::move(page)), m_told(TellAll(window)), m_picture(window) {
        std::erase_if(m_told, [](const Told& one) {
            return one.Is(STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN);
        });
        for (const Told& one : m_told) {
            if (HasFieldFrame(one)) {
                MeasureFrame(one);
            } else if (IsRow(one)) {
                MeasureRow(one);
            } else if (IsText(one.role) && !one.name.empty() && CanMeasure(one)) {
                Expect(one, kTextContrast, m_picture.InksIn(one.place).strongest, "");
            }
        }
        for (const Sign& sign : kSigns) {
            if (m_page == sign.page) MeasureSigns(sign);
        }
    }
    [[nodiscard]] const Lines& Faults() const { return m_faults; }
    [[nodiscard]] int Measured() const { return m_measured; }

private:
    static constexpr int kMarkRoom = 24;    // at the left of a cell, for a small sign
    static constexpr int kLeastOfMark = 6;  // pixels: a lying bar

    [[nodiscard]] static std::vector<Told> TellAll(HWND window) {
        std::vector<Told> told;
        WalkAccessible(window, told);
        return told;
    }
    [[nodiscard]] bool CanMeasure(const Told& one) const {
        return !::IsRectEmpty(&one.place) && m_picture.Shows(one.place) && IsInSight(one);
    }
    void Expect(const Told& one, double least, double is, const std::string& what) {
        ++m_measured;
        if (is >= least) return;
        std::ostringstream fault;
        fault << std::string(one.name.begin(), one.name.end()).substr(0, 60) << " (" << one.role << ") " << what
              << ": " << is;
        m_faults.push_back(fault.str());
    }
    void MeasureFrame(Told one) {
        ::GetWindowRect(one.window, &one.place);
        const RECT around{one.place.left - 2, one.place.top, one.place.right, one.place.bottom};
        if (!CanMeasure(one) || !m_picture.Shows(around)) return;
        const LONG middle = (one.place.top + one.place.bottom) / 2;
        const std::uint32_t frame = m_picture.At(one.place.left, middle);
        Expect(one, kFrameContrast, Contrast(frame, m_picture.At(one.place.left - 2, middle)), "frame, outside");
        Expect(one, kFrameContrast, Contrast(frame, m_picture.At(one.place.left + 3, middle)), "frame, inside");
    }
    // Cell by cell where there are columns; what stands in none is measured as a whole.
    void MeasureRow(const Told& row) {
        bool hasColumns = false;
        for (const Told& title : m_told) {
            if (title.role != ROLE_SYSTEM_COLUMNHEADER || title.window != row.window) continue;
            hasColumns = true;
            Told cell = row;
            cell.place.left = std::max(row.place.left, title.place.left) + 1;
            cell.place.right = std::min(row.place.right, title.place.right) - 1;
            const std::size_t at = row.name.find(title.name + L": ");
            if (at == std::wstring::npos || !CanMeasure(cell)) continue;
            cell.name = row.name.substr(at, row.name.find(L"; ", at) - at);
            Expect(cell, kTextContrast, m_picture.InksIn(cell.place).strongest, "");
            if (title.name == L"Action" || title.name == L"State") {
                cell.place.right = std::min(cell.place.right, cell.place.left + kMarkRoom);
                Expect(cell, kLeastOfMark, m_picture.InksIn(cell.place).strong, "mark");
            }
        }
        if (!hasColumns && CanMeasure(row)) Expect(row, kTextContrast, m_picture.InksIn(row.place).strongest, "");
    }
    void MeasureSigns(const Sign& sign) {
        bool isFound = false;
        for (Told one : m_told) {
            if (one.role != sign.role || !one.name.starts_with(sign.name)) continue;
            isFound = true;
            const POINT corner{one.place.left, one.place.top};
            one.place = sign.place;
            ::OffsetRect(&one.place, corner.x, corner.y);
            Expect(one, sign.least, m_picture.Shows(one.place) ? m_picture.InksIn(one.place).strong : 0, sign.what);
        }
        if (!isFound) m_faults.push_back(std::string(sign.what) + " is not there");
    }

    const std::string m_page;
    std::vector<Told> m_told;
    const ScreenPicture m_picture;  // later than what is told, which takes its time
    Lines m_faults;
    int m_measured = 0;
};

struct Page {
    std::string name;
    int opens = 0;  // windows over the gallery's own
};

class GalleryTest : public ::testing::Test {
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
    [[nodiscard]] std::vector<Page> Pages() const {
        const std::string list = m_home.File("pages.txt");
        { (void)RunningProgram(Gallery() + " --list", list).WaitForEnd(); }
        std::vector<Page> pages;
        std::istringstream text(Content(list));
        for (std::string line; std::getline(text, line);) {
            std::istringstream words(line);
            Page page;
            words >> page.name >> page.opens;
            const bool isLikeAnother =
                std::find(std::begin(kLikeOthers), std::end(kLikeOthers), page.name) != std::end(kLikeOthers);
            if (!page.name.empty() && !isLikeAnother) pages.push_back(std::move(page));
        }
        return pages;
    }
    [[nodiscard]] bool IsExcepted(const std::string& fault) const {
        return std::any_of(std::begin(kExceptions), std::end(kExceptions), [&](const Exception& exception) {
            return m_page == exception.page && fault.starts_with(exception.fault);
        });
    }
    void Fail(const std::string& fault) const {
        if (!IsExcepted(fault)) ADD_FAILURE() << m_skin << " " << m_page << ": " << fault;
    }
    void Inspect(const RunningProgram& program, HWND gallery) const {
        Lines faults;
        int measured = 0;
        (void)WaitUntil(
            [&] {
                faults.clear();
                measured = 0;
                // Over the gallery's own window there may be others.
                (void)FindVisible(nullptr, [&](HWND window) {
                    if (ProcessOf(window) != program.Id() || ::GetAncestor(window, GA_ROOT) != window) return false;
                    if (window == gallery && !::IsWindowEnabled(gallery)) return false;  // it is covered
                    const Inspection inspection(m_page, window);
                    measured += inspection.Measured();
                    std::copy_if(inspection.Faults().begin(), inspection.Faults().end(), std::back_inserter(faults),
                                 [this](const std::string& fault) { return !IsExcepted(fault); });
                    return false;
                });
                return measured > 0 && faults.empty();
            },
            kBrief);
        if (measured == 0) Fail("nothing is there");
        for (const std::string& fault : faults) Fail(fault);
    }
    // The dialog over the gallery's window that takes input, else that window; in front. Null: there is nothing
    // that could be worked with.
    [[nodiscard]] HWND BringToFront(const RunningProgram& program, HWND gallery) const {
        HWND window = FindVisible(nullptr, [&](HWND other) {
            return ProcessOf(other) == program.Id() && ::IsWindowEnabled(other) &&
                   ::GetClassLongA(other, GCW_ATOM) == kDialogClass;
        });
        if (!window) window = gallery;
        const bool hasStop = FindVisible(window, [](HWND control) {
            return (::GetWindowLongPtrA(control, GWL_STYLE) & WS_TABSTOP) != 0 && ::IsWindowEnabled(control);
        });
        if (!hasStop) return nullptr;
        ::SetForegroundWindow(window);
        const bool isInFront =
            WaitUntil([&] { return ::GetForegroundWindow() == window && FocusOf(window) != nullptr; }, kBrief);
        // A question can be answered after a moment only; a tool can be stopped when its look-up has begun.
        const auto isAlive = [window](int id) {
            const HWND button = ::GetDlgItem(window, id);
            return !button || WaitUntil([&] { return ::IsWindowEnabled(button) != FALSE; });
        };
        if (isInFront && isAlive(kYes) && isAlive(IDC_TOOL_STOP)) return window;
        Fail("the keyboard does not come to it");
        return nullptr;
    }
    // Enter presses the button that stands out, wherever the keyboard is, and nothing where there is none.
    void CheckEnter(HWND dialog, const std::vector<HWND>& stops) const {
        const auto field = std::find_if(stops.begin(), stops.end(), [](HWND stop) {
            return (Ask(stop, WM_GETDLGCODE) & (DLGC_BUTTON | DLGC_WANTALLKEYS)) == 0;
        });
        if (field == stops.end()) return;
        Ask(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(*field), TRUE);
        const LRESULT standing = Ask(dialog, DM_GETDEFID);
        const HWND button = HIWORD(standing) == DC_HASDEFID ? ::GetDlgItem(dialog, LOWORD(standing)) : nullptr;
        const auto isPressed = [&] { return !::IsWindowVisible(dialog) || !::IsWindowEnabled(dialog); };
        Type({VK_RETURN});
        if (button && ::IsWindowEnabled(button)) {
            if (!WaitUntil(isPressed, kBrief)) Fail("Enter presses nothing");
            return;
        }
        // The next key has come when the first one has been dealt with.
        const HWND before = FocusOf(dialog);
        Type({VK_TAB});
        (void)WaitUntil([&] { return isPressed() || FocusOf(dialog) != before; }, kBrief);
        if (isPressed()) Fail("Enter presses something");
    }
    void CheckEscape(HWND dialog) const {
        Type({VK_ESCAPE});
        // One below a question that waits for its answer is only hidden, and a tool at work until it has stopped.
        if (!WaitUntil([&] { return !::IsWindowVisible(dialog); }, kBrief)) Fail("Esc does not close it");
    }

    const ComOfThread m_com;
    const TempFolder m_home;
    std::string m_data;
    std::string m_skin, m_page;
};

TEST_F(GalleryTest, EverythingIsReadSeenAndReachedInBothSkins) {
    const std::vector<Page> pages = Pages();
    ASSERT_FALSE(pages.empty());
    for (const char* const skin : {"Default", "Graphite"}) {
        m_skin = skin;
        std::ofstream(m_data + R"(\settings.ini)") << "[Skin]\r\nDirectory=" << skin << "\r\n";
        for (const Page& page : pages) {
            m_page = page.name;
            const RunningProgram program(Gallery() + " --page " + page.name);
            const HWND gallery = WaitForProgramWindow(program.Id(), "Gallery");
            // One that opens later would take the keyboard away.
            if (!WaitUntil([&] { return std::ssize(OtherWindows(gallery)) >= page.opens; }, kBrief)) {
                Fail("it does not open all of its windows");
            }
            Inspect(program, gallery);
            const HWND window = BringToFront(program, gallery);
            if (!window) continue;
            const TabWalk walk(window);
            for (const std::string& fault : walk.Unseen()) Fail(fault);
            // Controls that are set out side by side are not there to be read in turn.
            if (window == gallery) continue;
            for (const std::string& fault : walk.Misplaced()) Fail(fault);
            // Each ends the page.
            skin == std::string("Default") ? CheckEnter(window, walk.Stops()) : CheckEscape(window);
        }
    }
}

}  // namespace
}  // namespace brennvar::test
