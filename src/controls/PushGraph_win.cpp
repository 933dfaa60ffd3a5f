#include "controls/PushGraph_win.h"

#include <algorithm>

#include "config/Contrast.h"
#include "config/Language.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch: what the plot leaves free above and below.
constexpr int kTitleRoom = 30;
constexpr int kBottomRoom = 10;
constexpr int kSecondsRoom = 8;  // more below, with words there
constexpr int kTitleMargin = 8;
constexpr int kLabelDrop = 2;  // of the upper label, from the plot's top
constexpr int kLabelRim = 2;   // of the ground beside a label

// Out of 255, towards the ground.
constexpr int kAreaShare = 224;
constexpr int kHaloShare = 140;

constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;

void DrawPath(HDC dc, const std::vector<POINT>& points, int width, COLORREF colour) {
    const UniquePen pen(::CreatePen(PS_SOLID, width, colour));
    const CSelect select(dc, pen.Get());
    ::Polyline(dc, points.data(), static_cast<int>(points.size()));
}

// Between the path and the bottom of the plot.
void FillBelow(HDC dc, std::vector<POINT> points, LONG bottom, COLORREF colour) {
    points.push_back({points.back().x, bottom});
    points.push_back({points.front().x, bottom});
    const UniqueBrush brush(::CreateSolidBrush(colour));
    const CSelect selectBrush(dc, brush.Get());
    const CSelect selectPen(dc, ::GetStockObject(NULL_PEN));
    ::Polygon(dc, points.data(), static_cast<int>(points.size()));
}

}  // namespace

PushGraphColours::PushGraphColours(const Skin& skin, const std::string& name, COLORREF defaultLine)
    : ground(skin.GetSkinColor("COLOR_GRAPH", 0, 0, 0)),
      grid(skin.GetSkinColor(name + "_GRID", 0, 85, 0)),
      text(skin.GetSkinColor(name + "_TEXT", 0, 255, 0)),
      line(skin.GetSkinColor(name + "_LINE", GetRValue(defaultLine), GetGValue(defaultLine),
                             GetBValue(defaultLine))) {}

bool C2DPushGraph::Create(HWND parent, int id, const std::string& title, const PushGraphColours& colours,
                          const Look& look) {
    m_title = title;
    m_ground = colours.ground;
    m_grid = colours.grid;
    m_text = colours.text;
    // As headings are elsewhere, where that reads on this ground.
    m_titleText = Contrast(look.colours.text, colours.ground) >= kTextContrast ? look.colours.text : colours.text;
    m_frame = look.colours.frame2;
    m_titleFont = look.fonts.Bold();
    m_labelFont = look.fonts.Text();
    m_samples.SetPixels(Scale(PushGraphSamples::kDefaultInterval), Scale(PushGraphSamples::kGridSpacing));
    AddLine(0, colours.line);
    return CWindow::Create({.parent = parent, .text = title, .id = id, .className = kPushGraphClass});
}

void C2DPushGraph::AddLine(int id, COLORREF colour) {
    m_picture.Drop();
    m_samples.AddLine(id);
    m_lineColours.push_back({.id = id, .colour = colour});
}

void C2DPushGraph::ShowSeconds(const std::string& ago, const std::string& now) {
    m_picture.Drop();
    m_ago = ago;
    m_now = now;
}

void C2DPushGraph::Update(const std::string& value, const std::string& brief) {
    if (value != m_value) {
        m_value = value;
        m_briefValue = brief;
        ::SetWindowTextA(Window(), std::string(m_title).append(": ").append(value).c_str());
        Announce(EVENT_OBJECT_VALUECHANGE);
    }
    Repaint();
}

RECT C2DPushGraph::PlotArea() const {
    RECT plot = ClientRect();
    plot.top += Scale(kTitleRoom);
    plot.bottom -= Scale(kBottomRoom + (m_now.empty() ? 0 : kSecondsRoom));
    return plot;
}

void C2DPushGraph::OnPaint(HDC dc, const RECT&) {
    const RECT client = ClientRect();
    const SIZE size = m_picture.Size();
    const bool isThere = m_picture.Dc() && size.cx == client.right && size.cy == client.bottom;
    if (!isThere || m_paintedVersion != m_samples.Version() || m_paintedValue != m_value) {
        if (!isThere && !m_picture.Make(dc, {client.right, client.bottom})) return PaintAll(dc, client);
        PaintAll(m_picture.Dc(), client);
        m_paintedVersion = m_samples.Version();
        m_paintedValue = m_value;
    }
    ::BitBlt(dc, 0, 0, client.right, client.bottom, m_picture.Dc(), 0, 0, SRCCOPY);
}

void C2DPushGraph::PaintAll(HDC dc, const RECT& client) {
    const RECT plot = PlotArea();
    FillSolid(dc, client, m_ground);
    PaintTitle(dc, client);
    if (HeightOf(plot) > 0) {
        m_samples.PrepareToPaint(WidthOf(plot));
        // The lowest pixels of a line are those below the plot.
        const SavedDc saved(dc);
        ::IntersectClipRect(dc, plot.left, plot.top, plot.right, plot.bottom + 1);
        const std::vector<Path> paths = MakePaths(plot);
        for (const Path& path : paths) {
            FillBelow(dc, path.points, plot.bottom, MixColours(path.colour, m_ground, kAreaShare));
        }
        PaintGrid(dc, plot);
        for (const Path& path : paths) {
            // A softer line behind takes the edge off the steps.
            DrawPath(dc, path.points, Scale(3), MixColours(path.colour, m_ground, kHaloShare));
            DrawPath(dc, path.points, 1, path.colour);
        }
        PaintAxisLabels(dc, plot);
    }
    PaintSeconds(dc, plot);
    DrawFrame(dc, client, m_frame);
}

