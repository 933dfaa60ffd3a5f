#include "app/StatusLine_win.h"

#include <numeric>

#include "config/ResourceIds.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kCellIds[] = {IDC_STATUS_SERVICE, IDC_STATUS_DRIVER, IDC_STATUS_CONNECTIONS, IDC_STATUS_IN,
                            IDC_STATUS_OUT};
// At 96 pixels per inch.
constexpr int kMargin = 16;
constexpr int kModeMargin = 8;  // the mode has one of its own inside
constexpr int kModeEdge = 4;
constexpr int kGripRoom = 16;
constexpr int kCellGap = 8;  // at least

// As much as these cells mostly show: with room for it they stay where they are.
constexpr char kUsualCount[] = " 100 (+50)";
constexpr std::uint64_t kUsualRate = 1000 * 1024;  // bytes a second

}  // namespace

void StatusLine::Create(DrawnTexts& texts, const Look& look) {
    m_mode.Create(texts.Window(), ModeButton::Form::Cell, IDC_STATUS_MODE, look);
    static_assert(std::size(kCellIds) == CellCount);
    for (std::size_t cell = 0; cell < m_cells.size(); ++cell) {
        m_cells[cell].Create(texts, "", LabelKind::Quiet, SS_ENDELLIPSIS, kCellIds[cell], look);
        m_cells[cell].SetColour(look.colours.statusText);
    }
    Show(Connections, m_language.GetText(1007, "Connections:") + kUsualCount);
    Show(In, m_language.GetText(1008, "In:") + " " + FormatRate(kUsualRate, 1000, m_words));
    Show(Out, m_language.GetText(1009, "Out:") + " " + FormatRate(kUsualRate, 1000, m_words));
    ShowService(PeerState::Unknown);
    ShowTraffic(std::nullopt, 0);
    ShowConnections(std::nullopt);
}

RECT StatusLine::ModePlace(const RECT& band) {
    return {Scale(kModeMargin), band.top + 1, band.left - Scale(kModeEdge), band.bottom - 1};
}

void StatusLine::Place(const RECT& band) {
    m_band = band;
    m_mode.Place(ModePlace(band));
    PlaceCells();
}

void StatusLine::PlaceCells() {
    LONG left = m_band.left + Scale(kMargin);
    const int room = WidthOf(m_band) - Scale(kMargin) - Scale(kGripRoom);
    const auto unused = [&] { return room - std::accumulate(m_widths.begin(), m_widths.end(), 0); };
    if (unused() < 0) {  // what numbers have taken once is needed elsewhere
        for (std::size_t cell = 0; cell < m_cells.size(); ++cell) m_widths[cell] = WidthOfText(cell);
    }
    const int more = unused() / static_cast<int>(CellCount);
    for (std::size_t cell = 0; cell < m_cells.size(); ++cell) {
        const LONG right = left + m_widths[cell] + more;
        m_cells[cell].Place({left, m_band.top + 1, right - Scale(kCellGap), m_band.bottom - 1});
        left = right;
    }
}

int StatusLine::WidthOfText(std::size_t cell) const {
    return m_cells[cell].Measure(0).cx + Scale(kCellGap);
}

void StatusLine::Show(Cell cell, const std::string& text) {
    m_cells[cell].SetText(text);
    const int width = WidthOfText(cell);
    // Numbers keep the most that they have taken, or all cells would move to and fro with them.
    const bool isState = cell == Service || cell == Driver;
    if (isState ? width == m_widths[cell] : width <= m_widths[cell]) return;
    m_widths[cell] = width;
    if (!::IsRectEmpty(&m_band)) PlaceCells();
}

void StatusLine::ShowService(PeerState state) {
    std::string text;
    switch (state) {
        case PeerState::Reachable: text = m_language.GetText(1002, "Firewall service: reachable"); break;
        case PeerState::Missing: text = m_language.GetText(1003, "Firewall service: not reachable"); break;
        case PeerState::Foreign:
            text = m_language.GetText(2176, "Firewall service: name taken by another program");
            break;
        case PeerState::Unknown: text = m_language.GetText(1004, "Firewall service: connecting"); break;
    }
    Show(Service, text);
}

void StatusLine::ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) {
    Show(Driver, increase ? m_language.GetText(1005, "Driver: reachable")
                          : m_language.GetText(1006, "Driver: not reachable"));
    const std::string in = m_language.GetText(1008, "In:");
    const std::string out = m_language.GetText(1009, "Out:");
    Show(In, in + " " + (increase ? FormatRate(increase->bytesIn, milliseconds, m_words) : "-"));
    Show(Out, out + " " + (increase ? FormatRate(increase->bytesOut, milliseconds, m_words) : "-"));
}

void StatusLine::ShowConnections(const std::optional<ConnectionCounts>& counts) {
    std::string text = "-";
    if (counts) text = FormatCount(counts->connections) + " (+" + FormatCount(counts->listeners) + ")";
    Show(Connections, m_language.GetText(1007, "Connections:") + " " + text);
}

}  // namespace brennvar
