// The sections of the Options page against the service stand-in: what is sent, and what the page shows afterwards.
#include <gtest/gtest.h>

#include "Product.h"

namespace brennvar::test {
namespace {

enum Section { kMiscellaneous = 3, kFileSharing = 5 };

constexpr int kNote = 1102;

// "Options changed", and the section's name.
std::string Event(const std::string& subjectHex) {
    return "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:" + subjectHex;
}

class OptionsTest : public ProductFixture {
protected:
    [[nodiscard]] bool IsChecked(int id) const { return Ask(Control(id), BM_GETCHECK) == BST_CHECKED; }
    void Click(int id) const { Ask(Control(id), BM_CLICK); }
};

TEST_F(OptionsTest, SendsASectionShowsWhatIsStoredAndAsksAboutChangesThatAreLeft) {
    Start({});
    OpenOptions(kMiscellaneous);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kApply); }));
    EXPECT_EQ(Text(1067), "");
    SetText(Control(1066), std::string(119, 'x') + "yz");
    Ask(Control(1070), CB_SETCURSEL, 1);
    Click(kApply);
    EXPECT_TRUE(WaitForText(kNote, "Stored."));
    std::string longest;
    for (int i = 0; i < 119; ++i) longest += "78";
    ExpectSent({"COMMAND 5596 0:08 5468:01 5592:40", "COMMAND 5596 0:08 5468:01 5592:41",
                "COMMAND 5596 0:09 5472:" + longest + " 5592:42", "COMMAND 5596 0:08 5592:43",
                "COMMAND 5596 0:09 5592:44", "COMMAND 5596 0:09 5592:45", "COMMAND 5596 0:08 5468:01 5592:46",
                Event("4D697363656C6C616E656F7573")});
    EXPECT_EQ(Text(1066), std::string(119, 'x'));
    EXPECT_EQ(Text(1067), "");
    EXPECT_EQ(Text(1070), "SOCKS5");

    OpenOptions(kFileSharing);
    Click(1002);
    EXPECT_EQ(Text(kNote), "Changes are not applied yet.");
    const auto leave = [&](int command, int answer) {
        Command(command);
        const HWND question = NextMessage();
        EXPECT_TRUE(WindowText(::GetDlgItem(question, kMessage)).starts_with("This section has changes"));
        Answer(question, answer);
    };
    leave(kExitCommand, IDCANCEL);
    EXPECT_TRUE(m_interface->IsRunning());
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), kCaption, m_window), nullptr);
    EXPECT_TRUE(IsChecked(1002));
    leave(kConnectionsPage, kDiscard);
    ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
    OpenOptions(kFileSharing);
    EXPECT_FALSE(IsChecked(1002));
    ExpectSent({});

    Click(1002);
    leave(kConnectionsPage, IDOK);
    ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
    ExpectSent({"COMMAND 5596 0:08 5468:01 5592:02", "COMMAND 5596 0:08 5592:03", "COMMAND 5596 0:07",
                Event("46696C652073686172696E67")});
    OpenOptions(kFileSharing);
    EXPECT_TRUE(WaitUntil([&] { return IsChecked(1002); }));
}

}  // namespace
}  // namespace brennvar::test
