#include "app/StatusLine.h"

#include "ui/Controls.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

struct Cell {
    int id;
    int width;  // at 96 pixels per inch
};
constexpr Cell kCells[] = {{IDC_STATUS_SERVICE, 208},
                           {IDC_STATUS_DRIVER, 152},
                           {IDC_STATUS_CONNECTIONS, 136},
                           {IDC_STATUS_IN, 128},
                           {IDC_STATUS_OUT, 128}};
constexpr int kMargin = 16;
constexpr int kTextTop = 8;
constexpr int kTextHeight = 18;

}  // namespace

void StatusLine::Create(HWND parent) {
    m_parent = parent;
    CreateControl(parent, "STATIC", "", SS_ETCHEDHORZ, IDC_STATUS_LINE, m_fonts.Text());
    for (const Cell& cell : kCells) {
        CreateControl(parent, "STATIC", "", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, cell.id, m_fonts.Text());
    }
    ShowService(PeerState::Unknown);
    ShowTraffic(std::nullopt, 0);
    ShowConnections(std::nullopt);
}

void StatusLine::Place(const RECT& place) const {
    // Without their old pixels: when the window grows, the page has already painted over these.
    constexpr UINT kKeep = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS;
    ::SetWindowPos(::GetDlgItem(m_parent, IDC_STATUS_LINE), nullptr, place.left, place.top,
                   place.right - place.left, 2, kKeep);
    int left = place.left + Scale(kMargin);
    for (const Cell& cell : kCells) {
        ::SetWindowPos(::GetDlgItem(m_parent, cell.id), nullptr, left, place.top + Scale(kTextTop),
                       Scale(cell.width), Scale(kTextHeight), kKeep);
        left += Scale(cell.width);
    }
}

void StatusLine::ShowService(PeerState state) const {
    std::string text;
    switch (state) {
        case PeerState::Reachable: text = m_language.GetText(1002, "Firewall service: reachable"); break;
        case PeerState::Missing: text = m_language.GetText(1003, "Firewall service: not reachable"); break;
        case PeerState::Unknown: text = m_language.GetText(1004, "Firewall service: connecting"); break;
    }
    Show(IDC_STATUS_SERVICE, text);
}

void StatusLine::ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) const {
    Show(IDC_STATUS_DRIVER, increase ? m_language.GetText(1005, "Driver: reachable")
                                     : m_language.GetText(1006, "Driver: not reachable"));
    const std::string in = increase ? FormatRate(increase->bytesIn, milliseconds) : "-";
    const std::string out = increase ? FormatRate(increase->bytesOut, milliseconds) : "-";
    Show(IDC_STATUS_IN, m_language.GetText(1008, "In:") + " " + in);
    Show(IDC_STATUS_OUT, m_language.GetText(1009, "Out:") + " " + out);
}

void StatusLine::ShowConnections(std::optional<std::size_t> count) const {
    Show(IDC_STATUS_CONNECTIONS,
         m_language.GetText(1007, "Connections:") + " " + (count ? std::to_string(*count) : "-"));
}

void StatusLine::Show(int id, const std::string& text) const {
    SetTextIfChanged(::GetDlgItem(m_parent, id), text);
}

}  // namespace brennvar
