#include "tools/ToolDialog_win.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

#include "base/AskAside.h"
#include "config/KeyNames.h"
#include "config/ResourceIds.h"
#include "dialogs/AddressMenu_win.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"
#include "dialogs/SavePlaceDialog_win.h"
#include "dialogs/WriteFailure.h"
#include "tools/AddressInText.h"
#include "ui/ChildControls_win.h"
#include "ui/Clipboard_win.h"
#include "ui/Enabling_win.h"
#include "ui/Paint_win.h"
#include "ui/PopupMenu_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 660;  // of the content
constexpr int kHeight = 440;
constexpr int kLabelGap = 4;
constexpr int kGap = 12;  // above and below the lines
constexpr int kButtonGap = 8;

// A name of the domain system has at most 253 letters (RFC 1035, 2.3.4).
constexpr int kLongestAddress = 255;
// An answer of a megabyte can be as many lines and is shown whole.
constexpr std::size_t kMostLines = 1'100'000;
// As many as are measured and shown within a frame.
constexpr std::size_t kLinesAtOnce = 500;

// Of a disk that answers at last; nobody waits for it but the line that says so.
constexpr std::chrono::hours kSaveLimit{24};

constexpr UINT kMessageLines = WM_APP + 1;
constexpr UINT kMessageSaved = WM_APP + 2;

constexpr int kCopyCommand = 1;
constexpr int kSelectAllCommand = 2;
constexpr int kFirstToolCommand = 10;
constexpr int kFirstRuleCommand = 20;

std::string Trimmed(const std::string& text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

// What can stand in a file's name on any disk.
std::string FileNameOf(std::string text) {
    const auto isPlain = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' || c == '-';
    };
    std::replace_if(
        text.begin(), text.end(), [&](char c) { return !isPlain(c); }, '_');
    return text;
}

}  // namespace

ToolDialog::ToolDialog(const CFonts& fonts, const Language& language, AddressTools& tools, const ToolSetup& setup)
    : CSkinDialog(fonts),
      m_language(language),
      m_tools(tools),
      m_setup(setup),
      m_lines(kMostLines),
      m_worker([this] {
          if (const HWND target = m_postTarget) ::PostMessageA(target, m_setup.finishedMessage, 0, 0);
      }),
      m_saver([this] {
          if (const HWND target = m_postTarget) ::PostMessageA(target, kMessageSaved, 0, 0);
      }) {}

ToolDialog::~ToolDialog() {
    m_postTarget = nullptr;
}

bool ToolDialog::OpenNear(HWND window) {
    m_near = window;
    if (!IsOpen() && !Open(nullptr, m_setup.templateId)) return false;
    m_isClosing = false;
    ::ShowWindow(Window(), SW_SHOW);
    // A message that stands over the dialog is what the user has to see.
    ::SetForegroundWindow(::GetLastActivePopup(Window()));
    return true;
}

void ToolDialog::StartWith(const std::string& text) {
    if (!Window() || text.empty() || !::IsWindowEnabled(Window())) return;
    if (m_isAtWork && !m_wasStopped) return;
    ::SetWindowTextA(m_address.Window(), text.c_str());
    if (m_isAtWork) {
        m_next = text;
    } else {
        Start();
    }
}

RECT ToolDialog::OpeningPlace(SIZE size) const {
    if (!m_near || !::IsWindowVisible(m_near) || ::IsIconic(m_near)) return CenterIn(MainWorkArea(), size);
    RECT around{};
    ::GetWindowRect(m_near, &around);
    return FitInto(Centred(around, size), WorkAreaNear(around));
}

