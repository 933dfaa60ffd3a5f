#include "views/TrafficLogModel.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
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

TEST_F(TrafficLogModelTest, ShowsTodaysEventsNewestFirstAndSaysWhatHappened) {
    WriteToday(Three());
    EXPECT_EQ(model->Summary(), std::nullopt);
    Show();
    EXPECT_EQ(Rows().at(0), "14:02:11\tAllowed\tTCP\t" + kAddresses + "\tapp.exe\tWeb rule");
    EXPECT_EQ(Times(), (std::vector<std::string>{"14:02:11", "10:00:00", "09:00:00"}));
    EXPECT_EQ(model->Summary(), "2 allowed, 1 denied; last at 14:02:11");
    EXPECT_EQ(model->Cell(0, 1).tone, Tone::Allow);
    EXPECT_EQ(model->Cell(1, 1).tone, Tone::Deny);
    EXPECT_EQ(model->Cell(1, 0).tone, Tone::Plain);
    EXPECT_EQ(model->CellTip(0, 4), R"(C:\Program Files\App\app.exe)");
    EXPECT_EQ(model->FindRow(model->Key(1)), 1);
    EXPECT_EQ(model->FindRow("Packets 2026-03-09 1"), -1);
    EXPECT_EQ(model->FindRow(model->Key(1) + '0'), -1);
}

TEST_F(TrafficLogModelTest, SaysWhyItIsEmpty) {
    EXPECT_EQ(model->EmptyText(), "Reading the log.");
    Show();
    EXPECT_EQ(model->RowCount(), 0);
    EXPECT_TRUE(model->EmptyText().starts_with("Nothing was logged on this day."));
    EXPECT_FALSE(model->CanDo(TrafficLogModel::kExport, 0));
    WriteToday(Three());  // the service begins to log
    PassSecond();
    Settle();
    EXPECT_EQ(model->RowCount(), 3);
    ArrangeBy("nowhere");
    EXPECT_TRUE(model->EmptyText().starts_with("Nothing in this log matches"));
    EXPECT_EQ(model->AllRowCount(), 3);
}

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
    // Nothing is read while nobody looks.
    model->OnHidden();
    test::AppendTo(path, std::string(Event(1, 17, 0, 0)));
    PassSecond();
    EXPECT_EQ(model->RowCount(), 3);
    Show();
    EXPECT_EQ(Times().at(0), "17:00:00");
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

TEST_F(TrafficLogModelTest, SearchesFiltersAndSorts) {
    WriteToday(Three() + std::string(Event(9, 8, 0, 0, "")));
    Show();
    ArrangeBy("app.EXE");
    EXPECT_EQ(model->RowCount(), 3);
    ArrangeBy("", 0);
    EXPECT_EQ(Times(), (std::vector<std::string>{"08:00:00", "09:00:00", "10:00:00", "14:02:11"}));
    ArrangeBy("", 0, false);
    EXPECT_EQ(Times().front(), "14:02:11");
    model->Choose(TrafficLogModel::kFilterChoice, 5);  // messages
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"08:00:00"}));
    model->Choose(TrafficLogModel::kFilterChoice, 0);
    Settle();
    EXPECT_EQ(model->RowCount(), 4);
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
    model->Choose(TrafficLogModel::kDayChoice, 0);
    Settle();
    clock.today.day = 11;
    folder.Write(R"(\Log\20260311.log)", Event(1, 0, 0, 1));
    PassSecond();
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"00:00:01"}));
    EXPECT_EQ(model->Choices().at(1).chosen, 0);
}

TEST_F(TrafficLogModelTest, GoesOnWithTheNewDayWhicheverReadingTellsOfIt) {
    WriteToday(Three());
    Show();
    model->Read(ReadReason::Wished);
    clock.today.day = 10;
    reads.RunAll();  // the days are read after midnight, before the next look
    folder.Write(R"(\Log\20260310.log)", Event(1, 0, 0, 1));
    PassSecond();
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"00:00:01"}));
    EXPECT_EQ(model->Choices().at(1).chosen, 0);
    // The page is left while it lists, and seen again on another day.
    for (const ReadReason reason : {ReadReason::Shown, ReadReason::Wished}) {
        model->ArrangeBy({reason == ReadReason::Shown ? "a" : "p", RowOrder::kAsRead, true, false});
        model->OnHidden();
        ++clock.today.day;
        model->Read(reason);
        reads.RunAll();
        EXPECT_EQ(model->Choices().at(1).chosen, 0);
        Settle();
        EXPECT_EQ(model->RowCount(), 0);
    }
}

