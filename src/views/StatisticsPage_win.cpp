#include "views/StatisticsPage_win.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "base/LocalTime_win.h"
#include "config/ResourceIds.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kGap = 8;
constexpr int kCardHeight = 80;
constexpr int kCardMargin = 8;
constexpr int kNameHeight = 20;
constexpr int kValueHeight = 24;
// The mode's card holds the words of every mode in every language that we deliver; the others share what it leaves.
// It gives way where the page is narrower than in the window's first size.
constexpr int kModeWidth = 240;
constexpr int kLeastModeWidth = 192;
constexpr int kUsualWidth = 740;
// Of the graphs of traffic: 176 of the 416 below the cards in the window's first size, in steps of the grid.
constexpr int kTrafficShare = 176;
constexpr int kTrafficWhole = 416;
constexpr int kGrid = 8;
// What the programs need for their numbers beside a name.
constexpr int kLeastPrograms = 248;

// For each card the page that tells more.
constexpr int kCardPages[] = {IDM_CONNECTIONS, IDM_CONNECTIONS, IDM_CONNECTIONS, IDM_TRAFFIC_LOG};

constexpr char kUnknown[] = "-";

}  // namespace

StatisticsPage::StatisticsPage(const CFonts& fonts, const Language& language, PageTexts texts,
                               Statistics& statistics, const Clock& clock)
    : CPage(fonts, std::move(texts)),
      m_language(language),
      m_words(language),
      m_statistics(statistics),
      m_clock(clock),
      m_mode(language),
      m_incoming(statistics.Incoming()),
      m_outgoing(statistics.Outgoing()),
      m_attacks(statistics.Attacks()),
      m_programs(language) {}

void StatisticsPage::OnCreateContent() {
    m_mode.Create(Window(), ModeButton::Form::Card, IDC_STATISTICS_MODE, GetLook());
    CreateCard(In, IDC_STATISTICS_IN, m_language.GetText(1330, "Incoming"));
    CreateCard(Out, IDC_STATISTICS_OUT, m_language.GetText(1331, "Outgoing"));
    CreateCard(Connections, IDC_STATISTICS_CONNECTIONS, m_language.GetText(46, "Connections"));
    CreateCard(Attacks, IDC_STATISTICS_ATTACKS, m_language.GetText(1333, "Attacks"));
    static_assert(std::size(kCardPages) == CardCount);
    CreateGraphs();
    CreateLists();
}

void StatisticsPage::CreateGraphs() {
    const Look& look = GetLook();
    constexpr COLORREF kGreen = RGB(0, 255, 0);
    constexpr COLORREF kRed = RGB(255, 0, 0);
    (void)m_incoming.Create(Window(), IDC_STATISTICS_IN_GRAPH, m_language.GetText(325, "Incoming Traffic History"),
                            {look.skin, "GRAPH_IN", kGreen}, look);
    (void)m_outgoing.Create(Window(), IDC_STATISTICS_OUT_GRAPH, m_language.GetText(326, "Outgoing Traffic History"),
                            {look.skin, "GRAPH_OUT", kGreen}, look);
    (void)m_attacks.Create(Window(), IDC_STATISTICS_ATTACK_GRAPH, m_language.GetText(327, "Attack History"),
                           {look.skin, "GRAPH_ATTACK", kRed}, look);
    for (C2DPushGraph* const graph : {&m_incoming, &m_outgoing, &m_attacks}) {
        graph->ShowSeconds(m_language.GetText(2401, "%1 s ago"), m_language.GetText(2402, "now"));
    }
}

