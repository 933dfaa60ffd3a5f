#include "views/OptionChanges.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using Note = OptionChanges::Note;

constexpr std::size_t kOne = 0, kTwo = 1;

class OptionChangesTest : public testing::Test {
protected:
    test::FakeClock clock;
    OptionChanges changes{clock};

    // Sends what comes next; its number, 0 without one.
    int Send() {
        const OptionChanges::Change* const change = changes.Begin();
        if (!change) return 0;
        changes.OnSent();
        return change->number;
    }
    bool Read(bool isStored) { return changes.OnRead(isStored, clock.elapsed).has_value(); }
};

TEST_F(OptionChangesTest, IsLostOnlyWhenAReadingFromAfterItsTimeSaysSo) {
    changes.Want(kOne, {});
    (void)Send();
    clock.now = 0;  // the system's clock is set back
    const auto sent = clock.elapsed;
    clock.Pass(2000ms);
    EXPECT_FALSE(changes.NeedsReading());
    EXPECT_FALSE(Read(true));
    clock.Pass(1ms);
    EXPECT_TRUE(changes.NeedsReading());
    EXPECT_FALSE(changes.OnRead(true, sent + 2000ms)) << "asked for before, and held up";
    EXPECT_TRUE(Read(true)) << "not delivered";
    EXPECT_EQ(changes.NoteOf(kOne), Note::Lost);

    changes.Want(kOne, {});
    const int number = Send();
    clock.Pass(1500ms);
    EXPECT_TRUE(changes.OnDelivered(number));
    clock.Pass(1000ms);
    EXPECT_FALSE(Read(false));
    clock.Pass(1ms);
    EXPECT_TRUE(Read(false));
    EXPECT_EQ(changes.NoteOf(kOne), Note::Lost);
    changes.ForgetAll();
    EXPECT_EQ(changes.NoteOf(kOne), Note::None);
}

TEST_F(OptionChangesTest, CarriesOutOneAfterTheOtherAndTheLastOfEachSection) {
    changes.Want(kOne, {{1, "a"}});
    const int first = Send();
    changes.Want(kOne, {{1, "b"}});
    changes.Want(kTwo, {{2, "x"}});
    EXPECT_TRUE(changes.Covers(kOne, {{1, "b"}}));
    EXPECT_FALSE(changes.Covers(kOne, {{1, "a"}}));
    EXPECT_FALSE(changes.Covers(kTwo, {{2, "y"}}));
    changes.Want(kOne, {{1, "c"}});
    EXPECT_EQ(changes.Begin(), nullptr);
    clock.Pass(3s);
    EXPECT_TRUE(Read(false));
    EXPECT_EQ(changes.NoteOf(kOne), Note::UnderWay) << "the last one counts";
    const int second = Send();
    ASSERT_NE(second, 0);
    EXPECT_EQ(changes.Sent()->section, kTwo);
    EXPECT_FALSE(changes.OnDelivered(first)) << "given up, and delivered after all";
    EXPECT_FALSE(Read(true));
    EXPECT_TRUE(changes.OnDelivered(second));
    EXPECT_TRUE(Read(true));
    ASSERT_NE(Send(), 0);
    EXPECT_EQ(changes.Sent()->fields.at(1), "c");
    EXPECT_TRUE(changes.Covers(kOne, {{1, "c"}}));
    EXPECT_EQ(changes.NoteOf(kTwo), Note::Stored);
    changes.Want(kTwo, {});
    EXPECT_EQ(changes.NoteOf(kTwo), Note::UnderWay);
}

}  // namespace
}  // namespace brennvar