void C2DPushGraph::PaintTitle(HDC dc, const RECT& client) const {
    RECT band{client.left + Scale(kTitleMargin), client.top, client.right - Scale(kTitleMargin),
              client.top + Scale(kTitleRoom)};
    const int room = WidthOf(band) - Scale(kTitleMargin) - MeasureText(m_titleFont, m_title, 0).cx;
    const bool isBrief = !m_briefValue.empty() && MeasureText(m_labelFont, m_value, 0).cx > room;
    const std::string& value = isBrief ? m_briefValue : m_value;
    DrawLabel(dc, m_labelFont, band, value, m_text, kOneLine | DT_RIGHT);
    band.right -= MeasureText(m_labelFont, value, 0).cx + Scale(kTitleMargin);
    DrawLabel(dc, m_titleFont, band, m_title, m_titleText, kOneLine | DT_END_ELLIPSIS);
}

// Before the samples fill the plot, the latest one is not at its right edge, and "now" goes there with it.
void C2DPushGraph::PaintSeconds(HDC dc, const RECT& plot) const {
    if (m_now.empty() || m_samples.Lines().empty() || m_samples.Lines().front().samples.empty()) return;
    const auto seconds = static_cast<int>(m_samples.Lines().front().samples.size()) - 1;
    const std::string ago = FillText(m_ago, {std::to_string(seconds)});
    const int margin = Scale(kTitleMargin);
    const RECT band{plot.left + margin, plot.bottom + 1, plot.right - margin, ClientRect().bottom - 1};
    const int agoWidth = MeasureText(m_labelFont, ago, 0).cx;
    const int nowWidth = MeasureText(m_labelFont, m_now, 0).cx;
    RECT now = band;
    now.right = std::min<LONG>(band.right, plot.left + seconds * m_samples.Interval() + nowWidth / 2);
    now.left = std::max<LONG>(band.left, now.right - nowWidth);
    now.right = now.left + nowWidth;
    DrawLabel(dc, m_labelFont, now, m_now, m_text, kOneLine);
    if (band.left + agoWidth + margin <= now.left) DrawLabel(dc, m_labelFont, band, ago, m_text, kOneLine);
}

void C2DPushGraph::PaintGrid(HDC dc, const RECT& plot) const {
    const int spacing = m_samples.GridSpacing();
    for (LONG y = plot.bottom; y >= plot.top; y -= spacing)
        FillSolid(dc, {plot.left, y, plot.right, y + 1}, m_grid);
    for (LONG x = plot.left + m_samples.GridOffset(); x < plot.right; x += spacing) {
        FillSolid(dc, {x, plot.top, x + 1, plot.bottom}, m_grid);
    }
}

void C2DPushGraph::PaintAxisLabels(HDC dc, const RECT& plot) const {
    const auto paint = [&](const std::string& label, bool isLow) {
        // On the graph's ground, so that neither grid nor line crosses it; below the highest line of the grid.
        const SIZE size = MeasureText(m_labelFont, label, 0);
        const LONG left = plot.left + Scale(kTitleMargin);
        const LONG top = isLow ? plot.bottom - size.cy : plot.top + Scale(kLabelDrop);
        const RECT place{left, top, left + size.cx, top + size.cy};
        FillSolid(dc, {place.left - Scale(kLabelRim), place.top, place.right + Scale(kLabelRim), place.bottom},
                  m_ground);
        DrawLabel(dc, m_labelFont, place, label, m_text, DT_SINGLELINE | DT_NOPREFIX);
    };
    paint(m_samples.GetRange().maximumLabel, false);
    paint(m_samples.GetRange().minimumLabel, true);
}

std::vector<C2DPushGraph::Path> C2DPushGraph::MakePaths(const RECT& plot) const {
    std::vector<Path> paths;
    for (const LineColour& known : m_lineColours) {
        for (const PushGraphSamples::Line& line : m_samples.Lines()) {
            if (line.id != known.id || line.samples.empty()) continue;
            Path& path = paths.emplace_back(Path{.points = {}, .colour = known.colour});
            LONG x = plot.left;
            for (const std::int32_t sample : line.samples) {
                path.points.push_back({x, plot.bottom - m_samples.HeightOf(sample, HeightOf(plot))});
                x += m_samples.Interval();
            }
            // A single sample is seen as a point.
            if (path.points.size() == 1) path.points.push_back({plot.left + 1, path.points.front().y});
        }
    }
    return paths;
}

void C2DPushGraph::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::Chart;
    thing.name = m_title;
    thing.value = m_value;
    thing.font = m_titleFont;
    thing.Set(STATE_SYSTEM_READONLY, true);
}

}  // namespace brennvar
