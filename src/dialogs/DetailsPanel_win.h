// The groups of a sheet of details, one below the other: headings, labels, and values that can be selected. Arrows
// and page keys go from value to value, Tab out of the panel.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include "config/DetailsSheet.h"
#include "controls/Label_win.h"
#include "controls/ScrollPanel_win.h"
#include "controls/SelectableText_win.h"

namespace brennvar {

class DetailsPanel final : public CScrollPanel {
public:
    explicit DetailsPanel(const Look& look) : CScrollPanel(look) {}

    // Groups of the same shape as before keep selection and keyboard; the scroll position stays in any case.
    void Show(const std::vector<DetailsGroup>& groups);
    // Of all groups at this width, pixels of the screen.
    [[nodiscard]] int HeightAt(int width) { return OnPlaceContent(width, 0); }

private:
    // A heading, which has no value, or a line, which may have no label.
    struct Row {
        CLabel label;
        CSelectableText value;
        bool isPill = false;
    };

    int OnPlaceContent(int width, int top) override;
    bool OnKeyDown(UINT key) override;

    [[nodiscard]] std::vector<bool> ShapeOf(const std::vector<DetailsGroup>& groups) const;
    void Rebuild();
    void AddRow(bool isHeading);
    // True when it differs from what was shown.
    bool ShowLine(Row& row, const DetailsLine& line);
    [[nodiscard]] int LabelWidth(int width) const;
    [[nodiscard]] int PlaceLine(Row& row, int left, int width, int labelWidth, int top);
    [[nodiscard]] static bool IsHeading(const Row& row) { return !row.value.Window(); }
    [[nodiscard]] std::vector<HWND> Values() const;
    void FocusValue(std::size_t index);

    std::deque<Row> m_rows;
    std::vector<bool> m_shape;  // of the rows: true for a heading
};

}  // namespace brennvar
