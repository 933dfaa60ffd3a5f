#include "advanced/WhyDialog_win.h"

#include <algorithm>
#include <utility>

#include "base/LocalTime_win.h"
#include "config/ResourceIds.h"
#include "controls/FieldFrame_win.h"
#include "dialogs/ModalPlace_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Enabling_win.h"
#include "ui/Paint_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 760;
constexpr int kListHeight = 220;
constexpr int kGap = 12;
constexpr int kSmallGap = 8;
constexpr int kLabelGap = 3;
constexpr int kStageWidth = 200;
constexpr int kVerdictWidth = 160;
constexpr int kLeastSays = 200;
constexpr int kFrame = 1;        // pixels
constexpr int kAnswerLines = 2;  // of the longest answer, in any language

// A text that is longer is none of a rule (ipc/AdvancedRuleRecord.h).
constexpr WPARAM kLongestText = 259;

// The fields, row by row, and their parts of the width.
struct Place {
    WhyField field;
    int parts;
};
constexpr Place kRows[3][4] = {
    {{WhyField::Program, 3}, {WhyField::User, 1}},
    {{WhyField::Protocol, 1}, {WhyField::Direction, 1}, {WhyField::Day, 1}, {WhyField::Time, 1}},
    {{WhyField::RemoteAddress, 1},
     {WhyField::RemotePort, 1},
     {WhyField::LocalAddress, 1},
     {WhyField::LocalPort, 1}}};
constexpr int kParts = 4;

constexpr std::size_t IndexOf(WhyField field) {
    return static_cast<std::size_t>(field);
}
constexpr int IdOf(WhyField field) {
    return IDC_WHY_FIELD_FIRST + static_cast<int>(field);
}

enum Column { kStage, kSays, kVerdict };

}  // namespace

WhyDialog::WhyDialog(const Parts& parts)
    : CSkinDialog(parts.fonts),
      m_parts(parts),
      m_ruleOf(
          parts.reads, [&files = parts.files](const std::string& program) { return files.ActionOf(program); },
          [this](std::optional<RuleAction> action, const std::string& program) {
              if (m_program != program) return;
              m_action = std::move(action);
              Answer();
          }) {}

void WhyDialog::AskNear(HWND window, const TrafficFacts& facts) {
    m_near = window;
    if (!IsOpen() && !Open(nullptr, IDD_WHY)) return;
    ::ShowWindow(Window(), SW_SHOW);
    ::SetForegroundWindow(Window());
    SetFields(facts);
    Read();
}

RECT WhyDialog::OpeningPlace(SIZE size) const {
    if (!m_near || !::IsWindowVisible(m_near) || ::IsIconic(m_near)) return CenterIn(MainWorkArea(), size);
    RECT around{};
    ::GetWindowRect(m_near, &around);
    return FitInto(Centred(around, size), WorkAreaNear(around));
}

