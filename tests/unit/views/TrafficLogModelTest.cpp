#include "views/TrafficLogModel.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <future>
#include <thread>

#include "config/ResourceIds.h"
#include "lists/RowOrder.h"
#include "support/FakeClock.h"
#include "support/FakeListView.h"
#include "support/FakeMailForms.h"
#include "support/FakeTaskQueue.h"
#include "support/LogFileRig.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::Event;
using test::Packet;

const std::string kAddresses = "10.0.0.5:1025 -> 93.184.216.34:443";

class TrafficLogModelTest : public testing::Test {
protected:
    test::DataFolder folder;
    test::FakeClock clock;  // 2026-03-09
    test::FakeTaskQueue reads;
    CWorkerThread listing{[] {}};
    CWorkerThread writing{[] {}};
    Language language{nullptr};
    StopSignal stop;
    LogLookups lookups{folder.Path(), stop};
    test::FakeMailForms mail;
    std::unique_ptr<TrafficLogModel> model = std::make_unique<TrafficLogModel>(
        TrafficLogModel::Parts{language, clock, reads, listing, writing, lookups, folder.Path(), CodePage::Western,
                               mail, folder.File("")});
    test::FakeListView view{*model};

    std::string WriteToday(std::string_view log) const { return folder.Write(R"(\Log\20260309.log)", log); }
    static std::string Three() {
        return std::string(Event(1, 9, 0, 0)) + std::string(Event(2, 10, 0, 0)) + std::string(Event(5, 14, 2, 11));
    }
    // What the window does when a worker tells that it has finished.
    static void StopFinished(CWorkerThread& worker) {
        if (!worker.Running()) worker.Stop();
    }
    // Until no job is under way. The clock stands still meanwhile.
    void Settle() {
        const auto limit = std::chrono::steady_clock::now() + 30s;
        do {
            StopFinished(listing);
            StopFinished(writing);
            reads.RunAll();
            view.Wake();
            ASSERT_LT(std::chrono::steady_clock::now(), limit);
            std::this_thread::yield();
        } while (model->Progress());
        reads.RunAll();
    }
    void Show() {
        model->Read(ReadReason::Shown);
        Settle();
    }
    // The next look at what the service has appended.
    void PassSecond() {
        clock.Pass(1s);
        view.Wake();
        reads.RunAll();
    }
    // All rows, read.
    std::vector<std::string> Rows() {
        for (int pass = 0; pass < 2; ++pass) {
            for (int row = 0; row < model->RowCount(); ++row) (void)model->Cell(row, 0);
            reads.RunAll();
        }
        std::vector<std::string> rows;
        for (int row = 0; row < model->RowCount(); ++row) rows.push_back(view.Row(row));
        return rows;
    }
    std::vector<std::string> Times() {
        std::vector<std::string> times = Rows();
        for (std::string& row : times) row = row.substr(0, 8);
        return times;
    }
    void ArrangeBy(const std::string& searched, int column = RowOrder::kAsRead, bool isAscending = true) {
        model->ArrangeBy({.searched = searched, .column = column, .isAscending = isAscending, .isNumber = false});
        Settle();
    }
};

TEST_F(TrafficLogModelTest, PutsWhatIsAppendedOnTop) {
    const std::string path = WriteToday(Three());
    Show();
    (void)view.TakeChanges();
    test::AppendTo(path, std::string(Event(3, 15, 0, 0)) + std::string(Event(4, 15, 0, 1)));
    clock.Pass(900ms);
    view.Wake();
    EXPECT_EQ(reads.Waiting(), 0U);  // not before a second has passed
    PassSecond();
    EXPECT_EQ(view.TakeChanges(), "F2s");
    EXPECT_EQ(Times(), (std::vector<std::string>{"15:00:01", "15:00:00", "14:02:11", "10:00:00", "09:00:00"}));
    EXPECT_EQ(model->Summary(), "2 allowed, 1 denied, 1 asked, 1 disconnected; last at 15:00:01");
    // What does not match counts, but is not shown.
    model->Choose(TrafficLogModel::kFilterChoice, 1);
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"14:02:11", "09:00:00"}));
    (void)view.TakeChanges();
    test::AppendTo(path, std::string(Event(2, 16, 0, 0)) + std::string(Event(1, 16, 0, 1)));
    PassSecond();
    EXPECT_EQ(view.TakeChanges(), "F1s");
    EXPECT_EQ(Times(), (std::vector<std::string>{"16:00:01", "14:02:11", "09:00:00"}));
    EXPECT_EQ(model->FindRow(model->Key(0)), 0);
}