TEST_F(TrafficLogModelTest, ShowsThePacketsOfTheDayInTheirOrder) {
    const std::string path = folder.Write(R"(\Log\20260309_packet.log)", Packet(17, 1, "abc") + Packet(6, 2, ""));
    Show();
    model->Choose(TrafficLogModel::kLogChoice, 1);
    Settle();
    const std::string addresses = "10.0.0.5:1025 <- 93.184.216.34:53";
    EXPECT_EQ(Rows(), (std::vector<std::string>{"00:00:01\t\tUDP\t" + addresses + "\tdig.exe\t3 bytes",
                                                "00:00:02\t\tTCP\t" + addresses + "\tdig.exe\t0 bytes"}));
    EXPECT_EQ(model->Summary(), "2 packets; last at 00:00:02");
    EXPECT_EQ(model->Choices().at(2).items.size(), 7U);
    (void)view.TakeChanges();
    test::AppendTo(path, Packet(17, 3, "x"));
    PassSecond();
    EXPECT_EQ(view.TakeChanges(), "bBs");  // behind the others
    model->Choose(TrafficLogModel::kFilterChoice, 4);
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"00:00:01", "00:00:03"}));
}

TEST_F(TrafficLogModelTest, BeginsTheNextListingWhenTheLastOneHasEnded) {
    WriteToday(Three());
    model->Read(ReadReason::Shown);
    for (const char* searched : {"a", "ap", "app", "10:00"}) {
        model->ArrangeBy({searched, RowOrder::kAsRead, true, false});
        view.Wake();
    }
    EXPECT_TRUE(model->Progress());
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"10:00:00"}));
    // Left in the middle, it is listed when the page is seen again.
    model->ArrangeBy({});
    model->OnHidden();
    EXPECT_FALSE(model->Progress());
    Show();
    EXPECT_EQ(model->RowCount(), 3);
}

TEST_F(TrafficLogModelTest, IsStoppedByTheUser) {
    std::string log;
    for (int i = 0; i < 2000; ++i) log += Event(1, 1, 0, 0);
    WriteToday(log);
    // The worker is busy with something else: the listing waits.
    std::promise<void> release;
    ASSERT_TRUE(listing.Start([&](const StopSignal&) { release.get_future().wait(); }));
    model->Read(ReadReason::Shown);
    view.Wake();
    EXPECT_TRUE(model->Progress());
    model->StopProgress();
    EXPECT_FALSE(model->Progress());
    EXPECT_TRUE(model->EmptyText().find("stopped") != std::string::npos);
    release.set_value();
    listing.Stop();
    model->Read(ReadReason::Wished);
    Settle();
    EXPECT_EQ(model->RowCount(), 2000);
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
    // While it sorts. A worker that was quicker than the stop has sorted all.
    bool wasStopped = false;
    for (int i = 0; i < 100 && !wasStopped; ++i) {
        model->ArrangeBy(byTime);
        model->StopProgress();
        Settle();
        wasStopped = model->Cell(0, 0).text == "15:00:00";
        if (!wasStopped) ArrangeBy("");
    }
    ASSERT_TRUE(wasStopped);
    EXPECT_EQ(model->Summary(),
              "20\xA0"
              "000 allowed, 1 denied; last at 15:00:00");
    test::AppendTo(path, Event(2, 16, 0, 0));
    PassSecond();
    EXPECT_EQ(model->Cell(0, 0).text, "16:00:00");
}