void ToolDialog::OnCreateContent() {
    // What it showed when it was closed has gone with its window.
    m_lines.Clear();
    m_printed.reset();
    m_hasMore = false;
    m_wasStopped = false;
    m_postTarget = Window();
    ::SetWindowTextA(Window(), m_language.GetText(m_setup.title).c_str());
    AdoptControls();
    if (!m_lines.Create(Window(), IDC_TOOL_LINES, GetLook(), m_language.GetText(m_setup.emptyText))) {
        End(IDCANCEL);
        return;
    }
    TreeEvents& events = m_lines.Events();
    events.contextMenu = [this](int row, POINT screen) { ShowMenu(row, screen); };
    events.opened = [this](int row) { OpenForRow(m_setup.ofLine, row); };
    events.refreshWanted = [this] { Start(); };
    // Tab goes from top to bottom.
    ::SetWindowPos(m_lines.Window(), m_stop.Window(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetFirstFocus(IDC_TOOL_ADDRESS);
    SetContentPixels({Scale(kWidth), Scale(kHeight)});
    PlaceControls();
    ShowState();
}

void ToolDialog::AdoptControls() {
    const std::pair<int, std::string> texts[] = {
        {IDC_TOOL_ADDRESS_LABEL, m_language.GetText(m_setup.addressLabel)},
        {IDC_TOOL_START, m_language.GetText(1740, "&Start")},
        {IDC_TOOL_STOP, m_language.GetText(1403, "Stop")},
        {IDC_TOOL_COPY, m_language.GetText(1070, "&Copy")},
        {IDC_TOOL_SAVE, m_language.GetText(1741, "Sa&ve as text...")},
        {IDCANCEL, m_language.GetText(1043, "Close")},
    };
    for (const auto& [id, text] : texts) ::SetDlgItemTextA(Window(), id, text.c_str());
    ::SendMessageA(Item(IDC_TOOL_ADDRESS), EM_LIMITTEXT, kLongestAddress, 0);
    m_addressLabel.Adopt(Item(IDC_TOOL_ADDRESS_LABEL), LabelKind::Plain, GetLook());
    m_address.Adopt(Item(IDC_TOOL_ADDRESS), GetLook());
    m_start.Adopt(Item(IDC_TOOL_START), kPrimaryButton, GetLook());
    m_stop.Adopt(Item(IDC_TOOL_STOP), kButtonDialog, GetLook());
    m_copy.Adopt(Item(IDC_TOOL_COPY), kButtonDialog, GetLook());
    m_save.Adopt(Item(IDC_TOOL_SAVE), kButtonMedium, GetLook());
    m_status.Adopt(Item(IDC_TOOL_STATUS), LabelKind::Quiet, GetLook());
    m_close.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
}

void ToolDialog::PlaceControls() {
    RECT rest = ContentRect();
    const int labelHeight = m_addressLabel.Measure(0).cy;
    m_addressLabel.Place({rest.left, rest.top, rest.right, rest.top + labelHeight});
    rest.top += labelHeight + Scale(kLabelGap);

    // The field stands in the middle of its buttons' height.
    const LONG rowHeight = std::max<LONG>(m_start.Size().cy, FieldHeight());
    LONG right = rest.right;
    for (const CButton* button : {&m_stop, &m_start}) {
        button->MoveTo(right - button->Size().cx, rest.top + (rowHeight - button->Size().cy) / 2);
        right -= button->Size().cx + Scale(kButtonGap);
    }
    const LONG fieldTop = rest.top + (rowHeight - FieldHeight()) / 2;
    m_address.Place({rest.left, fieldTop, right, fieldTop + FieldHeight()});
    rest.top += rowHeight + Scale(kGap);

    const LONG buttonTop = rest.bottom - m_close.Size().cy;
    LONG left = rest.left;
    for (const CButton* button : {&m_copy, &m_save}) {
        button->MoveTo(left, buttonTop);
        left += button->Size().cx + Scale(kButtonGap);
    }
    m_close.MoveTo(rest.right - m_close.Size().cx, buttonTop);
    m_status.Place({left, buttonTop, rest.right - m_close.Size().cx - Scale(kButtonGap), rest.bottom});

    rest.bottom = buttonTop - Scale(kGap);
    m_lines.Place(rest);
}

std::string ToolDialog::TypedText() const {
    return Trimmed(TextOfWindow(m_address.Window()));
}

void ToolDialog::Start() {
    if (m_isAtWork) return;
    const std::string text = TypedText();
    if (text.empty()) {
        ShowMessage(GetLook().fonts, m_language, Window(),
                    m_language.GetText(120, "Destination address is missing!"));
        ::SetFocus(m_address.Window());
        return;
    }
    m_lines.Clear();
    m_printed = std::make_shared<ToolLines>([this] {
        if (const HWND target = m_postTarget) ::PostMessageA(target, kMessageLines, 0, 0);
    });
    m_hasMore = false;
    m_wasStopped = false;
    m_isAtWork =
        m_worker.Start([job = MakeJob(text), printed = m_printed](const StopSignal& stop) { job(*printed, stop); });
    ShowState();
}

void ToolDialog::Stop() {
    m_wasStopped = IsBusy();
    if (!m_isAtWork) {
        m_printed.reset();
        m_hasMore = false;
    }
    m_worker.RequestStop();
    ShowState();
}

void ToolDialog::OnFinished() {
    if (!m_isAtWork || m_worker.Running()) return;  // only the worker tells that it has finished
    m_worker.Stop();
    m_isAtWork = false;
    if (m_isClosing) return EndWhenIdle();
    ShowLines();
    StartWith(std::exchange(m_next, {}));
}

void ToolDialog::ShowLines() {
    if (!m_printed) return;
    const ToolLines::Taken taken = m_printed->Take(kLinesAtOnce);
    m_hasMore = taken.hasMore;
    if (taken.isAnew) m_lines.Clear();
    if (taken.count > 0) m_lines.Append(taken.text);
    if (taken.hasMore) ::PostMessageA(Window(), kMessageLines, 0, 0);
    ShowState();
}

void ToolDialog::ShowState() {
    const bool hasLines = m_lines.LineCount() > 0;
    SetEnabled({{m_start.Window(), !IsBusy()},
                {m_stop.Window(), IsBusy() && !m_wasStopped},
                {m_copy.Window(), hasLines},
                {m_save.Window(), hasLines && !IsBusy() && !m_isSaving}},
               m_address.Window());
    std::string status;
    if (IsBusy()) {
        status = m_language.GetText(1742, "At work...");
    } else if (m_wasStopped) {
        status = m_language.GetText(1743, "Stopped.");
    }
    SetTextIfChanged(m_status.Window(), status);
}

void ToolDialog::ShowMenu(int row, POINT point) {
    const std::optional<Ipv4> address = FindIpv4(m_lines.LineText(row));
    CPopupMenu menu;
    AddAddressTools(menu, m_language, kFirstToolCommand, address.has_value());
    menu.AddSeparator();
    AddRuleTools(menu, m_language, kFirstRuleCommand, address.has_value());
    menu.AddSeparator();
    menu.Add(kCopyCommand, WithKey(m_language.GetText(1070, "&Copy"), KeyStroke::ControlC, m_language),
             MenuImage::Copy, {.isDisabled = !m_lines.HasSelection()});
    menu.Add(kSelectAllCommand, WithKey(m_language.GetText(1071, "Select &all"), KeyStroke::ControlA, m_language),
             MenuImage::SelectAll, {.isDisabled = m_lines.LineCount() == 0});
    const CSkinImage images = LoadMenuImages();
    const int command = menu.Track(Window(), point, TPM_RETURNCMD, GetLook(), &images);
    if (DoRuleCommand(command, kFirstRuleCommand, address.value_or(0), m_tools)) return;
    if (command == kCopyCommand) Copy();
    if (command == kSelectAllCommand) m_lines.SelectAll();
    if (const auto tool = AddressToolOf(command, kFirstToolCommand)) OpenForRow(*tool, row);
}

void ToolDialog::OpenForRow(AddressTool tool, int row) {
    const std::optional<Ipv4> address = FindIpv4(m_lines.LineText(row));
    if (address) m_tools.OpenTool(tool, FormatIpv4(*address));
}

void ToolDialog::Copy() {
    const std::string text = m_lines.HasSelection() ? m_lines.SelectedText() : m_lines.Text();
    CopyToClipboard(Window(), text, GetLook().fonts.Text());
}

void ToolDialog::Save() {
    const std::string typed = FileNameOf(TypedText());
    const SaveWish wish{.title = m_language.GetText(1746, "Save as text"),
                        .name = typed.empty() ? m_setup.fileName : m_setup.fileName + ('-' + typed),
                        .types = {{m_language.GetText(1747, "Text"), "txt"}}};
    const std::optional<SavePlace> place = AskSavePlace(Window(), wish);
    if (!place || m_isSaving || !Window()) return;
    m_savePath = place->path;
    m_saveResult = std::make_shared<std::atomic<WriteResult>>(WriteResult::Failed);
    // A disk of another machine may keep the writer waiting, even when this program ends.
    m_isSaving = true;
    const bool isUnderWay =
        m_saver.Start([path = place->path, text = m_lines.Text(), result = m_saveResult](const StopSignal& stop) {
            const auto write = [path, text] {
                NewFile file(path);
                file.Write(text);
                return file.PutInPlace();
            };
            *result = AskAside(write, kSaveLimit, stop).value_or(WriteResult::Failed);
        });
    ShowState();
    if (!isUnderWay) OnSaved();
}

void ToolDialog::OnSaved() {
    if (!m_isSaving || m_saver.Running()) return;
    m_saver.Stop();
    m_isSaving = false;
    if (m_isClosing) return EndWhenIdle();
    ShowState();
    const WriteResult result = *m_saveResult;
    if (result == WriteResult::Written) {
        SetTextIfChanged(m_status.Window(), m_language.GetText(1748, "The file has been saved."));
    } else {
        ShowMessage(GetLook().fonts, m_language, Window(), DescribeWriteFailure(result, m_savePath, m_language),
                    MessageSign::Failure);
    }
}

void ToolDialog::OnCancel() {
    m_isClosing = true;
    m_wasStopped = m_isAtWork;
    m_next.clear();
    m_worker.RequestStop();
    EndWhenIdle();
}

void ToolDialog::EndWhenIdle() {
    const bool wasActive = ::GetActiveWindow() == Window();
    if (m_isAtWork || m_isSaving) {
        ::ShowWindow(Window(), SW_HIDE);
    } else {
        End(IDCANCEL);
    }
    if (!wasActive || !m_near) return;
    // Windows would pass the activation to another program. A dialog over that window comes before it.
    const std::optional<HWND> next = ModalOwner(m_near);
    if (next && ::IsWindowVisible(*next)) ::SetActiveWindow(*next);
}

void ToolDialog::OnDestroy() {
    m_postTarget = nullptr;
    m_worker.RequestStop();
    CSkinDialog::OnDestroy();
}

bool ToolDialog::OnLoopMessage(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE || !IsBusy()) return false;
    Stop();
    return true;
}

void ToolDialog::DragByCaption(POINT point) {
    ::ReleaseCapture();
    ::ClientToScreen(Window(), &point);
    ::SendMessageA(Window(), WM_NCLBUTTONDOWN, HTCAPTION, MAKELPARAM(point.x, point.y));
}

void ToolDialog::OnCommand(int id, int notification) {
    if (notification != BN_CLICKED) return;
    switch (id) {
        case IDC_TOOL_START: Start(); break;
        case IDC_TOOL_STOP: Stop(); break;
        case IDC_TOOL_COPY: Copy(); break;
        case IDC_TOOL_SAVE: Save(); break;
        default: break;
    }
}

std::optional<LRESULT> ToolDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == m_setup.finishedMessage) {
        OnFinished();
        return 0;
    }
    switch (message) {
        case kMessageLines: ShowLines(); return 0;
        case kMessageSaved: OnSaved(); return 0;
        case WM_LBUTTONDOWN:
            DragByCaption({static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
            return 0;
        default: return CSkinDialog::OnMessage(message, wParam, lParam);
    }
}

}  // namespace brennvar
