// The sections of the Options page against the service stand-in: what is sent, and what the page shows afterwards.
#include <gtest/gtest.h>

#include "Product.h"

namespace brennvar::test {
namespace {

enum Section { kMiscellaneous = 3, kFileSharing = 5 };

constexpr int kNote = 1102;

// Journal lines. Offsets and bytes are those of the record on the wire.
std::string Value(int id, const std::string& value) {
    char idHex[8];
    std::snprintf(idHex, sizeof idHex, "%02X", id);
    return "COMMAND 5596 0:08" + (value.empty() ? "" : " 5468:" + value) + " 5592:" + idHex;
}
std::string TextOption(int id, const std::string& hex) {
    char idHex[8];
    std::snprintf(idHex, sizeof idHex, "%02X", id);
    return "COMMAND 5596 0:09" + (hex.empty() ? "" : " 5472:" + hex) + " 5592:" + idHex;
}
// "Options changed", and the section's name.
std::string Event(const std::string& subjectHex) {
    return "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:" + subjectHex;
}

class OptionsTest : public ProductFixture {
protected:
    void StartAt(int section) {
        Start({});
        OpenOptions(section);
        Require(WaitUntil([&] { return IsEnabled(kApply); }));
    }
    void Type(int id, const std::string& text) const { SetText(Control(id), text); }
    [[nodiscard]] bool IsChecked(int id) const { return Ask(Control(id), BM_GETCHECK) == BST_CHECKED; }
    void Click(int id) const { Ask(Control(id), BM_CLICK); }
    [[nodiscard]] bool WaitForNote(const std::string& note) const { return WaitForText(kNote, note); }
};

TEST_F(OptionsTest, SendsASectionAndShowsWhatIsStored) {
    StartAt(kMiscellaneous);
    EXPECT_EQ(Text(1067), "");
    Type(1066, std::string(119, 'x') + "yz");
    Ask(Control(1070), CB_SETCURSEL, 1);
    Click(kApply);
    EXPECT_TRUE(WaitForNote("Stored."));
    std::string longest;
    for (int i = 0; i < 119; ++i) longest += "78";
    ExpectSent({Value(64, "01"), Value(65, "01"), TextOption(66, longest), Value(67, ""), TextOption(68, ""),
                TextOption(69, ""), Value(70, "01"), Event("4D697363656C6C616E656F7573")});
    EXPECT_EQ(Text(1066), std::string(119, 'x'));
    EXPECT_EQ(Text(1067), "");
    EXPECT_EQ(Text(1070), "SOCKS5");
}

TEST_F(OptionsTest, LeavingWithChangesAsksWhatToDoWithThem) {
    StartAt(kFileSharing);
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
    EXPECT_TRUE(Sent().empty());

    Click(1002);
    leave(kConnectionsPage, IDOK);
    ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
    ExpectSent({Value(2, "01"), Value(3, ""), "COMMAND 5596 0:07", Event("46696C652073686172696E67")});
    OpenOptions(kFileSharing);
    EXPECT_TRUE(WaitUntil([&] { return IsChecked(1002); }));
}

}  // namespace
}  // namespace brennvar::test