TEST_F(TrafficLogModelTest, KeepsItsRowsWhenItIsReadAgain) {
    const std::string path = WriteToday(Three());
    Show();
    test::AppendTo(path, Event(2, 15, 0, 0));
    (void)view.TakeChanges();
    model->Read(ReadReason::Wished);
    EXPECT_FALSE(model->Progress());
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "F1s");  // selection and place stay with the rows
    WriteToday(Event(2, 20, 0, 0));
    model->Read(ReadReason::Wished);
    Settle();
    EXPECT_EQ(Times(), (std::vector<std::string>{"20:00:00"}));
    // Searched for while it was hidden: the rows are not those of the wish.
    model->OnHidden();
    model->ArrangeBy({"nowhere", RowOrder::kAsRead, true, false});
    Show();
    EXPECT_EQ(model->RowCount(), 0);
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
    view.savePlace = SavePlace{.path = folder.File("out.csv"), .type = 0};
    model->Do(TrafficLogModel::kExport, {});
    Settle();
    EXPECT_NE(view.told.back().find("missing: 3"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.File("out.csv")));
}

TEST_F(TrafficLogModelTest, WritesTheSelectedRowsOrAllOfThemForAMail) {
    WriteToday(Three());
    Show();
    const auto linesOf = [](const MailWish& wish) {
        std::ifstream file(wish.path);
        int lines = 0;
        for (std::string line; std::getline(file, line);) ++lines;
        return lines;
    };
    const int two[] = {0, 2};
    model->Do(TrafficLogModel::kMail, two);
    EXPECT_FALSE(model->CanDo(TrafficLogModel::kMail, -1));
    Settle();
    ASSERT_EQ(mail.wishes.size(), 1U);
    EXPECT_EQ(mail.wishes[0].name, "Traffic 2026-03-09.csv");
    EXPECT_EQ(mail.wishes[0].contentType, "text/csv");
    EXPECT_TRUE(mail.wishes[0].isTemporary);
    EXPECT_EQ(linesOf(mail.wishes[0]), 3);  // with the heading
    clock.Pass(1s);
    model->Do(TrafficLogModel::kMail, {});
    model->Choose(TrafficLogModel::kLogChoice, 1);  // the attachment stays what it is
    Settle();
    ASSERT_EQ(mail.wishes.size(), 2U);
    EXPECT_EQ(mail.wishes[1].name, "Traffic 2026-03-09.csv");
    EXPECT_EQ(mail.wishes[1].subject, "Traffic 2026-03-09");
    EXPECT_EQ(mail.wishes[1].path.find(folder.File("")), 0U);
    model->Choose(TrafficLogModel::kLogChoice, 0);
    Settle();
    EXPECT_NE(mail.wishes[1].path, mail.wishes[0].path);
    EXPECT_EQ(linesOf(mail.wishes[1]), 4);
    // An export into a file is no mail.
    view.savePlace = SavePlace{.path = folder.File("out.csv"), .type = 0};
    model->Do(TrafficLogModel::kExport, {});
    Settle();
    EXPECT_EQ(mail.wishes.size(), 2U);
}

