// The tree control against Windows' own virtual list view, both with ten million rows of the same texts, the same
// columns, font, row height and size: filling, the first painting, and scrolling by lines and by pages. Both are
// made anew for every round and take turns, so that they meet the same state of the machine; the ratio of each pair
// is taken and the median of all pairs counts. Prints "name ratio tree_ms native_ms" for each measure.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "tree/Tree_win.h"
#include "ui/OwnMessages_win.h"
// windows.h must stand before commctrl.h.
#include <commctrl.h>

namespace brennvar {
namespace {

constexpr int kRowCount = 10'000'000;
constexpr SIZE kSize = {900, 600};
constexpr int kLineSteps = 1'000;
constexpr int kPageSteps = 50;

struct BenchColumn {
    const char* title;
    int width;
    bool isNumber;
};
// Those of the Connections page; 900 pixels hold all of them.
constexpr std::array kColumns = {BenchColumn{"Process", 128, false}, BenchColumn{"Address", 280, false},
                                 BenchColumn{"State", 90, false},    BenchColumn{"PID", 60, true},
                                 BenchColumn{"Bytes in", 90, true},  BenchColumn{"Bytes out", 90, true},
                                 BenchColumn{"Path", 130, false}};

std::string TextOf(int row, int column) {
    char text[128];
    switch (column) {
        case 0: std::snprintf(text, sizeof text, "program%d.exe", row % 97); break;
        case 1:
            std::snprintf(text, sizeof text, "10.0.%d.%d:%d -> 93.184.%d.34:443", row / 256 % 256, row % 256,
                          49152 + row % 16384, row % 199);
            break;
        case 2: return row % 3 == 0 ? "LISTEN-TCP" : "ESTAB-OUT";
        case 3: std::snprintf(text, sizeof text, "%d", 4 * (row % 5000)); break;
        case 4: std::snprintf(text, sizeof text, "%d", row * 7); break;
        case 5: std::snprintf(text, sizeof text, "%d", row * 3); break;
        default: std::snprintf(text, sizeof text, R"(c:\program files\maker %d\program%d.exe)", row % 31, row % 97);
    }
    return text;
}

class BenchRows final : public TreeRows {
public:
    int count = 0;
    [[nodiscard]] int RowCount() const override { return count; }
    [[nodiscard]] TreeCell Cell(int row, int column) const override {
        TreeCell cell;
        cell.text = TextOf(row, column);
        return cell;
    }
};

class Subject {
public:
    virtual ~Subject() = default;
    virtual void Fill() = 0;
    [[nodiscard]] virtual int FirstVisibleRow() const = 0;
    [[nodiscard]] virtual HWND Window() const = 0;
};

class TreeSubject final : public Subject {
public:
    TreeSubject(HWND parent, const Look& look) {
        std::vector<TreeColumn> columns;
        for (const BenchColumn& column : kColumns) {
            columns.push_back({.title = column.title, .width = column.width, .isNumber = column.isNumber});
        }
        if (!m_tree.Create({.parent = parent, .id = 1}, look, columns, m_rows)) std::exit(1);
        m_tree.Place({0, 0, kSize.cx, kSize.cy});
    }
    void Fill() override {
        m_rows.count = kRowCount;
        m_tree.Refresh();
    }
    [[nodiscard]] int FirstVisibleRow() const override { return m_tree.FirstVisibleRow(); }
    [[nodiscard]] HWND Window() const override { return m_tree.Window(); }

private:
    BenchRows m_rows;
    CTree m_tree;
};

class NativeSubject final : public Subject {
public:
    NativeSubject(HWND parent, const Look& look, DWORD extendedStyle) {
        m_list = ::CreateWindowExA(WS_EX_CLIENTEDGE, WC_LISTVIEWA, "",
                                   WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, 0, 0,
                                   kSize.cx, kSize.cy, parent, nullptr, ::GetModuleHandleA(nullptr), nullptr);
        ListView_SetExtendedListViewStyle(m_list, LVS_EX_FULLROWSELECT | extendedStyle);
        ::SendMessageA(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(look.fonts.Text()), FALSE);
        // Rows as high as the tree's: the height of a small picture and one pixel.
        ListView_SetImageList(m_list, ImageList_Create(1, TreePainter::RowHeight() - 1, ILC_COLOR, 0, 0),
                              LVSIL_SMALL);
        int index = 0;
        for (const BenchColumn& column : kColumns) {
            std::string title = column.title;
            LVCOLUMNA header{};
            header.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
            header.fmt = column.isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT;
            header.cx = Scale(column.width);
            header.pszText = title.data();
            ::SendMessageA(m_list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(index++),
                           reinterpret_cast<LPARAM>(&header));
        }
    }
    ~NativeSubject() override { ::DestroyWindow(m_list); }
    void Fill() override { ListView_SetItemCountEx(m_list, kRowCount, 0); }
    [[nodiscard]] int FirstVisibleRow() const override { return ListView_GetTopIndex(m_list); }
    [[nodiscard]] HWND Window() const override { return m_list; }

private:
    HWND m_list;
};

// Answers the native list's questions.
LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<NMHDR*>(lParam);
        if (header.code != LVN_GETDISPINFOA) return 0;
        LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(lParam)->item;
        if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return 0;
        const std::string text = TextOf(item.iItem, item.iSubItem);
        const std::size_t length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
        std::memcpy(item.pszText, text.data(), length);
        item.pszText[length] = '\0';
        return 0;
    }
    return ::DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeParent() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = &ParentProcedure;
    windowClass.hInstance = ::GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "ListBench";
    ::RegisterClassA(&windowClass);
    return ::CreateWindowExA(0, "ListBench", "List", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, kSize.cx,
                             kSize.cy, nullptr, nullptr, windowClass.hInstance, nullptr);
}

