// The Statistics page: what flows now and has flowed since the start of the program, the mode in force, and the
// service's last notices. It looks at the statistics only while it is seen.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "config/Amounts.h"
#include "config/Language.h"
#include "controls/DrawnText_win.h"
#include "controls/PushGraph_win.h"
#include "dialogs/Page_win.h"
#include "statistics/Statistics.h"
#include "tray/ModeButton_win.h"
#include "tree/Tree_win.h"
#include "views/TopProgramsList_win.h"

namespace brennvar {

class StatisticsPage final : public CPage, private TreeRows {
public:
    // All but the texts are borrowed for the life of the window. The clock tells how long a timed mode still holds.
    StatisticsPage(const CFonts& fonts, const Language& language, PageTexts texts, Statistics& statistics,
                   const Clock& clock);

private:
    enum Card { In, Out, Connections, Attacks, CardCount };  // from left to right, behind the mode's
    struct CardTexts {
        CDrawnText name;
        CDrawnText value;
        CDrawnText remark;
    };

    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override;
    void OnShow() override;
    void OnHide() override;
    void OnCommand(int id, int notification) override;

    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_statistics.Notices().size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;

    void CreateCard(Card card, int firstId, const std::string& name);
    void CreateGraphs();
    void CreateLists();
    void PlaceCards(const RECT& band);
    void ShowStatistics();
    void ShowTraffic(C2DPushGraph& graph, const PushGraphSamples& samples, const RecentTraffic& traffic) const;
    void ShowCards();
    // brief: the remark where the whole one has no room.
    void ShowCard(Card card, const std::string& value, const std::string& remark, const std::string& brief = {});
    void ShowNotices();

    const Language& m_language;
    const AmountWords m_words;
    Statistics& m_statistics;
    const Clock& m_clock;
    ModeButton m_mode;
    std::array<CardTexts, CardCount> m_cards;
    C2DPushGraph m_incoming;
    C2DPushGraph m_outgoing;
    C2DPushGraph m_attacks;
    CTopProgramsList m_programs;
    CTree m_notices;
    std::uint64_t m_noticesShown = 0;  // of all that have come
};

}  // namespace brennvar
