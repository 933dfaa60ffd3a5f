#include "views/StatisticsPage_win.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/LocalTime_win.h"
#include "config/ResourceIds.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kGap = 8;
constexpr int kCardHeight = 80;
constexpr int kCardMargin = 8;
constexpr int kNameHeight = 20;
constexpr int kValueHeight = 24;
// The card of the mode, which holds the words of every mode in every language that we deliver. The others share the
// rest.
constexpr int kModeWidth = 240;
constexpr int kLeastModeWidth = 192;
constexpr int kModeShare = 32;  // percent of the room, between the two

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
      m_attacks(statistics.Attacks()) {}

void StatisticsPage::OnCreateContent() {
    m_mode.Create(Window(), ModeButton::Form::Card, IDC_STATISTICS_MODE, GetLook());
    CreateCard(In, IDC_STATISTICS_IN, m_language.GetText(1330, "Incoming"));
    CreateCard(Out, IDC_STATISTICS_OUT, m_language.GetText(1331, "Outgoing"));
    CreateCard(Connections, IDC_STATISTICS_CONNECTIONS, m_language.GetText(46, "Connections"));
    CreateCard(Attacks, IDC_STATISTICS_ATTACKS, m_language.GetText(1333, "Attacks"));

    const Look& look = GetLook();
    constexpr COLORREF kGreen = RGB(0, 255, 0);
    constexpr COLORREF kRed = RGB(255, 0, 0);
    (void)m_incoming.Create(Window(), IDC_STATISTICS_IN_GRAPH, m_language.GetText(325, "Incoming Traffic History"),
                            {look.skin, "GRAPH_IN", kGreen}, look);
    (void)m_outgoing.Create(Window(), IDC_STATISTICS_OUT_GRAPH, m_language.GetText(326, "Outgoing Traffic History"),
                            {look.skin, "GRAPH_OUT", kGreen}, look);
    (void)m_attacks.Create(Window(), IDC_STATISTICS_ATTACK_GRAPH, m_language.GetText(327, "Attack History"),
                           {look.skin, "GRAPH_ATTACK", kRed}, look);

    const TreeColumn columns[] = {
        {.title = m_language.GetText(1339, "Time"), .width = 64},
        {.title = m_language.GetText(1340, "Last notices"), .width = 160, .takesRoom = true}};
    (void)m_notices.Create({.parent = Window(),
                            .id = IDC_STATISTICS_NOTICES,
                            .selectsMany = true,
                            .emptyText = m_language.GetText(
                                1341, "No notices yet. What the firewall service reports is listed here.")},
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
    // Two by two: the graphs and the notices.
    const LONG top = place.top + Scale(kCardHeight) + gap;
    const LONG middle = top + (place.bottom - top - gap) / 2;
    const LONG centre = place.left + (WidthOf(place) - gap) / 2;
    m_incoming.Place({place.left, top, centre, middle});
    m_outgoing.Place({centre + gap, top, place.right, middle});
    m_attacks.Place({place.left, middle + gap, centre, place.bottom});
    m_notices.Place({centre + gap, middle + gap, place.right, place.bottom});
}

void StatisticsPage::PlaceCards(const RECT& band) {
    const int gap = Scale(kGap);
    const int margin = Scale(kCardMargin);
    const int width = WidthOf(band);
    const int mode = std::clamp(width * kModeShare / 100, Scale(kLeastModeWidth), Scale(kModeWidth));
    std::vector<RECT> grounds{{band.left, band.top, band.left + mode, band.bottom}};
    m_mode.Place(Inset(grounds.front(), 1));
    const LONG left = grounds.front().right + gap;
    const int room = band.right - left + gap;
    for (int card = 0; card < CardCount; ++card) {
        const RECT ground{left + room * card / CardCount, band.top, left + room * (card + 1) / CardCount - gap,
                          band.bottom};
        grounds.push_back(ground);
        RECT line{ground.left + margin, ground.top + margin, ground.right - margin, 0};
        const auto placeLine = [&](CDrawnText& label, int height) {
            line.bottom = line.top + Scale(height);
            label.Place(line);
            line.top = line.bottom;
        };
        CardTexts& texts = m_cards[static_cast<std::size_t>(card)];
        placeLine(texts.name, kNameHeight);
        placeLine(texts.value, kValueHeight);
        placeLine(texts.remark, kNameHeight);
    }
    SetCards(std::move(grounds));
}

void StatisticsPage::OnCommand(int id, int notification) {
    if (id == IDC_STATISTICS_MODE && notification == BN_CLICKED) m_mode.OpenMenu();
}

void StatisticsPage::OnShow() {
    m_statistics.Watch([this] { ShowStatistics(); });
    ShowStatistics();
}

void StatisticsPage::OnHide() {
    m_statistics.Watch({});
}

void StatisticsPage::ShowStatistics() {
    ShowCards();
    ShowNotices();
    m_incoming.Update(PeakText(m_statistics.Incoming()));
    m_outgoing.Update(PeakText(m_statistics.Outgoing()));
    m_attacks.Update(std::to_string(m_statistics.AttacksOfLastTick()));
}

// The rate of the second stands in the cards and in the status line.
std::string StatisticsPage::PeakText(const PushGraphSamples& samples) const {
    constexpr std::uint64_t kSecond = 1000;
    return m_language.GetText(2254, "peak") + " " +
           FormatRate(static_cast<std::uint64_t>(samples.PeakOf(Statistics::kLine)), kSecond, m_words);
}

void StatisticsPage::ShowCards() {
    const auto show = [this](Card card, const std::string& value, const std::string& remark) {
        m_cards[card].value.SetText(value);
        m_cards[card].remark.SetText(remark);
    };
    const std::optional<Statistics::Rates>& rates = m_statistics.CurrentRates();
    const std::string total = m_language.GetText(1334, "Total:") + " ";
    show(In, rates ? rates->in : kUnknown, total + FormatBytes(m_statistics.Totals().bytesIn, m_words));
    show(Out, rates ? rates->out : kUnknown, total + FormatBytes(m_statistics.Totals().bytesOut, m_words));

    m_mode.Show(m_statistics.Mode(), m_clock.UtcNow());
    const std::optional<ConnectionCounts>& counts = m_statistics.Connections();
    show(Connections, counts ? std::to_string(counts->connections) : kUnknown,
         counts ? m_language.GetText(1682, "listening:") + " " + std::to_string(counts->listeners) : "");
    show(Attacks, std::to_string(m_statistics.AttackCount()), m_language.GetText(1338, "since the start"));
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
