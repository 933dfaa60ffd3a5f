// A graph of lines that scrolls to the left as samples come in: title and a value above, a grid that moves with the
// lines, below it when the samples came. Its window text, for screen readers, is the title and the value.
#pragma once

#include <string>
#include <vector>

#include "controls/PushGraphSamples.h"
#include "ui/KeptBitmap_win.h"
#include "ui/Look_win.h"
#include "ui/Window_win.h"

namespace brennvar {

// Window class for automation.
inline constexpr char kPushGraphClass[] = "BrennvarPushGraph";

struct PushGraphColours {
    // Of the skin: COLOR_GRAPH, and name followed by _GRID, _TEXT and _LINE; their defaults make a dark screen with
    // a line of this colour.
    PushGraphColours(const Skin& skin, const std::string& name, COLORREF defaultLine);

    COLORREF ground;
    COLORREF grid;
    COLORREF text;
    COLORREF line;
};

class C2DPushGraph final : public CWindow {
public:
    // The samples are borrowed for the life of the window, which scales their pixels to the screen. They belong to
    // its thread.
    explicit C2DPushGraph(PushGraphSamples& samples) : m_samples(samples) {}

    // Borrows the look's fonts for the life of the window.
    [[nodiscard]] bool Create(HWND parent, int id, const std::string& title, const PushGraphColours& colours,
                              const Look& look);
    // Samples with this number are drawn from now on, in this colour. Create adds the line 0.
    void AddLine(int id, COLORREF colour);

    // Words below the plot, for samples of one second: how long ago the first one came, with "%1" for the seconds,
    // and the latest one. Before the graph is painted; without them there is no room for them.
    void ShowSeconds(const std::string& ago, const std::string& now);

    // The samples have moved on; value stands beside the title. Where it has no room, what is brief.
    void Update(const std::string& value, const std::string& brief = {});

    // The area of the lines, in client coordinates. A sample of the height h stands h pixels above its bottom.
    [[nodiscard]] RECT PlotArea() const;

    void TellAccessible(AccessibleThing& thing) const override;
    [[nodiscard]] bool TellParts(PictureParts& parts) const override { return TellWhole(parts); }

private:
    struct LineColour {
        int id;
        COLORREF colour;
    };
    struct Path {
        std::vector<POINT> points;  // at least two
        COLORREF colour;
    };

    void OnPaint(HDC dc, const RECT& invalid) override;
    void PaintAll(HDC dc, const RECT& client);
    void PaintGrid(HDC dc, const RECT& plot) const;
    void PaintAxisLabels(HDC dc, const RECT& plot) const;
    [[nodiscard]] std::vector<Path> MakePaths(const RECT& plot) const;
    void PaintTitle(HDC dc, const RECT& client) const;
    void PaintSeconds(HDC dc, const RECT& plot) const;

    PushGraphSamples& m_samples;
    std::string m_title;
    std::string m_value;
    std::string m_briefValue;
    std::string m_ago;
    std::string m_now;
    COLORREF m_ground = 0;
    COLORREF m_grid = 0;
    COLORREF m_text = 0;
    COLORREF m_titleText = 0;
    COLORREF m_frame = 0;
    std::vector<LineColour> m_lineColours;
    HFONT m_titleFont = nullptr;
    HFONT m_labelFont = nullptr;
    // As it was painted last, and of what.
    CKeptBitmap m_picture;
    std::uint64_t m_paintedVersion = 0;
    std::string m_paintedValue;
};

}  // namespace brennvar