TEST_F(TrafficLogModelTest, ListsAnewWhatShrankWasReplacedOrWentAway) {
    const std::string path = WriteToday(Three());
    Show();
    WriteToday(Event(2, 20, 0, 0));
    PassSecond();
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"20:00:00"}));
    EXPECT_EQ(model->Summary(), "1 denied; last at 20:00:00");
    std::filesystem::remove(path);
    PassSecond();
    Settle();
    EXPECT_EQ(model->RowCount(), 0);
    EXPECT_EQ(model->Summary(), std::nullopt);
    WriteToday(Three());
    model->Read(ReadReason::LogsDeleted);
    EXPECT_EQ(view.wake, 200ms);
    clock.Pass(200ms);
    view.Wake();
    Settle();
    EXPECT_EQ(model->RowCount(), 3);
}

TEST_F(TrafficLogModelTest, OffersTheDaysThatHaveLogs) {
    WriteToday(Three());
    folder.Write(R"(\Log\20260301.log)", Event(3, 1, 0, 0));
    folder.Write(R"(\Log\20260302_packet.log)", Packet(6, 1, ""));
    Show();
    std::vector<ListChoice> choices = model->Choices();
    EXPECT_EQ(choices.at(1).items, (std::vector<std::string>{"Today, 2026-03-09", "2026-03-01"}));
    EXPECT_EQ(choices.at(2).items,
              (std::vector<std::string>{"All", "Allowed", "Denied", "Asked", "Disconnected", "Message"}));
    model->Choose(TrafficLogModel::kDayChoice, 1);
    EXPECT_EQ(model->RowCount(), 0);  // at once: these were rows of another day
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"01:00:00"}));
    EXPECT_EQ(model->Choices().at(1).chosen, 1);
    // The list of a past day stays when midnight passes; today's goes on with the new day.
    clock.today.day = 10;
    PassSecond();
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"01:00:00"}));
    EXPECT_EQ(model->Choices().at(1).items.at(0), "Today, 2026-03-10");
}