void StatisticsPage::CreateLists() {
    const Look& look = GetLook();
    (void)m_programs.CreateList(Window(), IDC_STATISTICS_PROGRAMS, look);
    m_programs.events.opened = [this](int) { PostToOwner(IDM_CONNECTIONS); };

    const TreeColumn columns[] = {
        {.title = m_language.GetText(1339, "Time"), .width = 64},
        {.title = m_language.GetText(1340, "Last notices"), .width = 160, .takesRoom = true}};
    (void)m_notices.Create(
        {.parent = Window(),
         .id = IDC_STATISTICS_NOTICES,
         .selectsMany = true,
         .empty = {.text = m_language.GetText(1341,
                                              "No notices yet. What the firewall service reports is listed here.")},
         .name = m_language.GetText(1340, "Last notices")},
        look, columns, *this);
}

void StatisticsPage::CreateCard(Card card, int firstId, const std::string& name) {
    constexpr DWORD kOneLine = SS_LEFT | SS_ENDELLIPSIS;
    const Look& look = GetLook();
    CardTexts& texts = m_cards[card];
    texts.name.Create(Texts(), name, LabelKind::Quiet, kOneLine, firstId, look);
    texts.value.Create(Texts(), kUnknown, LabelKind::Title, kOneLine, firstId + 1, look);
    texts.remark.Create(Texts(), "", LabelKind::Quiet, kOneLine, firstId + 2, look);
}

void StatisticsPage::OnPlaceContent(const RECT& place) {
    const int gap = Scale(kGap);
    PlaceCards({place.left, place.top, place.right, place.top + Scale(kCardHeight)});
    // Below them the two graphs of traffic, and then three side by side.
    const LONG top = place.top + Scale(kCardHeight) + gap;
    const int height = ::MulDiv(place.bottom - top - gap, kTrafficShare, kTrafficWhole);
    const LONG middle = top + height / Scale(kGrid) * Scale(kGrid);
    const LONG centre = place.left + (WidthOf(place) - gap) / 2;
    m_incoming.Place({place.left, top, centre, middle});
    m_outgoing.Place({centre + gap, top, place.right, middle});
    const int room = WidthOf(place) - 2 * gap;
    const int programs = std::max(room / 3, Scale(kLeastPrograms));
    const LONG left = place.left + (room - programs) / 2;
    const LONG right = left + gap + programs;
    m_attacks.Place({place.left, middle + gap, left, place.bottom});
    m_programs.Place({left + gap, middle + gap, right, place.bottom});
    m_notices.Place({right + gap, middle + gap, place.right, place.bottom});
}

void StatisticsPage::PlaceCards(const RECT& band) {
    const int gap = Scale(kGap);
    const int margin = Scale(kCardMargin);
    const int modeWidth = Scale(WidthOf(band) < Scale(kUsualWidth) ? kLeastModeWidth : kModeWidth);
    const int room = WidthOf(band) - modeWidth - CardCount * gap;  // of all the others
    const auto edge = [&](int others) { return band.left + modeWidth + others * gap + room * others / CardCount; };
    const RECT mode{band.left, band.top, band.left + modeWidth, band.bottom};
    std::vector<PageCard> grounds{{.place = mode}};
    m_mode.Place(Inset(mode, 1));
    for (int card = 0; card < CardCount; ++card) {
        const RECT ground{edge(card) + gap, band.top, edge(card + 1), band.bottom};
        grounds.push_back({.place = ground, .command = kCardPages[card]});
        CardTexts& texts = m_cards[card];
        RECT line{ground.left + margin, ground.top + margin, ground.right - margin, 0};
        const auto placeLine = [&](CDrawnText& label, int height) {
            line.bottom = line.top + Scale(height);
            label.Place(line);
            line.top = line.bottom;
        };
        placeLine(texts.name, kNameHeight);
        placeLine(texts.value, kValueHeight);
        placeLine(texts.remark, kNameHeight);
    }
    SetCards(std::move(grounds));
    ShowCards();  // other remarks may fit now
}

void StatisticsPage::OnShow() {
    m_statistics.Watch([this] { ShowStatistics(); });
    ShowStatistics();
}

void StatisticsPage::OnHide() {
    m_statistics.Watch({});
}

