#include "views/OptionEditor.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/ResourceIds.h"
#include "support/OptionsRig.h"
#include "views/OptionFields.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::FakePassword;

enum Section : std::size_t {
    kGeneral,
    kEnhancements,
    kLogging,
    kMiscellaneous,
    kIcmp,
    kFileSharing,
    kFiltering,
    kTrusted,
    kResources
};
constexpr int kShowBlocked = 1006, kLogDays = 1033;

class OptionEditorTest : public testing::Test, protected test::OptionsRig, public OptionEditor::View {
protected:
    FormDraft::Fields typed;  // by the user in General, not told yet
    std::optional<OptionEditor> editor{std::in_place, Parts(), *this};

    void SetUp() override {
        EXPECT_FALSE(editor->Apply(kGeneral)) << "nothing has been read";
        editor->Reload();
        reads.RunAll();
        ASSERT_TRUE(editor->CanApply(kGeneral));
    }
    void TakeEdits() override {
        if (!typed.empty()) editor->Edit(kGeneral, typed);
        typed.clear();
    }
    void ShowOptions() override {}

    [[nodiscard]] std::string Shown(std::size_t section, int control) const {
        return editor->Shown(section).at(control);
    }
    [[nodiscard]] std::string_view Note(std::size_t section) const { return editor->NoteText(section).english; }
    void Apply(std::size_t section, int control, const std::string& content) {
        editor->Edit(section, {{control, content}});
        editor->Apply(section);
    }
};

TEST_F(OptionEditorTest, FollowsAChangeUntilItIsStored) {
    Apply(kGeneral, kShowBlocked, "1");
    EXPECT_TRUE(editor->IsFollowing());
    EXPECT_EQ(Note(kGeneral), "Applying...");
    EXPECT_EQ(Deliver(), 5U) << "three options, 15, the event";
    EXPECT_EQ(Note(kGeneral), "Applying...");
    source.values->SetNumber(OptionId::ShowBlockedMessages, 1);
    editor->Follow();
    EXPECT_EQ(reads.Waiting(), 1U);
    typed = {{kShowBlocked, "0"}};
    reads.RunAll();
    EXPECT_FALSE(editor->IsFollowing());
    EXPECT_EQ(Note(kGeneral), "Changes are not applied yet.") << "typed since";
    typed = {{kShowBlocked, "1"}};
    editor->Reload();
    EXPECT_FALSE(editor->IsEdited(kGeneral));
    Apply(kGeneral, kShowBlocked, "1");
    (void)Deliver();
    EXPECT_EQ(Note(kGeneral), "Stored.");
    source.values->SetNumber(OptionId::LogDays, 3);
    editor->Reload();
    reads.RunAll();
    EXPECT_EQ(Note(kGeneral), "") << "what is stored has changed since";
}

TEST_F(OptionEditorTest, GoesBackToWhatIsStoredWhenAChangeIsLost) {
    Apply(kLogging, kLogDays, "");
    (void)Deliver();
    EXPECT_EQ(Note(kLogging), "Stored.") << "without a number it is the default";
    EXPECT_EQ(Shown(kLogging, kLogDays), "30");
    Apply(kLogging, kLogDays, "7");
    (void)Deliver();
    clock.Pass(1001ms);
    editor->Follow();
    editor->Edit(kLogging, {{1031, "9"}});
    reads.RunAll();
    EXPECT_EQ(Shown(kLogging, kLogDays), "30");
    EXPECT_EQ(Shown(kLogging, 1031), "9") << "edited since";
    editor->Discard(kLogging);
    EXPECT_EQ(Note(kLogging), "The change was not stored.");
}

TEST_F(OptionEditorTest, KeepsEditsWhenThePasswordIsRefused) {
    rig.password.answer = FakePassword::Answer::Later;
    Apply(kGeneral, kShowBlocked, "1");
    editor->Apply(kFileSharing);
    EXPECT_EQ(rig.password.asked, 1) << "one question at a time";
    EXPECT_FALSE(editor->IsFollowing());
    rig.password.Give(false);
    EXPECT_EQ(Note(kGeneral), "Changes are not applied yet.");
    EXPECT_TRUE(editor->IsUnapplied(kGeneral));
    EXPECT_EQ(rig.password.asked, 2);
    editor.reset();
    rig.password.Give(true);  // the page has gone
    (void)Deliver();
}

