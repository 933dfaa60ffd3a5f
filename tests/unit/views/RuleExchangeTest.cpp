#include "views/RuleExchange.h"

#include <gtest/gtest.h>

#include "support/FakeMailForms.h"
#include "support/GoldenCipher.h"
#include "support/RuleExchangeRig.h"
#include "support/ZipBytes.h"

namespace brennvar {
namespace {

using Said = std::vector<std::string>;
using test::StoredEntry;
using test::ZipBytes;
using Work = RuleExchange::Work;

std::string RulesOf(const std::vector<std::pair<std::string, char>>& rules) {
    std::string records;
    for (const auto& [path, action] : rules) {
        std::string record = path;
        record.resize(260, '\0');
        records += record + action + std::string(3, '\0');
    }
    return test::EncipherByHand(records, 264);
}
const std::string kOld = RulesOf({{"C:\\a.exe", 1}, {"C:\\b.exe", 2}});
const std::string kNew = RulesOf({{"C:\\a.exe", 2}, {"C:\\c.exe", 1}});
constexpr char kCounts[] = "Added: 1     Removed: 1     Changed: 1     Unchanged: 0";

class RuleExchangeTest : public testing::Test, protected test::RuleExchangeRig, private RuleExchangeWatcher {
protected:
    RuleExchangeTest() {
        folder.Write("Rules/rules.conf", kOld);
        archive = folder.Write("in.fxz", ZipBytes({StoredEntry("rules.conf", kNew)}));
        dialogs.path = archive;
        exchange.Watch(*this);
    }
    // Codes of the commands since the last call.
    std::vector<int> TakeSent() {
        std::vector<int> codes;
        for (const test::RawBytes& record : commanding.TakeRecords()) {
            codes.push_back(static_cast<int>(std::to_integer<unsigned>(record[0])));
        }
        return codes;
    }
    [[nodiscard]] std::string Rules() const { return folder.Read("Rules/rules.conf"); }