void StatisticsPage::OnCommand(int id, int notification) {
    if (id == IDC_STATISTICS_MODE && notification == BN_CLICKED) m_mode.OpenMenu();
}

void StatisticsPage::ShowStatistics() {
    ShowCards();
    ShowNotices();
    m_programs.ShowPrograms(m_statistics.Programs());
    ShowTraffic(m_incoming, m_statistics.Incoming(), m_statistics.RecentIn());
    ShowTraffic(m_outgoing, m_statistics.Outgoing(), m_statistics.RecentOut());
    m_attacks.Update(std::to_string(m_statistics.AttacksOfLastTick()));
}

// The rate of the second stands in the cards and in the status line.
void StatisticsPage::ShowTraffic(C2DPushGraph& graph, const PushGraphSamples& samples,
                                 const RecentTraffic& traffic) const {
    constexpr std::uint64_t kSecond = 1000;
    const RecentTraffic::Rates rates = traffic.OfLast(samples.Lines()[Statistics::kLine].samples.size());
    const std::string peak = m_language.GetText(2254, "peak") + " " + FormatRate(rates.peak, kSecond, m_words);
    graph.Update(
        peak + ", " + m_language.GetText(2400, "average") + " " + FormatRate(rates.average, kSecond, m_words),
        peak);
}

void StatisticsPage::ShowCards() {
    const std::optional<Statistics::Rates>& rates = m_statistics.CurrentRates();
    const auto showRate = [&](Card card, const std::string Statistics::Rates::*rate, std::uint64_t total) {
        const std::string amount = FormatBytes(total, m_words);
        ShowCard(card, rates ? (*rates).*rate : kUnknown, m_language.GetText(1334, "Total:") + " " + amount,
                 amount);
    };
    showRate(In, &Statistics::Rates::in, m_statistics.Totals().bytesIn);
    showRate(Out, &Statistics::Rates::out, m_statistics.Totals().bytesOut);

    m_mode.Show(m_statistics.Mode(), m_clock.UtcNow());

    const std::optional<ConnectionCounts>& counts = m_statistics.Connections();
    ShowCard(Connections, counts ? FormatCount(counts->connections) : kUnknown,
             counts ? m_language.GetText(1682, "listening:") + " " + FormatCount(counts->listeners) : "",
             counts ? "(+" + FormatCount(counts->listeners) + ")" : "");
    ShowCard(Attacks, FormatCount(m_statistics.AttackCount()), m_language.GetText(1338, "since the start"));
}

void StatisticsPage::ShowCard(Card card, const std::string& value, const std::string& remark,
                              const std::string& brief) {
    CardTexts& texts = m_cards[card];
    const bool fits =
        MeasureText(LabelFont(LabelKind::Quiet, GetLook().fonts), remark, 0).cx <= WidthOf(texts.remark.Place());
    texts.value.SetText(value);
    texts.remark.SetText(fits || brief.empty() ? remark : brief);
}

void StatisticsPage::ShowNotices() {
    const std::uint64_t count = m_statistics.NoticeCount();
    if (count == m_noticesShown) return;
    // What the user has selected or scrolled to moves down with its row; at the top the latest one is seen.
    const bool isAtTop = m_notices.FirstVisibleRow() == 0;
    m_notices.MoveRowsBehind(-1, static_cast<int>(count - std::exchange(m_noticesShown, count)));
    m_notices.Refresh();
    if (isAtTop) m_notices.ScrollTo(0);
}

TreeCell StatisticsPage::Cell(int row, int column) const {
    const Statistics::Notice& notice = m_statistics.Notices()[static_cast<std::size_t>(row)];
    TreeCell cell;
    cell.text = column == 0 ? FormatTimeOfDay(notice.time, TimeOfDay::Seconds) : notice.text;
    if (column == 0) cell.tone = Tone::Muted;
    return cell;
}

}  // namespace brennvar