void WhyDialog::OnCreateContent() {
    const Language& language = m_parts.language;
    m_report = {};
    ::SetWindowTextA(Window(), language.GetText(1934, "Which rule decides?").c_str());
    ::SetDlgItemTextA(Window(), IDC_WHY_REMARK, WhyRemark(language).c_str());
    ::SetDlgItemTextA(Window(), IDC_WHY_SHOW, language.GetText(2169, "Show &rule").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, language.GetText(1043, "Close").c_str());
    m_answer.Adopt(Item(IDC_WHY_ANSWER), LabelKind::Title, GetLook());
    m_remark.Adopt(Item(IDC_WHY_REMARK), LabelKind::Quiet, GetLook());
    m_show.Adopt(Item(IDC_WHY_SHOW), kButtonMedium, GetLook());
    m_close.Adopt(Item(IDCANCEL), kPrimaryButton, GetLook());
    for (const auto& row : kRows) {
        for (const Place& place : row) {
            if (place.parts > 0) CreateField(place.field);
        }
    }
    if (!CreateList()) {
        End(IDCANCEL);
        return;
    }
    // Tab goes from top to bottom.
    for (const HWND control : {m_remark.Window(), m_show.Window(), m_close.Window()}) {
        ::SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    SetFirstFocus(IdOf(WhyField::Program));
    PlaceParts();
}

void WhyDialog::CreateField(WhyField field) {
    const Language& language = m_parts.language;
    m_labels[IndexOf(field)].Create(Window(), WhyLabel(language, field), LabelKind::Plain, SS_LEFT | SS_ENDELLIPSIS,
                                    0, GetLook());
    if (field == WhyField::Direction) {
        m_direction.Create(Window(), IdOf(field), GetLook());
        for (const Text& text : {Text{1114, "unknown"}, Text{1204, "Incoming"}, Text{1205, "Outgoing"}}) {
            (void)m_direction.Add(language.GetText(text));
        }
    } else if (field == WhyField::Protocol) {
        m_protocol.Create(Window(), IdOf(field), GetLook());
    } else {
        CEdit& edit = m_edits[IndexOf(field)];
        edit.Create(Window(), "", ES_AUTOHSCROLL, IdOf(field), GetLook());
        ::SendMessageA(edit.Window(), EM_LIMITTEXT, kLongestText, 0);
        edit.SetCue(language.GetText(1114, "unknown"));
    }
}

bool WhyDialog::CreateList() {
    const Language& language = m_parts.language;
    std::vector<TreeColumn> columns(3);
    columns[kStage].title = language.GetText(2166, "Stage");
    columns[kStage].width = kStageWidth;
    columns[kSays].title = language.GetText(2167, "What it says");
    columns[kSays].width = columns[kSays].minimalWidth = kLeastSays;
    columns[kSays].takesRoom = true;
    columns[kVerdict].title = language.GetText(2168, "Result");
    columns[kVerdict].width = kVerdictWidth;
    const TreeSetup setup{.parent = Window(), .id = IDC_WHY_LINES};
    if (!m_list.Create(setup, GetLook(), columns, *this)) return false;
    m_list.events.opened = [this](int row) { OpenLine(row); };
    m_list.events.refreshWanted = [this] { Read(); };
    m_list.events.selectionChanged = [this] { ShowButton(); };
    return true;
}

void WhyDialog::PlaceParts() {
    const int width = Scale(kWidth);
    const int answerHeight = kAnswerLines * static_cast<int>(MeasureText(GetLook().fonts.Title(), "X", 0).cy);
    const int labelHeight = m_labels.front().Measure(0).cy;
    const int rowHeight = labelHeight + Scale(kLabelGap) + FieldHeight() + Scale(kSmallGap);
    const int remarkHeight = m_remark.Measure(width).cy;
    SetContentPixels({width, answerHeight + 3 * rowHeight + Scale(2 * kGap + kListHeight + kSmallGap + kGap) +
                                 remarkHeight + m_show.Size().cy});
    RECT rest = ContentRect();
    m_answer.Place({rest.left, rest.top, rest.right, rest.top + answerHeight});
    rest.top += answerHeight + Scale(kGap);

    const LONG part = (rest.right - rest.left - (kParts - 1) * Scale(kGap)) / kParts;
    for (const auto& row : kRows) {
        LONG left = rest.left;
        for (const Place& place : row) {
            if (place.parts == 0) continue;
            const LONG right = left + place.parts * part + (place.parts - 1) * Scale(kGap);
            m_labels[IndexOf(place.field)].Place({left, rest.top, right, rest.top + labelHeight});
            const LONG top = rest.top + labelHeight + Scale(kLabelGap);
            ::MoveWindow(Item(IdOf(place.field)), static_cast<int>(left), static_cast<int>(top),
                         static_cast<int>(right - left), FieldHeight(), TRUE);
            left = right + Scale(kGap);
        }
        rest.top += rowHeight;
    }
    rest.top += Scale(kGap - kSmallGap);

    // From below: what the work area cuts off is cut off the list, which scrolls.
    m_show.MoveTo(rest.left, rest.bottom - m_show.Size().cy);
    m_close.MoveTo(rest.right - m_close.Size().cx, rest.bottom - m_close.Size().cy);
    rest.bottom -= m_show.Size().cy + Scale(kGap);
    m_remark.Place({rest.left, rest.bottom - remarkHeight, rest.right, rest.bottom});
    rest.bottom -= remarkHeight + Scale(kSmallGap);
    m_card = rest;
    m_list.Place(Inset(rest, kFrame));
    ::ShowWindow(m_list.Window(), SW_SHOWNA);
}

void WhyDialog::OnPaintGround(HDC dc) {
    DrawFrame(dc, m_card, GetLook().colours.frame2);
}

void WhyDialog::SetFields(const TrafficFacts& facts) {
    m_isFilling = true;
    TrafficFacts filled = facts;
    if (!filled.when) filled.when = MomentNow();
    const WhyTexts texts = WhyTextsOf(filled);
    for (std::size_t i = 0; i < kWhyFieldCount; ++i) {
        if (!IsWhyChoice(static_cast<WhyField>(i))) m_edits[i].SetText(texts[i]);
    }
    m_protocols = {"", "1", "6", "17", "806"};
    m_protocol.Clear();
    for (const std::string& name : {m_parts.language.GetText(1114, "unknown"), std::string("ICMP"),
                                    std::string("TCP"), std::string("UDP"), std::string("ARP")}) {
        (void)m_protocol.Add(name);
    }
    const std::string& protocol = TextOf(texts, WhyField::Protocol);
    auto at = std::find(m_protocols.begin(), m_protocols.end(), protocol);
    if (at == m_protocols.end()) {
        (void)m_protocol.Add("IP " + protocol);
        at = m_protocols.insert(at, protocol);
    }
    m_protocol.Select(static_cast<int>(at - m_protocols.begin()));
    m_direction.Select(static_cast<int>(facts.direction));
    m_isFilling = false;
}

WhyTexts WhyDialog::Typed() const {
    WhyTexts texts;
    for (std::size_t i = 0; i < kWhyFieldCount; ++i) {
        if (!IsWhyChoice(static_cast<WhyField>(i))) texts[i] = m_edits[i].Text();
    }
    const int protocol = m_protocol.Selected();
    if (protocol > 0) TextOf(texts, WhyField::Protocol) = m_protocols[static_cast<std::size_t>(protocol)];
    const int direction = m_direction.Selected();
    if (direction > 0) TextOf(texts, WhyField::Direction) = std::to_string(direction);
    return texts;
}

void WhyDialog::Read() {
    m_program.reset();
    LookUpProgram();
    m_parts.reads.Ask<DecisionReading>([&files = m_parts.files] { return files.Read(); },
                                       m_alive.Guard([this](std::optional<DecisionReading> reading) {
                                           m_reading = std::move(reading).value_or(DecisionReading{});
                                           Answer();
                                       }));
    Answer();
}

void WhyDialog::LookUpProgram() {
    const std::string program = ParseWhyTexts(Typed(), {}).facts.program;
    if (m_program == program) return;
    m_program = program;
    m_action.reset();
    if (!program.empty()) m_ruleOf.Refresh(program);
}

void WhyDialog::Answer() {
    if (!Window()) return;
    const Language& language = m_parts.language;
    const WhyQuestion question = ParseWhyTexts(Typed(), MomentNow());
    if (!m_reading || question.wrong) {
        std::string says = language.GetText(2170, "The rules are being read...");
        if (question.wrong) {
            std::string label = WhyLabel(language, *question.wrong);
            if (label.ends_with(':')) label.pop_back();
            says = FillText(language.GetText(2171, "This cannot be understood: %1"), {label});
        }
        WhyReport report;
        report.answer = std::move(says);
        return Show(std::move(report));
    }
    const std::vector<Ipv4> blocked = m_parts.blocked.InForce(m_parts.clock.UtcNow());
    KnownRules known{.blocked = blocked, .mode = m_reading->mode, .application = m_action};
    if (m_reading->advanced) known.advanced = *m_reading->advanced;
    const Decision decision = Decide(known, question.facts, question.moment);
    Show(ReportDecision(language, decision, known, question.facts));
}

void WhyDialog::Show(WhyReport report) {
    const bool isAnother = report.lines.size() != m_report.lines.size() || report.decider != m_report.decider;
    m_report = std::move(report);
    SetTextIfChanged(m_answer.Window(), m_report.answer);
    m_list.Refresh();
    if (isAnother && !m_report.lines.empty()) {
        m_list.SelectRow(static_cast<int>(m_report.decider));
        m_list.EnsureVisible(static_cast<int>(m_report.decider));
    }
    ShowButton();
}

void WhyDialog::ShowButton() {
    const int row = m_list.SelectedRow();
    const bool hasLink = row >= 0 && row < RowCount() && m_report.lines[static_cast<std::size_t>(row)].link;
    SetEnabled({{m_show.Window(), hasLink}}, m_close.Window());
}

TreeCell WhyDialog::Cell(int row, int column) const {
    const WhyLine& line = m_report.lines[static_cast<std::size_t>(row)];
    TreeCell cell;
    cell.text = column == kStage ? line.stage : column == kSays ? line.says : line.verdict;
    if (column == kVerdict || line.tone == Tone::Muted) cell.tone = line.tone;
    return cell;
}

void WhyDialog::OpenLine(int row) {
    if (row < 0 || row >= RowCount()) return;
    if (const auto& link = m_report.lines[static_cast<std::size_t>(row)].link) {
        m_parts.pages.OpenPageAt(link->page, link->row);
    }
}

void WhyDialog::OnCommand(int id, int notification) {
    if (id == IDC_WHY_SHOW && notification == BN_CLICKED) {
        // Enter in a field presses this button as well, though it is the list that it speaks of.
        OpenLine(m_list.SelectedRow());
        return;
    }
    const bool isField = id >= IDC_WHY_FIELD_FIRST && id < IDC_WHY_FIELD_FIRST + static_cast<int>(kWhyFieldCount);
    const bool isChoice = isField && IsWhyChoice(static_cast<WhyField>(id - IDC_WHY_FIELD_FIRST));
    if (!isField || m_isFilling || notification != (isChoice ? CBN_SELCHANGE : EN_CHANGE)) return;
    if (id == IdOf(WhyField::Program)) LookUpProgram();
    Answer();
}

}  // namespace brennvar
