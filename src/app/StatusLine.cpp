#include "app/StatusLine.h"

#include "ui/Paint.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

struct CellPlace {
    int id;
    int share;  // percent of the band
};
// In the narrowest window each cell has room for its usual text in every language that we deliver.
constexpr CellPlace kCellPlaces[] = {{IDC_STATUS_SERVICE, 27},
                                     {IDC_STATUS_DRIVER, 19},
                                     {IDC_STATUS_CONNECTIONS, 18},
                                     {IDC_STATUS_IN, 18},
                                     {IDC_STATUS_OUT, 18}};
// At 96 pixels per inch.
constexpr int kMargin = 16;
constexpr int kGripRoom = 16;

}  // namespace

void StatusLine::Create(HWND parent, const Look& look) {
    m_mode.Create(parent, IDC_STATUS_MODE, look);
    static_assert(std::size(kCellPlaces) == CellCount);
    for (std::size_t cell = 0; cell < m_cells.size(); ++cell) {
        m_cells[cell].Create(parent, "", LabelKind::Quiet, SS_NOPREFIX | SS_ENDELLIPSIS | SS_CENTERIMAGE,
                             kCellPlaces[cell].id, look);
        m_cells[cell].SetColour(look.colours.statusText);
    }
    ShowService(PeerState::Unknown);
    ShowTraffic(std::nullopt, 0);
    ShowConnections(std::nullopt);
}

RECT StatusLine::ModePlace(const RECT& band) {
    return {Scale(kMargin), band.top + 1, band.left - Scale(kMargin) / 4, band.bottom - 1};
}

void StatusLine::Place(const RECT& band) const {
    m_mode.Place(ModePlace(band));
    LONG left = band.left + Scale(kMargin);
    const int room = WidthOf(band) - Scale(kMargin) - Scale(kGripRoom);
    for (std::size_t cell = 0; cell < m_cells.size(); ++cell) {
        const LONG right = left + room * kCellPlaces[cell].share / 100;
        m_cells[cell].Place({left, band.top + 1, right - Scale(kMargin) / 2, band.bottom - 1});
        left = right;
    }
}

void StatusLine::ShowService(PeerState state) const {
    std::string text;
    switch (state) {
        case PeerState::Reachable: text = m_language.GetText(1002, "Firewall service: reachable"); break;
        case PeerState::Missing: text = m_language.GetText(1003, "Firewall service: not reachable"); break;
        case PeerState::Unknown: text = m_language.GetText(1004, "Firewall service: connecting"); break;
    }
    m_cells[Service].SetText(text);
}

void StatusLine::ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) const {
    m_cells[Driver].SetText(increase ? m_language.GetText(1005, "Driver: reachable")
                                     : m_language.GetText(1006, "Driver: not reachable"));
    const std::string in = increase ? FormatRate(increase->bytesIn, milliseconds) : "-";
    const std::string out = increase ? FormatRate(increase->bytesOut, milliseconds) : "-";
    m_cells[In].SetText(m_language.GetText(1008, "In:") + " " + in);
    m_cells[Out].SetText(m_language.GetText(1009, "Out:") + " " + out);
}

void StatusLine::ShowConnections(std::optional<std::size_t> count) const {
    m_cells[Connections].SetText(m_language.GetText(1007, "Connections:") + " " +
                                 (count ? std::to_string(*count) : "-"));
}

}  // namespace brennvar