TEST_F(OptionEditorTest, ReadsWhenTheFileHasChangedOrCouldNotBeRead) {
    const auto reads_ = [&] {
        editor->Watch();
        const std::size_t waiting = reads.Waiting();
        reads.RunAll();
        return waiting == 1;
    };
    EXPECT_FALSE(reads_());
    source.stamp.size += 128;
    source.values->SetNumber(OptionId::LogDays, 3);
    EXPECT_TRUE(reads_());
    EXPECT_EQ(Shown(kLogging, kLogDays), "3");
    EXPECT_FALSE(reads_());
    source.stamp.written = clock.now - 2 * kFileTimePerSecond + 1;
    EXPECT_TRUE(reads_());
    EXPECT_TRUE(reads_()) << "written just now, perhaps twice";
    clock.Pass(1ms);
    EXPECT_FALSE(reads_());
    const auto values = std::exchange(source.values, std::nullopt);
    editor->Reload();
    reads.RunAll();
    EXPECT_EQ(Shown(kLogging, kLogDays), "3");
    source.values = values;
    EXPECT_TRUE(reads_()) << "let go of, and the same as before";
    editor->Reload();
    editor->Watch();
    EXPECT_EQ(reads.Waiting(), 1U);
    reads.DoTask();
    editor->Watch();
    reads.Complete();
    EXPECT_EQ(reads.Waiting(), 0U) << "it is being read already";
}

TEST_F(OptionEditorTest, BrowserFilteringLeavesThePortAloneWithoutOne) {
    const int port = ControlOf(OptionId::FilteringProxyPort);
    editor->Edit(kFiltering, {{IDC_FILTER_ADS, "1"}});
    Apply(kFiltering, port, "");
    EXPECT_EQ(Deliver(), 0U);
    EXPECT_EQ(Note(kFiltering), "Stored.");
    EXPECT_EQ(Shown(kFiltering, port), "8215");
    EXPECT_EQ(userValues.stored, (std::map<std::string, std::uint32_t>{{"EnableSCS", 0},
                                                                       {"EnableAdBlocking", 1},
                                                                       {"EnableActiveXBlocking", 0},
                                                                       {"EnableReferBlocking", 0},
                                                                       {"EnableCookiesBlocking", 0}}));
    Apply(kFiltering, port, "8080");
    EXPECT_EQ(Deliver(), 1U) << "the queue";
    EXPECT_EQ(Note(kFiltering), "Applying...");
    EXPECT_EQ(userValues.stored.at("FilteringProxyPort"), 8080U);
    source.values->SetNumber(OptionId::FilteringProxyPort, 8080);
    userValues.stored["EnableAdBlocking"] = 0;  // by somebody else
    editor->Follow();
    reads.RunAll();
    EXPECT_EQ(Note(kFiltering), "Applying...");
    userValues.stored["EnableAdBlocking"] = 5;  // any other number is on
    editor->Follow();
    reads.RunAll();
    EXPECT_EQ(Note(kFiltering), "Stored.");
}

TEST_F(OptionEditorTest, TellsThatTheOptionsCannotBeReadAndAppliesWhatDoesNotDependOnThem) {
    source.values.reset();
    editor.emplace(Parts(), *this);
    editor->Reload();
    reads.RunAll();
    EXPECT_EQ(Note(kGeneral), "The settings cannot be read at the moment.");
    EXPECT_FALSE(editor->Apply(kGeneral));
    EXPECT_EQ(Shown(kFiltering, ControlOf(OptionId::FilteringProxyPort)), "") << "the default would be applied";
    Apply(kFiltering, IDC_FILTER_ADS, "1");
    EXPECT_EQ(Deliver(), 0U);
    EXPECT_EQ(userValues.stored.at("EnableAdBlocking"), 1U);
    source.values.emplace();
    editor->Watch();
    reads.RunAll();
    EXPECT_EQ(Shown(kFiltering, ControlOf(OptionId::FilteringProxyPort)), "8215");
}

TEST_F(OptionEditorTest, WhatWasShownAsNotStoredDoesNotArriveLater) {
    for (const std::size_t section : {kLogging, kFiltering}) {
        {
            const auto held = rig.Hold();
            Apply(section, section == kLogging ? kLogDays : ControlOf(OptionId::FilteringProxyPort), "7");
            clock.Pass(2001ms);
            editor->Follow();
            reads.RunAll();
            EXPECT_EQ(Note(section), "The change was not stored.");
        }
        EXPECT_EQ(Deliver(), 0U) << section;
    }
}

TEST(OptionSectionsTest, ShowEveryOptionThatHasACaptionOnce) {
    std::map<int, int> shown;
    for (const SectionInfo& section : OptionSections()) {
        for (const RowInfo& row : section.rows) {
            if (row.kind == RowKind::Field && OptionOfControl(row.control)) ++shown[row.control];
        }
    }
    for (const OptionInfo& option : OptionTable()) {
        EXPECT_EQ(shown[ControlOf(option.id)], option.caption.number != 0 ? 1 : 0) << static_cast<int>(option.id);
    }
}

}  // namespace
}  // namespace brennvar