TEST_F(TrafficLogModelTest, KeepsTheListWhenAnotherOneIsStopped) {
    std::string log;
    for (std::uint32_t i = 0; i < 20'000; ++i) log += Event(1, i / 3600, i / 60 % 60, i % 60);
    const std::string path = WriteToday(log);
    Show();
    const std::string summary =
        "20\xA0"
        "000 allowed; last at 05:33:19";
    EXPECT_EQ(model->Summary(), summary);
    const RowOrder byTime{.searched = "", .column = 0, .isAscending = true, .isNumber = false};
    // Before the worker could begin with it.
    listing.Stop();
    std::promise<void> release;
    ASSERT_TRUE(listing.Start([&](const StopSignal&) { release.get_future().wait(); }));
    model->Choose(TrafficLogModel::kFilterChoice, 1);
    model->ArrangeBy(byTime);
    EXPECT_EQ(model->Choices().at(2).chosen, 1);
    model->StopProgress();
    release.set_value();
    listing.Stop();
    EXPECT_EQ(model->Choices().at(2).chosen, 0);
    ASSERT_TRUE(view.orderKept);
    EXPECT_EQ(view.orderKept->column, RowOrder::kAsRead);
    EXPECT_EQ(model->Summary(), summary);
    test::AppendTo(path, Event(2, 15, 0, 0));
    PassSecond();
    EXPECT_EQ(model->RowCount(), 20'001) << "what is listed is followed, with its own wish";
}

TEST_F(TrafficLogModelTest, DoesNothingWithTheRowsOfAnotherFile) {
    const std::string path = WriteToday(Three());
    Show();
    view.copied = "what was copied before";
    WriteToday(Three() + std::string(Event(1, 20, 0, 0)));
    std::filesystem::remove(path);
    WriteToday(std::string(Event(1, 20, 0, 0)) + Three());
    const int first[] = {0};
    model->Do(TrafficLogModel::kDetails, first);
    reads.RunAll();
    EXPECT_TRUE(view.sheets.empty());
    RowRanges rows;
    rows.Add(0, 2);
    EXPECT_TRUE(model->Copy(rows));
    Settle();
    EXPECT_EQ(view.copied, "what was copied before");
}

TEST_F(TrafficLogModelTest, ReadsWhatIsPaintedOnTheQueue) {
    std::string log;
    for (std::uint32_t i = 0; i < 3000; ++i) log += Event(1, i / 3600, i / 60 % 60, i % 60);
    WriteToday(log);
    Show();
    EXPECT_EQ(model->Cell(50, 0).text, "00:49:09");  // came with the listing
    (void)view.TakeChanges();
    EXPECT_EQ(model->Cell(2000, 0).text, "");
    for (int row = 1990; row < 2040; ++row) (void)model->Cell(row, 3);
    EXPECT_EQ(reads.Waiting(), 1U);  // all of them together
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bL");
    EXPECT_EQ(model->Cell(2000, 0).text, "00:16:39");
    EXPECT_EQ(model->Cell(2039, 0).text, "00:16:00");
    EXPECT_EQ(reads.Waiting(), 0U);
}

TEST_F(TrafficLogModelTest, AsksAboutARowWithWhatItSays) {
    WriteToday(Three() + std::string(Event(6, 15, 0, 0, "").U32(472, 0)));
    Show();
    const int first[] = {1};
    model->Do(IDC_WHY, first);
    const int withoutAddresses[] = {0};
    model->Do(IDC_MAKE_RULE, withoutAddresses);
    EXPECT_TRUE(view.made.empty());
    ASSERT_EQ(view.explained.size(), 1U);
    EXPECT_EQ(view.explained[0].program, R"(C:\Program Files\App\app.exe)");
    EXPECT_EQ(view.explained[0].when->day, (LocalDate{2026, 3, 9}));
    EXPECT_EQ(view.explained[0].when->minute, 14 * 60 + 2);
    EXPECT_EQ(FormatIpv4(view.explained[0].remoteAddress), "93.184.216.34");
    EXPECT_EQ(view.explained[0].remotePort, 443);
}

TEST_F(TrafficLogModelTest, ExportsAndCopiesWhatIsListed) {
    WriteToday(Three());
    Show();
    ArrangeBy("", 0);
    model->Do(TrafficLogModel::kExport, {});
    view.savePlace = SavePlace{.path = folder.File("out.csv"), .type = 0};
    model->Do(TrafficLogModel::kExport, {});
    EXPECT_EQ(model->LeavingQuestion()->yes, "Stop") << "else nobody could see how far it has come";
    Settle();
    RowRanges rows;
    rows.Add(1, 2);
    EXPECT_TRUE(model->Copy(rows));
    Settle();
    EXPECT_EQ(view.copied, "10:00:00\tDenied\tTCP\t" + kAddresses +
                               "\tapp.exe\tWeb rule\r\n14:02:11\tAllowed\tTCP\t" + kAddresses +
                               "\tapp.exe\tWeb rule\r\n");
    rows.Add(0, static_cast<int>(TrafficLogModel::kMostCopied));
    EXPECT_TRUE(model->Copy(rows));
    EXPECT_TRUE(view.told.back().starts_with("Copy: These are too many rows"));
    // A place that cannot be written.
    view.savePlace->path = folder.File("nowhere") + "/out.csv";
    model->Do(TrafficLogModel::kExport, {});
    Settle();
    EXPECT_TRUE(view.told.back().starts_with("Export the log: This file could not be written"));
}

}  // namespace
}  // namespace brennvar
