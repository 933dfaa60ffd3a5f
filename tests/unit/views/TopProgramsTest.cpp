#include "views/TopPrograms.h"

#include <gtest/gtest.h>

#include "unit/views/ConnectionsRig.h"

namespace brennvar {
namespace {

class TopProgramsTest : public test::ConnectionsRig {
protected:
    Statistics statistics;
    TopPrograms top{
        {.tables = tables, .reads = reads, .link = link, .programQueue = programQueue, .programFiles = files},
        "none",
        statistics};

    void ReadTables() {
        clock.Pass(std::chrono::seconds(2));
        tables.Refresh();
        reads.RunAll();
    }
    [[nodiscard]] std::string Shown() const {
        std::string text;
        for (const Statistics::ProgramUse& program : statistics.Programs()) {
            text += program.name + "=" + std::to_string(program.sum.bytesIn) + " ";
        }
        return text;
    }
    [[nodiscard]] bool RunUntilShown(const std::string& wanted) {
        return RunUntil([&] { return Shown() == wanted; });
    }
};

TEST_F(TopProgramsTest, NamesProcessesOnceAndShowsWhatTheirFilesSay) {
    SetConnections({Connection(26, 80, 4, 100), Connection(27, 81, 4, 300), Connection(53, 82, 4, 50)});
    ReadTables();
    EXPECT_EQ(Shown(), "none=450 ") << "the service lets us wait";
    OpenGate();
    EXPECT_TRUE(RunUntilShown("b.exe=350 a.exe=100 ")) << Shown();
    files.descriptions["c:\\tools\\b.exe"] = "Beta";
    programQueue.RunAll();
    EXPECT_EQ(Shown(), "Beta=350 a.exe=100 ");
    const auto asked = connector->Pipe().requests.size();
    SetConnections({Connection(26, 80, 4, 400), Connection(27, 81, 4, 300)});
    ReadTables();
    EXPECT_TRUE(RunUntilShown("a.exe=400 Beta=350 ")) << Shown();
    EXPECT_EQ(connector->Pipe().requests.size(), asked);
    driver.isPresent = false;
    ReadTables();
    EXPECT_EQ(Shown(), "a.exe=400 Beta=350 ") << "what was counted stays";
}

}  // namespace
}  // namespace brennvar
