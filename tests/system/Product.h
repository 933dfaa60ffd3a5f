// What the tests of the finished program share: names and numbers that automation relies on, and the program with
// the service stand-in.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "Desktop.h"
#include "StandInProcess.h"
#include "ipc/CommandRecord.h"

namespace brennvar::test {

inline constexpr char kCaption[] = "Brennvar Personal Firewall";
inline constexpr char kQuestionCaption[] = "Confirm network connection";
inline constexpr int kExitCommand = 376, kAboutCommand = 427;
inline constexpr int kOptionsPage = 437, kApplicationsPage = 439, kConnectionsPage = 462;
inline constexpr int kPages[] = {461, kConnectionsPage, 429, kOptionsPage, kApplicationsPage, 463};
inline constexpr int kOptionSections = 1100;
inline constexpr int kYes = 334, kNo = 337, kRemember = 573;

class ProductFixture : public ::testing::Test {
protected:
    void SetUp() override {
        m_data = EmptyDataFolder();
        ::RegDeleteTreeA(HKEY_CURRENT_USER, R"(Software\Quorlan)");
        SetWelcomed(1);
    }

    // Whether the user has been welcomed already: the balloon is a window of the program that comes at any time.
    static void SetWelcomed(DWORD isWelcomed) {
        ::RegSetKeyValueA(HKEY_CURRENT_USER, R"(Software\Quorlan\Brennvar Firewall)", "FirstRunBV", REG_DWORD,
                          &isWelcomed, sizeof isWelcomed);
    }

    void StartService(const std::vector<std::string>& scenario, const std::string& options = "") {
        m_service.emplace(scenario, options, m_data);
        ASSERT_TRUE(m_service->WaitForJournal("EVENT started")) << m_service->Output();
    }
    // Starts the interface and waits for its window.
    void StartInterface() {
        // A second one would only call the first: the one that the last test ended must be gone for good.
        ASSERT_TRUE(WaitUntil([] { return !UniqueMutex(::OpenMutexA(SYNCHRONIZE, FALSE, "Local\\BrennvarGUI")); }));
        m_interface.emplace(Quoted(m_program));
        m_window = WaitForProgramWindow(m_interface->Id(), m_caption);
        ASSERT_NE(m_window, nullptr) << (m_interface->IsRunning() ? "it runs" : "it has ended");
    }
    void Start(const std::vector<std::string>& scenario) {
        ASSERT_NO_FATAL_FAILURE(StartService(scenario));
        ASSERT_NO_FATAL_FAILURE(StartInterface());
    }

    void Command(int command) const { ::PostMessageA(m_window, WM_COMMAND, static_cast<WPARAM>(command), 0); }
    // Opens a section of the Options page; its number counts from 0.
    void OpenOptions(int section) const {
        Ask(m_window, WM_COMMAND, kOptionsPage);
        const HWND list = FindVisibleControl(m_window, kOptionSections);
        Ask(list, LB_SETCURSEL, static_cast<WPARAM>(section));
        Ask(::GetParent(list), WM_COMMAND, MAKEWPARAM(kOptionSections, LBN_SELCHANGE),
            reinterpret_cast<LPARAM>(list));
    }
    // What the service got after the three commands of the start.
    [[nodiscard]] std::vector<std::string> Sent() const {
        std::vector<std::string> lines = m_service->Journal("COMMAND");
        lines.erase(lines.begin(), lines.begin() + std::min<std::ptrdiff_t>(3, std::ssize(lines)));
        return lines;
    }
    // A command (17) beside those of the program, for a scenario that waits for it.
    [[nodiscard]] static bool SendToService() {
        CommandRecord record{};
        record.code = CommandCode::ResetFingerprints;
        return WaitUntil([&] {
            const UniqueFile pipe(
                ::CreateFileA(kCommandPipeName, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
            DWORD written = 0;
            return pipe && ::WriteFile(pipe.Get(), &record, sizeof record, &written, nullptr);
        });
    }
    // Waits until that many records have come in on the channel.
    [[nodiscard]] bool WaitForRecords(const std::string& channel, std::size_t count) const {
        return WaitUntil([&] { return m_service->Journal(channel).size() >= count; });
    }
    // A window with the main window's caption beside it.
    [[nodiscard]] HWND WaitForOther(HWND another = nullptr) const {
        return WaitForProgramWindow(m_interface->Id(), m_caption, m_window, another);
    }
    [[nodiscard]] HWND WaitForQuestion() const { return WaitForProgramWindow(m_interface->Id(), kQuestionCaption); }
    [[nodiscard]] static bool Answer(HWND dialog, int button) {
        return PressWhenEnabled(dialog, button) && WaitUntil([&] { return !::IsWindow(dialog); });
    }

    std::string m_program = BuiltProgram(R"(src\app\BrennvarGUI.exe)");
    std::string m_caption = kCaption;
    std::string m_data;
    std::optional<StandInProcess> m_service;
    std::optional<RunningProgram> m_interface;
    HWND m_window = nullptr;
};

}  // namespace brennvar::test
