#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/Controls.h"
#include "ui/ResourceIds.h"
#include "views/OptionsPage_win.h"

namespace brennvar {
namespace {

class OptionsPageTest : public testing::Test {
protected:
    CFonts fonts;
    Language language{nullptr};
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    std::vector<std::string> skins = {"Graphite", "Default"};
    std::vector<std::string> languages = {"slovak", "Slovak", "English"};
    ResourceChoice current = {"Default", "Slovak"};
    bool takes = true;
    std::vector<std::string> applied;
    OptionsPage page{
        fonts,
        language,
        {.title = "title", .line = "line", .empty = {}},
        {.skins = [this] { return skins; },
         .languages = [this] { return languages; },
         .current = [this] { return current; },
         .apply =
             [this](const ResourceChoice& from, const ResourceChoice& to) {
                 applied.push_back(from.skin + "/" + from.language + " to " + to.skin + "/" + to.language);
                 return takes;
             }}};

    void SetUp() override {
        ASSERT_TRUE(page.Create(parent));
        page.Place({0, 0, 800, 500});
        page.Show();
    }
    ~OptionsPageTest() override { ::DestroyWindow(parent); }
    LRESULT Ask(int id, UINT message, WPARAM parameter = 0) const {
        return ::SendMessageA(page.Item(id), message, parameter, 0);
    }
    void Apply() const { Ask(IDC_OPTIONS_APPLY_RESOURCES, BM_CLICK); }
};

TEST_F(OptionsPageTest, ComparesWithWhatWasSentLast) {
    Ask(IDC_OPTIONS_LANGUAGE, CB_SETCURSEL, 2);
    takes = false;
    Apply();
    takes = true;
    Apply();
    Ask(IDC_OPTIONS_SKIN, CB_SETCURSEL, 0);
    Apply();
    Apply();
    EXPECT_EQ(applied, (std::vector<std::string>{
                           "Default/Slovak to Default/English", "Default/Slovak to Default/English",
                           "Default/English to Graphite/English", "Graphite/English to Graphite/English"}));
}

TEST_F(OptionsPageTest, NothingSelectedChangesNothing) {
    languages.clear();
    current.skin = "Gone";
    page.Reload();
    EXPECT_EQ(Ask(IDC_OPTIONS_LANGUAGE, CB_GETCOUNT), 0);
    EXPECT_EQ(Ask(IDC_OPTIONS_SKIN, CB_GETCURSEL), CB_ERR);
    Apply();
    EXPECT_EQ(applied, std::vector<std::string>{"Gone/Slovak to Gone/Slovak"});
}

}  // namespace
}  // namespace brennvar