TEST_F(TrafficLogModelTest, LetsAnExportEndBeforeTheNextOne) {
    WriteToday(Three() + std::string(Event(1, 16, 0, 0, "C:\\a\nb.exe")));
    Show();
    EXPECT_EQ(model->CellTip(0, 4), R"(C:\a b.exe)");
    EXPECT_EQ(model->Program(0), "C:\\a\nb.exe");  // as the rules name it
    view.savePlace = SavePlace{.path = folder.File("out.csv"), .type = 0};
    model->Do(TrafficLogModel::kExport, {});
    EXPECT_FALSE(model->CanDo(TrafficLogModel::kExport, 0));
    RowRanges rows;
    rows.Add(0, 1);
    EXPECT_TRUE(model->Copy(rows));
    EXPECT_TRUE(view.told.back().starts_with("Export the log: An export is under way."));
    view.saveWish.reset();
    model->Do(TrafficLogModel::kExport, {});
    EXPECT_FALSE(view.saveWish) << "nobody is asked for a place in vain";
    EXPECT_EQ(view.told.size(), 2U);
    Settle();
    EXPECT_TRUE(view.told.back().starts_with("Export the log: The log has been exported"));
    EXPECT_TRUE(std::filesystem::exists(folder.File("out.csv")));
    EXPECT_TRUE(model->CanDo(TrafficLogModel::kExport, 0));
    // A second one that is begun while the first one's place is asked for.
    view.whileAsked = [&] {
        view.whileAsked = nullptr;
        model->Do(TrafficLogModel::kExport, {});
        view.savePlace->path = folder.File("other.csv");
    };
    model->Do(TrafficLogModel::kExport, {});
    EXPECT_EQ(view.told.size(), 4U);
    Settle();
    EXPECT_FALSE(std::filesystem::exists(folder.File("other.csv")));
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
    // Two places in turn, as for widths and for painting: both come, whichever was asked for last.
    for (int pass = 0; pass < 3; ++pass) {
        for (const int row : {400, 1000}) (void)model->Cell(row, pass);
    }
    EXPECT_EQ(reads.Waiting(), 1U);
    reads.RunAll();
    EXPECT_EQ(model->Cell(400, 0).text, "00:43:19");
    EXPECT_EQ(model->Cell(1000, 0).text, "00:33:19");
}

TEST_F(TrafficLogModelTest, ActsOnRows) {
    WriteToday(Three() + std::string(Event(6, 15, 0, 0, "").U32(472, 0)));
    folder.Write(R"(\Log\20260309_dns.log)",
                 "\x5D\xB8\xD8\x22" + std::string("www.example.com") + std::string(241, '\0'));
    Show();
    const int first[] = {1};
    EXPECT_FALSE(model->CanDo(TrafficLogModel::kShowRule, 0));
    EXPECT_TRUE(model->CanDo(TrafficLogModel::kShowRule, 1));
    model->Do(TrafficLogModel::kShowRule, first);
    EXPECT_EQ(view.commands, (std::vector<int>{IDM_APPLICATIONS}));
    EXPECT_EQ(view.openedKey, R"(C:\Program Files\App\app.exe)");
    model->Do(TrafficLogModel::kOpenFolder, first);
    EXPECT_EQ(view.folders, (std::vector<std::string>{R"(C:\Program Files\App\app.exe)"}));
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
    model->Do(TrafficLogModel::kDeleteLogs, {});
    EXPECT_EQ(view.commands.back(), IDM_DELETE_LOGS);
    model->Do(TrafficLogModel::kDetails, first);
    reads.RunAll();
    ASSERT_EQ(view.sheets.size(), 1U);
    EXPECT_NE(TextOf(view.sheets[0]).find("www.example.com"), std::string::npos);
    model->Do(TrafficLogModel::kDetails, first);
    model->OnHidden();
    reads.RunAll();
    EXPECT_EQ(view.sheets.size(), 1U) << "the page has been left";
}

TEST_F(TrafficLogModelTest, ExportsAndCopiesWhatIsListed) {
    WriteToday(Three());
    Show();
    ArrangeBy("", 0);
    model->Do(TrafficLogModel::kExport, {});
    EXPECT_FALSE(model->Progress());  // the user would rather not
    EXPECT_EQ(view.saveWish->name, "Traffic 2026-03-09");
    view.savePlace = SavePlace{.path = folder.File("out.csv"), .type = 0};
    model->Do(TrafficLogModel::kExport, {});
    EXPECT_EQ(model->Progress()->text, "Exporting");
    EXPECT_EQ(model->LeavingQuestion()->yes, "Stop") << "else nobody could see how far it has come";
    Settle();
    EXPECT_FALSE(model->LeavingQuestion());
    ASSERT_EQ(view.told.size(), 1U);
    EXPECT_TRUE(view.told[0].starts_with("Export the log: The log has been exported"));
    std::ifstream file(view.savePlace->path);
    std::string line;
    std::vector<std::string> times;
    while (std::getline(file, line)) times.push_back(line.substr(0, 8));
    EXPECT_EQ(times, (std::vector<std::string>{"\xEF\xBB\xBFTime,", "09:00:00", "10:00:00", "14:02:11"}));
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