    std::string archive;
    int replaced = 0;

private:
    void OnExchangeChanged() override {}
    void OnRulesReplaced() override { ++replaced; }
};

TEST_F(RuleExchangeTest, ImportsWhatTheUserHasSeenAndTellsTheService) {
    exchange.Import(RuleSet::Applications);
    EXPECT_EQ(exchange.Current(), Work::Importing);
    EXPECT_EQ(dialogs.suggested, Said{"rules.fxz"});
    exchange.Import(RuleSet::Applications);
    exchange.Export(RuleSet::Applications);
    EXPECT_EQ(dialogs.suggested.size(), 1U) << "one at a time";
    queue.Run();
    EXPECT_EQ(dialogs.TakeSaid(), Said{kCounts});
    EXPECT_EQ(Rules(), kOld) << "not yet";
    queue.RunAll();
    EXPECT_EQ(Rules(), kNew);
    EXPECT_EQ(TakeSent(), std::vector<int>{12});
    EXPECT_EQ(replaced, 1);
    EXPECT_EQ(exchange.Current(), Work::None);
    EXPECT_EQ(exchange.LastDone(RuleSet::Applications), RuleExchange::Last::Imported);

    exchange.Import(RuleSet::Advanced);
    EXPECT_EQ(dialogs.suggested.back(), "rules_advanced.fxz");
    advanced.isSlow = true;
    queue.RunAll();
    EXPECT_EQ(TakeSent(), std::vector<int>{12}) << "what was held";
    EXPECT_EQ(advanced.reads, 1);
    advanced.over();
    EXPECT_EQ(TakeSent(), std::vector<int>{7}) << "the page's own, when it has read its rules";
    queue.RunAll();
    EXPECT_FALSE(std::filesystem::exists(folder.File("Rules.import"))) << "the service knows";
}

TEST_F(RuleExchangeTest, UndoAsksFirstWhenTheRulesHaveChangedSince) {
    exchange.Import(RuleSet::Applications);
    queue.RunAll();
    (void)dialogs.TakeSaid();
    const std::string since = RulesOf({{"C:\\a.exe", 2}, {"C:\\d.exe", 1}});
    folder.Write("Rules/rules.conf", since);
    dialogs.agrees = false;
    exchange.Undo(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(dialogs.TakeSaid(), Said{kCounts}) << "what becomes of them";
    EXPECT_EQ(Rules(), since);
    EXPECT_EQ(exchange.Current(), Work::None);
    dialogs.agrees = true;
    exchange.Undo(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(Rules(), kOld);
    // The way back to what was there in between.
    (void)dialogs.TakeSaid();
    exchange.Undo(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(Rules(), since);
    EXPECT_EQ(dialogs.TakeSaid(), Said{}) << "nothing has changed since";
    // A point that is gone is told of.
    std::filesystem::remove_all(folder.File("Rules.restore"));
    exchange.Undo(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(dialogs.TakeSaid(), Said{"The rules could not be imported. They are as they were."});
    EXPECT_EQ(Rules(), since);
}

TEST_F(RuleExchangeTest, RulesThatTheServiceHoldsAreNotTakenForNone) {
    std::size_t held = 100;
    files.isHeld = [&](const std::string& path) {
        return path.ends_with("Rules/rules.conf") && clock.sleeps.size() < held;
    };
    exchange.Import(RuleSet::Applications);
    queue.Run();
    EXPECT_EQ(dialogs.TakeSaid(), Said{kCounts}) << "for a moment only";
    queue.RunAll();
    held = clock.sleeps.size() + 7000;
    const Said isHeld{"The rules are held by the service at the moment. Please try again."};
    exchange.Import(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(dialogs.TakeSaid(), isHeld) << "no preview";
    held = clock.sleeps.size() + 7000;
    exchange.Undo(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(dialogs.TakeSaid(), isHeld);
    EXPECT_EQ(Rules(), kNew);
    EXPECT_EQ(exchange.Current(), Work::None);
}

TEST_F(RuleExchangeTest, UndoesWhatWasDoneLastThoughTheClockWasSetBack) {
    folder.Write("Rules.restore/2099-03-09 14-05-09.fxz", ZipBytes({StoredEntry("rules.conf", "another")}));
    exchange.Import(RuleSet::Applications);
    queue.RunAll();
    ASSERT_TRUE(exchange.Undoable(RuleSet::Applications));
    EXPECT_EQ(exchange.Undoable(RuleSet::Applications)->name, "2099-03-09 14-05-10.fxz");
    exchange.Undo(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(Rules(), kOld);
}

TEST_F(RuleExchangeTest, LeavesTheRulesAloneUnlessEverythingIsRight) {
    const auto expectUntouched = [&](const Said& said, const char* why) {
        queue.RunAll();
        EXPECT_EQ(dialogs.TakeSaid(), said) << why;
        EXPECT_EQ(Rules(), kOld) << why;
        EXPECT_EQ(TakeSent(), std::vector<int>{}) << why;
        EXPECT_EQ(exchange.Current(), Work::None) << why;
        EXPECT_FALSE(exchange.Undoable(RuleSet::Applications)) << why;
    };
    dialogs.agrees = false;
    exchange.Import(RuleSet::Applications);
    expectUntouched({kCounts}, "the user says no");
    dialogs.agrees = true;

    commanding.password.answer = test::FakePassword::Answer::Refuse;
    exchange.Import(RuleSet::Applications);
    expectUntouched({}, "no password");
    commanding.password.answer = test::FakePassword::Answer::Allow;

    dialogs.path = folder.File("missing.fxz");
    exchange.Import(RuleSet::Applications);
    expectUntouched({}, "an archive that cannot be opened reports nothing");
    dialogs.path.reset();
    exchange.Import(RuleSet::Applications);
    expectUntouched({}, "the user would rather not");
    dialogs.path = folder.File(".fxz");
    exchange.Import(RuleSet::Applications);
    expectUntouched({"Please enter file name."}, "no name");

    auto sealed = StoredEntry("rules.conf", kNew);
    sealed.flags = 1;
    dialogs.path = folder.Write("sealed.fxz", ZipBytes({sealed}));
    exchange.Import(RuleSet::Applications);
    expectUntouched({"The archive needs a password. The rules are as they were.\nIt is about: rules.conf"},
                    "sealed");

    dialogs.path = archive;
    dialogs.whileAsked = [this] { exchange.Stop(); };
    exchange.Import(RuleSet::Applications);
    exchange.Stop();
    expectUntouched({}, "stopped while it is read");
    dialogs.whileAsked = [] {};
    exchange.Import(RuleSet::Applications);
    queue.Run();
    exchange.Stop();
    expectUntouched({kCounts}, "stopped before it is put in place");

    files.whenReplaced = [](const std::string&, const std::string& to) {
        return to.ends_with("rules.conf") ? WriteResult::DiskFull : WriteResult::Written;
    };
    exchange.Import(RuleSet::Applications);
    expectUntouched({kCounts, "The disk is full. The rules are as they were."}, "the disk is full");
}

TEST_F(RuleExchangeTest, ExportsUnderTheNameThatWasChosenButTheExtension) {
    dialogs.path = folder.File("mine.txt");
    exchange.Export(RuleSet::Applications);
    EXPECT_EQ(dialogs.suggested, Said{"rules"});
    queue.RunAll();
    const std::string path = folder.File("mine.fxz");
    EXPECT_EQ(dialogs.TakeSaid(), Said{"The rules have been exported to this file:\n" + path});

    // One that is there is asked about, and stays when the user says so.
    folder.Write("mine.fxz", "another");
    dialogs.agrees = false;
    exchange.Export(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(dialogs.TakeSaid(), Said{"This file exists already. Replace it?\n" + path + "|Replace"});
    EXPECT_EQ(folder.Read("mine.fxz"), "another");
    test::FakeMailForms mail;
    exchange.SendWith(&mail);
    dialogs.agrees = true;
    exchange.Export(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(dialogs.TakeSaid().back(), "The rules have been exported to this file:\n" + path + "|Mail...");
    ASSERT_EQ(mail.wishes.size(), 1U);
    EXPECT_EQ(mail.wishes[0].path + "|" + mail.wishes[0].name + "|" + mail.wishes[0].contentType,
              path + "|mine.fxz|application/zip");

    std::filesystem::remove(folder.File("Rules/rules.conf"));
    exchange.Export(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(dialogs.TakeSaid().back(), "There are no rules to export yet.");
    EXPECT_EQ(exchange.Current(), Work::None);
}

TEST_F(RuleExchangeTest, FindsAtTheStartWhatWasLeftBehind) {
    folder.Write("Rules.restore/2026-03-09 14-05-09.fxz", ZipBytes({StoredEntry("rules.conf", kNew)}));
    folder.Write("Rules.import/new.0", "half");
    exchange.Begin();
    EXPECT_FALSE(exchange.Undoable(RuleSet::Applications));
    queue.RunAll();
    ASSERT_TRUE(exchange.Undoable(RuleSet::Applications));
    EXPECT_EQ(exchange.Undoable(RuleSet::Applications)->moment, "2026-03-09 14:05:09");
    EXPECT_EQ(exchange.LastDone(RuleSet::Applications), RuleExchange::Last::None);
    EXPECT_EQ(TakeSent(), (std::vector<int>{12, 7})) << "whatever it was that the service has not been told of";
    EXPECT_EQ(replaced, 1);
    queue.RunAll();
    EXPECT_FALSE(std::filesystem::exists(folder.File("Rules.import")));
    exchange.Undo(RuleSet::Applications);
    queue.RunAll();
    EXPECT_EQ(Rules(), kNew);
    exchange.Begin();
    queue.RunAll();
    EXPECT_EQ(TakeSent(), (std::vector<int>{12, 12, 7})) << "the program ended before it could tell";
    queue.RunAll();
    exchange.Begin();
    queue.RunAll();
    EXPECT_EQ(TakeSent(), std::vector<int>{}) << "nothing has happened since";
}

TEST(ArchivePathTest, AlwaysEndsInTheOneExtension) {
    const struct {
        const char* chosen;
        std::optional<std::string> path;
    } rows[] = {{"C:\\x\\rules", "C:\\x\\rules.fxz"},
                {"C:\\x.y\\rules", "C:\\x.y\\rules.fxz"},
                {"C:\\x\\a.b.c", "C:\\x\\a.b.fxz"},
                {"C:x", "C:x.fxz"},
                {"/x/y.zip", "/x/y.fxz"},
                {"C:\\x\\.fxz", std::nullopt},
                {"", std::nullopt}};
    for (const auto& row : rows) EXPECT_EQ(ArchivePathOf(row.chosen), row.path) << row.chosen;
}

}  // namespace
}  // namespace brennvar
