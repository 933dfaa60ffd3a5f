#include "views/ServiceList.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <string>
#include <thread>

#include "support/CommanderRig.h"
#include "support/FakeClock.h"
#include "support/FakeTaskQueue.h"
#include "support/ListRig.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::FakePassword;
using test::Pieces;
using test::RawBytes;
using test::ZerosWith;

class ServiceListTest : public testing::Test, private ServiceList::View {
protected:
    test::CommanderRig rig;
    test::FakeTaskQueue reads;
    test::FakeClock clock;
    test::FakeList file;
    int over = 0;  // changes, as the view is told
    TrustedList trusted{Parts(), *this};
    FilteredSites sites{Parts(), *this};

    ServiceList::Parts Parts() {
        return {.commander = rig.commander, .reads = reads, .clock = clock, .source = file.Source()};
    }
    void Load(ServiceList& list, std::vector<ListEntry> entries) {
        file.entries = std::move(entries);
        list.Reload();
        reads.RunAll();
    }
    // So much time passes, at whose end the list is read, or not.
    bool IsReadAfter(ServiceList& list, std::chrono::milliseconds time) {
        clock.Pass(time);
        list.Follow();
        const bool isRead = reads.Waiting() > 0;
        reads.RunAll();
        return isRead;
    }
    static std::string_view Note(const ServiceList& list) { return list.NoteText().english; }
    // The filter requests since the last call.
    std::vector<RawBytes> TakeRequests() {
        rig.Settle();
        std::vector<RawBytes> requests;
        for (const auto& message : rig.Pipe().requests) requests.push_back(message.bytes);
        rig.Pipe().requests.clear();
        return requests;
    }

private:
    void BeforeEntriesChange(const ServiceList&) override {}
    void AfterEntriesChange(const ServiceList&) override {}
    void StateChanged() override {}
    void ChangeIsOver(const ServiceList&) override { ++over; }
};

TEST_F(ServiceListTest, SaysWhatCannotBeAdded) {
    Load(sites, {{1, "Example.com"}, {2, " spaced.example "}});
    Load(trusted, {{0, R"(C:\Tools\A.exe)"}});
    struct Row {
        const ServiceList& list;
        std::string text;
        std::string_view problem;
    };
    const Row rows[] = {
        {sites, "", "Please enter a name."},
        {sites, "eXample.COM ", "This name is in the list already."},
        {sites, "control\x7F", "A name has no blanks."},
        {sites, std::string(103, 's'), ""},
        {sites, std::string(104, 's'), "A name has at most 103 characters."},
        {trusted, R"(c:\tools\a.EXE)", "This program is trusted already."},
        {trusted, R"(C:\Program Files\a b.exe)", ""},
        {trusted, std::string(119, 'p'), ""},
    };
    for (const Row& row : rows) EXPECT_EQ(row.list.ProblemOf(row.text).english, row.problem) << row.text;
    EXPECT_TRUE(trusted.ProblemOf(std::string(120, 'p')).english.starts_with("The path of this program is longer"));
    sites.Add("two words");
    EXPECT_FALSE(sites.IsFollowing());
}

TEST_F(ServiceListTest, AddsAProgramBehindThePasswordAndReadsASecondLater) {
    Load(trusted, {});
    rig.password.answer = FakePassword::Answer::Later;
    trusted.Add("  C:\\a.exe ");
    EXPECT_EQ(trusted.ProblemOf("c:\\A.exe").english, "This program is trusted already.") << "it is on its way";
    EXPECT_FALSE(IsReadAfter(trusted, 1h)) << "the user looks for the password";
    rig.password.Give(true);
    EXPECT_EQ(
        rig.TakeRecords(),
        (std::vector<RawBytes>{
            ZerosWith(5596, {{0, "\x1A"}, {5472, "C:\\a.exe"}}),
            ZerosWith(5596, {{0, "\1"}, {4, "Options changed"}, {132, "Trusted programs"}, {648, "C:\\a.exe"}})}));
    file.entries = {{{0, "C:\\A.EXE"}}};
    EXPECT_FALSE(IsReadAfter(trusted, 999ms));
    EXPECT_EQ(Note(trusted), "Applying...");
    EXPECT_TRUE(IsReadAfter(trusted, 1ms));
    EXPECT_EQ(Note(trusted), "Stored.");
    EXPECT_EQ(trusted.Entries().size(), 1U);
    EXPECT_FALSE(trusted.IsFollowing());
    trusted.ForgetNote();
    EXPECT_EQ(Note(trusted), "");
}

TEST_F(ServiceListTest, RemovesEachIdentifierOnceAndShowsWhatIsStored) {
    Load(sites, {{7, "a"}, {0, "b"}, {9, "c"}, {7, "d"}});
    EXPECT_FALSE(sites.CanRemove({}));
    EXPECT_FALSE(sites.CanRemove(std::array{1})) << "without an identifier";
    EXPECT_TRUE(sites.CanRemove(std::array{1, 2}));
    sites.Remove(std::array{1});
    EXPECT_FALSE(sites.IsFollowing());

    sites.Remove(std::array{0, 1, 2, 3});
    EXPECT_EQ(TakeRequests(), (std::vector<RawBytes>{ZerosWith(6168, {{0, "\5"}, {5132, "\7"}}),
                                                     ZerosWith(6168, {{0, "\5"}, {5132, "\x09"}})}));
    EXPECT_EQ(rig.password.asked, 0);
    file.entries = {{{0, "b"}, {9, "c"}}};  // one was refused
    EXPECT_FALSE(IsReadAfter(sites, 199ms));
    EXPECT_EQ(over, 0);
    EXPECT_TRUE(IsReadAfter(sites, 1ms));
    EXPECT_EQ(Note(sites), "The change was not stored.");
    EXPECT_EQ(sites.Entries(), *file.entries);
    EXPECT_EQ(over, 1);

    sites.Add("E");
    EXPECT_EQ(TakeRequests(), (std::vector<RawBytes>{ZerosWith(6168, {{0, "\4"}, {12, "E"}})}));
    sites.Remove(std::array{1});
    EXPECT_EQ(TakeRequests().size(), 1U);
    file.entries = {{{0, "b"}, {10, "e"}}};
    EXPECT_TRUE(IsReadAfter(sites, 200ms));
    EXPECT_EQ(Note(sites), "Stored.");
    EXPECT_FALSE(sites.IsFollowing());
}

TEST_F(ServiceListTest, AServiceThatIsMissingIsToldOfAfterTwoSeconds) {
    rig.Settle();
    Load(sites, {{7, "z"}});
    // The link waits for something else.
    std::atomic<bool> isFree = false;
    rig.link.Ask<bool>(
        [&](ServicePipes&) {
            while (!isFree) std::this_thread::yield();
            return true;
        },
        [](std::optional<bool>) {});
    sites.Add("a");
    sites.Remove(std::array{0});
    trusted.Add("C:\\a.exe");
    clock.Pass(1999ms);
    sites.Follow();
    EXPECT_EQ(reads.Waiting(), 0U);
    EXPECT_TRUE(IsReadAfter(sites, 1ms));
    EXPECT_EQ(Note(sites), "The change was not stored.");
    EXPECT_TRUE(IsReadAfter(trusted, 0ms));
    EXPECT_EQ(Note(trusted), "The change was not stored.");
    isFree = true;
    EXPECT_TRUE(TakeRequests().empty()) << "what was told to be lost does not come later";
    EXPECT_TRUE(rig.TakeRecords().empty());
    EXPECT_EQ(over, 0);
}

}  // namespace
}  // namespace brennvar
