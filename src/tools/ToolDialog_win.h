// A dialog of a network tool: an address, what the tool prints about it, and buttons to start, stop, copy and save.
// A derived dialog says what is asked; this one asks, off the user-interface thread. It stands beside the control
// center, which goes on working.
//
// Enter starts. Esc stops what is under way, and closes the dialog when nothing is. What is under way when the
// dialog is closed is asked to stop, and the window goes at once; the dialog has ended (IsOpen) when the tool has.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/NewFile.h"
#include "base/StopSignal.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"
#include "dialogs/AddressTools.h"
#include "dialogs/SkinDialog_win.h"
#include "tools/ToolOutput.h"
#include "tree/OutputList_win.h"
#include "ui/WorkerThread.h"

namespace brennvar {

// What one tool dialog has otherwise than another. Its template has the controls IDC_TOOL_ (config/ResourceIds.h).
struct ToolSetup {
    int templateId = 0;
    // Posted to the dialog by the worker when the tool has finished.
    UINT finishedMessage = 0;
    Text title{};
    Text addressLabel{};
    Text emptyText{};           // of the list before the first start
    AddressTool ofLine{};       // what Enter or a double click on a line with an address opens
    const char* fileName = "";  // begins the name that is suggested for a file: "whois" makes "whois-10.0.0.1.txt"
};

class ToolDialog : public CSkinDialog {
public:
    // Everything is borrowed for the life of the dialog.
    ToolDialog(const CFonts& fonts, const Language& language, AddressTools& tools, const ToolSetup& setup);
    // Waits until the tool has stopped, which tools do within 100 ms.
    ~ToolDialog() override;

    // Shows the dialog, over the middle of that window where it is seen, or brings it to the front. False when
    // there is no such window.
    bool OpenNear(HWND window);
    // Puts the text into the field and starts, unless the tool is at work or a message of it stands. While it ends,
    // because it was stopped or the dialog was closed, the text waits for that. An empty text changes nothing.
    void StartWith(const std::string& text);
    // From the start until the finish message.
    [[nodiscard]] bool IsAtWork() const { return m_isAtWork; }

protected:
    // What the worker does for one address. It owns what it uses, or borrows what outlives the dialog, prints into
    // the output, and ends within 100 ms of the stop signal. What it throws ends it.
    using ToolJob = std::function<void(ToolOutput& output, const StopSignal& stop)>;
    // text: as typed, without blanks around it; not empty.
    [[nodiscard]] virtual ToolJob MakeJob(const std::string& text) = 0;

    [[nodiscard]] const Language& GetLanguage() const { return m_language; }

    // An override of one of these calls it as well.
    void OnCreateContent() override;
    void OnCommand(int id, int notification) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnCancel() override;
    void OnDestroy() override;
    bool OnLoopMessage(const MSG& message) override;
    [[nodiscard]] RECT OpeningPlace(SIZE size) const override;

    void AdoptControls();
    void PlaceControls();
    [[nodiscard]] std::string TypedText() const;
    void Start();
    void Stop();
    // At work, or what it has printed is not all shown.
    [[nodiscard]] bool IsBusy() const { return m_isAtWork || m_hasMore; }
    void OnFinished();
    // Some of the lines that have come: the rest waits until other messages had their turn.
    void ShowLines();
    void ShowState();
    void ShowMenu(int row, POINT point);
    void OpenForRow(AddressTool tool, int row);
    void Copy();
    void Save();
    void OnSaved();
    // The whole dialog is as its caption. Client coordinates.
    void DragByCaption(POINT point);
    // Ends the dialog as soon as nothing of it is under way.
    void EndWhenIdle();

    const Language& m_language;
    AddressTools& m_tools;
    const ToolSetup m_setup;
    HWND m_near = nullptr;

    CLabel m_addressLabel;
    CEdit m_address;
    CButton m_start;
    CButton m_stop;
    COutputList m_lines;
    CButton m_copy;
    CButton m_save;
    CLabel m_status;
    CButton m_close;

    bool m_isAtWork = false;
    bool m_hasMore = false;  // lines that have been printed and wait for their turn to be shown
    bool m_wasStopped = false;
    bool m_isClosing = false;
    bool m_isSaving = false;
    std::string m_next;  // what is asked when the tool, which was told to stop, has ended
    std::string m_savePath;
    std::shared_ptr<std::atomic<WriteResult>> m_saveResult;
    std::shared_ptr<ToolLines> m_printed;      // of the latest start
    std::atomic<HWND> m_postTarget = nullptr;  // for the workers: the window while there is one
    // Last: they use what stands above.
    CWorkerThread m_worker;
    CWorkerThread m_saver;
};

}  // namespace brennvar
