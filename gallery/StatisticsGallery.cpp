// The Statistics page after a while of traffic, and its graphs in all of their states.
#include <chrono>
#include <cstdint>
#include <list>
#include <memory>
#include <string>

#include "GalleryPage.h"
#include "base/Clock.h"
#include "config/Resources_win.h"
#include "controls/PushGraph_win.h"
#include "views/StatisticsPage_win.h"

namespace brennvar::gallery {
namespace {

// Bytes of a second: the same hills at every start.
std::uint64_t Traffic(std::uint64_t second, std::uint64_t highest) {
    const std::uint64_t wave = second % 24 < 12 ? second % 24 : 24 - second % 24;
    const std::uint64_t noise = (second * 7919) % 97;
    return highest * (wave * 6 + noise / 4) / 97;
}

class GraphsGallery final : public GalleryPage {
public:
    [[nodiscard]] SIZE Size() const override { return {1016, 624}; }
    void Fill(HWND window, const Look& look) override {
        m_window = window;
        m_look = &look;
        const PushGraphSamples::Range range{.maximum = 100, .minimumLabel = "0 KB", .maximumLabel = "100 KB"};
        AddGraph("GRAPH_IN", "New", range, 16, 16).Update("0 B/s");

        Run(AddGraph("GRAPH_IN", "Half a minute", range, 352, 16), 15, 90);
        Run(AddGraph("GRAPH_OUT", "Full, the grid has moved", range, 688, 16), 61, 90);
        Run(AddGraph("GRAPH_IN", "At the top of the range", range, 16, 216), 61, 400);

        C2DPushGraph& rescaled = AddGraph("GRAPH_OUT", "Smaller range than before", range, 352, 216);
        Run(rescaled, 50, 90);
        m_samples.back().SetRange({.maximum = 40, .minimumLabel = "0 KB", .maximumLabel = "40 KB"});
        Run(rescaled, 10, 30);

        C2DPushGraph& attacks = AddGraph("GRAPH_ATTACK", "A title that is longer than the graph is wide",
                                         {.maximum = 50, .minimumLabel = "0", .maximumLabel = "50"}, 688, 216);
        for (int second = 0; second < 40; ++second) m_samples.back().Push(second % 13 == 5 ? second : 0, 0);
        attacks.Update("12");

        C2DPushGraph& two = AddGraph("GRAPH_IN", "Two lines", range, 16, 416);
        Run(two, 40, 90);
        two.AddLine(1, RGB(255, 173, 27));
        const std::size_t shown = m_samples.back().Lines()[0].samples.size();
        for (std::uint64_t second = 0; second < shown; ++second) {
            m_samples.back().Push(static_cast<std::int64_t>(Traffic(second + 6, 40)), 1);
        }
        // As it looks in a skin that has no colours for graphs.
        const Look bare(look.fonts, Skin(nullptr, ""));
        m_look = &bare;
        Run(AddGraph("GRAPH_IN", "Default colours", range, 352, 416), 61, 90);
        Run(AddGraph("GRAPH_ATTACK", "Default colours", range, 688, 416, RGB(255, 0, 0)), 61, 40);
        m_look = nullptr;
    }

private:
    C2DPushGraph& AddGraph(const char* colours, const std::string& title, const PushGraphSamples::Range& range,
                           int left, int top, COLORREF line = RGB(0, 255, 0)) {
        C2DPushGraph& graph = m_graphs.emplace_back(m_samples.emplace_back(range));
        (void)graph.Create(m_window, static_cast<int>(m_graphs.size()), title, {m_look->skin, colours, line},
                           *m_look);
        graph.Place({left, top, left + 312, top + 184});
        return graph;
    }
    // So many seconds of the graph that was made last.
    void Run(C2DPushGraph& graph, std::uint64_t seconds, std::uint64_t highest) {
        PushGraphSamples& samples = m_samples.back();
        samples.PrepareToPaint(312);
        for (std::uint64_t second = 0; second < seconds; ++second) {
            samples.Push(static_cast<std::int64_t>(Traffic(second, highest)), 0);
            samples.Update();
            samples.PrepareToPaint(312);
        }
        graph.Update("12.3 KB/s");
    }

    HWND m_window = nullptr;
    const Look* m_look = nullptr;
    std::list<PushGraphSamples> m_samples;
    std::list<C2DPushGraph> m_graphs;
};

constexpr FileTime kStart = 134'000'000'000'000'000;  // some afternoon in 2025

// It is always the same moment, so that the pictures are.
class StandingClock final : public Clock {
public:
    [[nodiscard]] FileTime UtcNow() const override { return kStart + 150 * kFileTimePerSecond; }
    [[nodiscard]] LocalDate Today() const override { return {.year = 2025, .month = 8, .day = 18}; }
    [[nodiscard]] std::chrono::milliseconds Elapsed() const override { return {}; }
    bool Sleep(std::chrono::milliseconds) override { return true; }
};

class StatisticsGallery final : public GalleryPage {
public:
    // The page's room in the control center at its first size.
    [[nodiscard]] SIZE Size() const override { return {815, 600}; }
    void Fill(HWND window, const Look& look) override {
        m_page = std::make_unique<StatisticsPage>(
            look.fonts, m_language,
            PageTexts{.title = m_language.GetText(45, "Statistics"),
                      .line = m_language.GetText(1010, "Network traffic of this computer.")},
            m_statistics, m_clock);
        m_statistics.SetConnections(ConnectionCounts{.connections = 128, .listeners = 31});
        m_statistics.SetPrograms({Use("Aurora", "aurora.exe", 1'288'490'188, 84'213'000),
                                  Use("Host Process for Windows Services", "svchost.exe", 640'960, 431'655'360),
                                  Use("Postbote Mail", "postbote.exe", 51'200'000, 8'192'000),
                                  Use("helper.exe", "helper.exe", 20'480, 0),
                                  Use("no process associated", "", 0, 512)});
        m_statistics.SetMode({.mode = ProtectionMode::BlockAll, .until = kStart + 900 * kFileTimePerSecond});
        for (int second = 0; second < 90; ++second) {
            const auto time = static_cast<std::uint64_t>(second);
            if (second % 17 == 3) m_statistics.CountAttack();
            for (int attack = 0; second == 60 && attack < 20; ++attack) m_statistics.CountAttack();
            if (second % 9 == 0) {
                m_statistics.AddNotice("Access of program number " + std::to_string(second) + " was denied.",
                                       kStart + time * kFileTimePerSecond);
            }
            m_statistics.Tick(TrafficIncrease{Traffic(time, 480'000), Traffic(time + 9, 120'000)}, 1000);
        }
        if (m_page->Create(window)) m_page->Place({0, 0, Size().cx, Size().cy});
    }
    void OnShown(HWND, const Look&) override { m_page->Show(); }

private:
    static Statistics::ProgramUse Use(const std::string& name, const std::string& path, std::uint64_t in,
                                      std::uint64_t out) {
        return {.name = name, .sum = {.path = path, .bytesIn = in, .bytesOut = out}};
    }

    const Language m_language = OpenLanguage();
    const StandingClock m_clock;
    Statistics m_statistics{AmountWords(m_language)};
    std::unique_ptr<StatisticsPage> m_page;
};

}  // namespace

std::unique_ptr<GalleryPage> MakeGraphsGallery() {
    return std::make_unique<GraphsGallery>();
}

std::unique_ptr<GalleryPage> MakeStatisticsGallery() {
    return std::make_unique<StatisticsGallery>();
}

}  // namespace brennvar::gallery