void PumpMessages() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
}

double MillisecondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

constexpr std::array kMeasures = {"list_fill", "list_first_paint", "list_scroll_lines", "list_scroll_pages"};
using Times = std::array<double, kMeasures.size()>;

Times Measure(Subject& subject) {
    const HWND window = subject.Window();
    const auto paint = [=] {
        ::UpdateWindow(window);
        ::GdiFlush();
    };
    const auto scroll = [=](int steps, WORD request) {
        for (int step = 0; step < steps; ++step) {
            ::SendMessageA(window, WM_VSCROLL, request, 0);
            paint();
        }
    };
    paint();  // while it is empty
    PumpMessages();
    Times times{};
    times[0] = MillisecondsOf([&] { subject.Fill(); });
    times[1] = MillisecondsOf(paint);
    times[2] = MillisecondsOf([&] { scroll(kLineSteps, SB_LINEDOWN); });
    if (subject.FirstVisibleRow() != kLineSteps) std::exit(2);  // it has not done what was measured
    times[3] = MillisecondsOf([&] { scroll(kPageSteps, SB_PAGEDOWN); });
    return times;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void Run(int rounds, DWORD extendedStyle) {
    const CFonts fonts;
    const Look look(fonts);
    const HWND parent = MakeParent();
    std::vector<std::array<Times, 2>> pairs;
    for (int round = -1; round < rounds; ++round) {  // the first round warms up
        std::array<Times, 2> pair{};
        for (int turn = 0; turn < 2; ++turn) {
            const bool isTree = (turn + round) % 2 == 0;
            if (isTree) {
                TreeSubject tree(parent, look);
                pair[0] = Measure(tree);
            } else {
                NativeSubject native(parent, look, extendedStyle);
                pair[1] = Measure(native);
            }
            PumpMessages();
        }
        if (round >= 0) pairs.push_back(pair);
    }
    for (std::size_t measure = 0; measure < kMeasures.size(); ++measure) {
        std::vector<double> ratios, trees, natives;
        for (const auto& pair : pairs) {
            trees.push_back(pair[0][measure]);
            natives.push_back(pair[1][measure]);
            ratios.push_back(trees.back() / natives.back());
        }
        std::printf("%s %.3f %.3f %.3f\n", kMeasures[measure], Median(ratios), Median(trees), Median(natives));
    }
    EndWindow(parent);
}

}  // namespace
}  // namespace brennvar

// list_bench ROUNDS [buffered]: the native list with its own double buffering.
int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
    const bool isBuffered = argc > 2 && std::strcmp(argv[2], "buffered") == 0;
    ::InitCommonControls();
    brennvar::Run(std::max(1, rounds), isBuffered ? LVS_EX_DOUBLEBUFFER : 0);
    return 0;
}
