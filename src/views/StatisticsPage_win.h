// The Statistics page: what flows now and has flowed since the start of the program, the mode in force, and the
// service's last notices. It looks at the statistics only while it is seen.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "config/Amounts.h"
#include "config/Language.h"
#include "controls/DrawnText_win.h"
#include "controls/PushGraph_win.h"
#include "dialogs/Page_win.h"
#include "statistics/Statistics.h"
#include "tree/Tree_win.h"

namespace brennvar {

class StatisticsPage final : public CPage, private TreeRows {
public:
    // The statistics are borrowed for the life of the window.
    StatisticsPage(const CFonts& fonts, const Language& language, PageTexts texts, Statistics& statistics);

private:
    enum Card { In, Out, Mode, Connections, Attacks, CardCount };
    struct CardTexts {
        CDrawnText name;
        CDrawnText value;
        CDrawnText remark;
    };

    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override;
    void OnShow() override;
    void OnHide() override;

    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_statistics.Notices().size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;

    void CreateCard(Card card, int firstId, const std::string& name);
    void PlaceCards(const RECT& band);
    void ShowStatistics();
    [[nodiscard]] std::string PeakText(const PushGraphSamples& samples) const;
    void ShowCards();
    void ShowNotices();

    const Language& m_language;
    const AmountWords m_words;
    Statistics& m_statistics;
    std::array<CardTexts, CardCount> m_cards;
    C2DPushGraph m_incoming;
    C2DPushGraph m_outgoing;
    C2DPushGraph m_attacks;
    CTree m_notices;
    std::uint64_t m_noticesShown = 0;  // of all that have come
};

}  // namespace brennvar
