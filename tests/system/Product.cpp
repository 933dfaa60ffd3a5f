#include "Product.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "ipc/CommandRecord.h"
#include "support/DrawnTexts_win.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {

std::string Hex(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string hex;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        hex += {kDigits[code >> 4], kDigits[code & 15]};
    }
    return hex;
}

std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool ProductFixture::SaysAnywhere(HWND window, const std::string& text) {
    const auto says = [&](HWND child) { return WindowText(child).find(text) != std::string::npos; };
    return FindVisible(window, says) != nullptr;
}

std::string ProductFixture::Text(int id) const {
    if (const HWND control = Control(id)) return WindowText(control);
    const auto ask = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        return Ask(window, message, wParam, lParam);
    };
    std::optional<std::string> text = DrawnText(m_window, id, ask);
    (void)FindVisible(m_window, [&](HWND child) { return text || (text = DrawnText(child, id, ask)).has_value(); });
    return text.value_or("");
}

void ProductFixture::SetUp() {
    m_data = EmptyDataFolder();
    ::RegDeleteTreeA(HKEY_CURRENT_USER, R"(Software\Quorlan)");
    SetWelcomed(1);
}

void ProductFixture::SetWelcomed(DWORD isWelcomed) {
    ::RegSetKeyValueA(HKEY_CURRENT_USER, kUserKey, "FirstRunBV", REG_DWORD, &isWelcomed, sizeof isWelcomed);
}

void ProductFixture::Install() {
    m_installation.emplace();
    std::filesystem::copy(m_program, m_installation->Path());
    m_program = m_installation->File("BrennvarGUI.exe");
}

void ProductFixture::StartService(const Lines& scenario, const std::string& options) {
    m_service.emplace(scenario, options, m_data);
    Require(m_service->WaitForJournal("EVENT started"));
}

void ProductFixture::StartInterface() {
    m_interface.emplace(Quoted(m_program));
    m_window = nullptr;
    m_window = NextWindow(m_caption);
}

void ProductFixture::Start(const Lines& scenario, const std::string& options) {
    StartService(scenario, options);
    StartInterface();
    Require(WaitForRecords("COMMAND", 3));
    m_sent.clear();
}

void ProductFixture::Stop() {
    m_interface.reset();
    m_service.reset();
    std::filesystem::remove(m_data + "\\journal.txt");
}

void ProductFixture::OpenOptions(int section) const {
    Ask(m_window, WM_COMMAND, kOptionsPage);
    const HWND list = Control(kOptionSections);
    Ask(list, LB_SETCURSEL, static_cast<WPARAM>(section));
    Ask(::GetParent(list), WM_COMMAND, MAKEWPARAM(kOptionSections, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

HWND ProductFixture::List() const {
    return FindVisibleChild(m_window, kTreeClass);
}

Rows ProductFixture::ReadList(int columns, int maxRows) const {
    const HWND list = List();
    return list != nullptr ? ListRows(list, columns, maxRows) : Rows();
}

void ProductFixture::ExpectList(int page, const Rows& expected, Place place) const {
    Ask(m_window, WM_COMMAND, static_cast<WPARAM>(page));
    Rows rows;
    (void)WaitUntil([&] { return (rows = ReadList(static_cast<int>(expected.front().size()))) == expected; });
    EXPECT_EQ(rows, expected) << "line " << place.line();
}

Lines ProductFixture::Sent() const {
    Lines lines = m_service->Journal("COMMAND");
    lines.erase(lines.begin(), lines.begin() + std::min<std::ptrdiff_t>(3, std::ssize(lines)));
    return lines;
}

void ProductFixture::ExpectSent(const Lines& lines, Place place) {
    m_sent.insert(m_sent.end(), lines.begin(), lines.end());
    (void)WaitUntil([&] { return Sent().size() >= m_sent.size(); });
    EXPECT_EQ(Sent(), m_sent) << "line " << place.line();
}

void ProductFixture::SendToService(Place place) {
    CommandRecord record{};
    record.code = CommandCode::ResetFingerprints;
    const auto isSent = [&] {
        const UniqueFile pipe(
            ::CreateFileA(kCommandPipeName, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        DWORD written = 0;
        return pipe && ::WriteFile(pipe.Get(), &record, sizeof record, &written, nullptr);
    };
    Require(WaitUntil(isSent), place);
}

HWND ProductFixture::NextWindow(const std::string& caption, Place place) const {
    const HWND window = WaitForProgramWindow(m_interface->Id(), caption, m_window);
    Require(window != nullptr, place);
    return window;
}

HWND ProductFixture::NextWindowWith(int control, Place place) const {
    HWND found = nullptr;
    const auto fits = [&](HWND window) {
        return window != m_window && ProcessOf(window) == m_interface->Id() &&
               FindVisibleControl(window, control) != nullptr;
    };
    Require(WaitUntil([&] { return (found = FindVisible(nullptr, fits)) != nullptr; }), place);
    return found;
}

void ProductFixture::Close(HWND dialog, Place place) const {
    ::PostMessageA(dialog, WM_CLOSE, 0, 0);
    Require(WaitUntil([&] { return !::IsWindow(dialog) && ::IsWindowEnabled(m_window); }), place);
}

void ProductFixture::Answer(HWND dialog, int button, Place place) {
    Require(PressWhenEnabled(dialog, button) && WaitUntil([&] { return !::IsWindow(dialog); }), place);
}

void ProductFixture::AnswerFileDialog(HWND dialog, const std::string& path) {
    constexpr int kFileName = 1152, kFileNameBox = 1148;
    HWND field = nullptr;
    Require(WaitUntil([&] {
        field = FindVisibleControl(dialog, kFileName);
        if (!field) field = FindVisibleControl(dialog, kFileNameBox);
        return field != nullptr;
    }));
    Ask(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    ::PostMessageA(dialog, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(::GetDlgItem(dialog, IDOK)));
}

void ProductFixture::AnswerMessage(const std::string& expected, int button, Place place) const {
    const HWND message = NextMessage(place);
    EXPECT_EQ(WindowText(::GetDlgItem(message, kMessage)), expected) << "line " << place.line();
    Answer(message, button, place);
}

void ProductFixture::ExpectEnd(Place place) const {
    EXPECT_EQ(m_interface->WaitForEnd(), 0) << "line " << place.line();
}

void ProductFixture::Leave(Place place) const {
    Command(kExitCommand);
    Require(PressWhenEnabled(NextMessage(place), IDOK), place);
    ExpectEnd(place);
}

void ProductFixture::ExpectAnswers(Place place) const {
    constexpr std::chrono::seconds kLimit{5};
    EXPECT_LT(AnswerTime(m_window, kLimit), kLimit) << "line " << place.line();
}

void ProductFixture::Activate() const {
    ::SetForegroundWindow(m_window);
    Require(WaitUntil([this] { return ::GetForegroundWindow() == m_window; }));
}

}  // namespace brennvar::test
