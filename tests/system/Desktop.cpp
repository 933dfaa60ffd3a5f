#include "Desktop.h"

#include <commctrl.h>

#include <cstring>

#include "Programs.h"
#include "base/Handles_win.h"

namespace brennvar::test {
namespace {

struct WindowSearch {
    DWORD processId;
    std::string text;      // caption or class
    HWND other = nullptr;  // not this one
    HWND found = nullptr;
};

BOOL CALLBACK MatchProgramWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    if (processId != search.processId || window == search.other || !::IsWindowVisible(window)) return TRUE;
    char caption[256] = {};
    ::GetWindowTextA(window, caption, sizeof caption);
    if (search.text != caption) return TRUE;
    search.found = window;
    return FALSE;
}

BOOL CALLBACK MatchVisibleChild(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    char className[128] = {};
    ::GetClassNameA(window, className, sizeof className);
    if (search.text != className || !::IsWindowVisible(window)) return TRUE;
    search.found = window;
    return FALSE;
}

// Memory in another process, for the messages that carry pointers.
class RemoteMemory {
public:
    RemoteMemory(HWND window, std::size_t size) {
        DWORD processId = 0;
        ::GetWindowThreadProcessId(window, &processId);
        m_process.Reset(::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, processId));
        m_memory = ::VirtualAllocEx(m_process.Get(), nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;
    ~RemoteMemory() {
        if (m_memory != nullptr) ::VirtualFreeEx(m_process.Get(), m_memory, 0, MEM_RELEASE);
    }
    [[nodiscard]] char* Address() const { return static_cast<char*>(m_memory); }
    bool Write(const void* bytes, std::size_t size) const {
        return ::WriteProcessMemory(m_process.Get(), m_memory, bytes, size, nullptr) != FALSE;
    }
    bool Read(const char* from, void* bytes, std::size_t size) const {
        return ::ReadProcessMemory(m_process.Get(), from, bytes, size, nullptr) != FALSE;
    }

private:
    UniqueProcess m_process;
    void* m_memory = nullptr;
};

}  // namespace

HWND FindProgramWindow(DWORD processId, const std::string& caption, HWND other) {
    WindowSearch search{.processId = processId, .text = caption, .other = other};
    ::EnumWindows(MatchProgramWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND WaitForProgramWindow(DWORD processId, const std::string& caption) {
    HWND window = nullptr;
    (void)WaitUntil([&] { return (window = FindProgramWindow(processId, caption)) != nullptr; });
    return window;
}

std::string WindowText(HWND window) {
    std::string text(8192, '\0');
    DWORD_PTR length = 0;
    if (!::SendMessageTimeoutA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL,
                               5000, &length)) {
        return {};
    }
    text.resize(length);
    return text;
}

bool PressWhenEnabled(HWND dialog, int controlId) {
    const HWND control = ::GetDlgItem(dialog, controlId);
    if (control == nullptr || !WaitUntil([&] { return ::IsWindowEnabled(control) != FALSE; })) return false;
    return ::PostMessageA(control, BM_CLICK, 0, 0) != FALSE;
}

std::vector<std::vector<std::string>> ListRows(HWND list, int columns, int maxRows) {
    struct Exchange {
        LVITEMA item;
        char text[512];
    };
    const RemoteMemory remote(list, sizeof(Exchange));
    DWORD_PTR count = 0;
    ::SendMessageTimeoutA(list, LVM_GETITEMCOUNT, 0, 0, SMTO_NORMAL, 5000, &count);
    std::vector<std::vector<std::string>> rows;
    for (int row = 0; row < static_cast<int>(count) && row < maxRows; ++row) {
        std::vector<std::string> cells;
        for (int column = 0; column < columns; ++column) {
            Exchange exchange{};
            exchange.item.iSubItem = column;
            exchange.item.pszText = remote.Address() + offsetof(Exchange, text);
            exchange.item.cchTextMax = sizeof exchange.text;
            remote.Write(&exchange, sizeof exchange);
            DWORD_PTR ignored = 0;
            ::SendMessageTimeoutA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row),
                                  reinterpret_cast<LPARAM>(remote.Address()), SMTO_NORMAL, 5000, &ignored);
            remote.Read(remote.Address(), &exchange, sizeof exchange);
            exchange.text[sizeof exchange.text - 1] = 0;
            cells.emplace_back(exchange.text);
        }
        rows.push_back(std::move(cells));
    }
    return rows;
}

HWND FindVisibleChild(HWND parent, const std::string& className) {
    WindowSearch search{.processId = 0, .text = className};
    ::EnumChildWindows(parent, MatchVisibleChild, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::chrono::milliseconds AnswerTime(HWND window, std::chrono::milliseconds limit) {
    const auto start = std::chrono::steady_clock::now();
    DWORD_PTR ignored = 0;
    const LRESULT answered =
        ::SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(limit.count()), &ignored);
    if (answered == 0) return limit;
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

}  // namespace brennvar::test
