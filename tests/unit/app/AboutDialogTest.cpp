#include "app/AboutDialog_win.h"

#include <gtest/gtest.h>

#include "config/ResourceIds.h"
#include "support/ModalOwner_win.h"
#include "support/ObjectCounts_win.h"
#include "ui/ChildControls_win.h"

namespace brennvar {

TEST(AboutDialogTest, TellsNameVersionAndOwnerAndLeavesNothingBehind) {
    const CFonts fonts;
    const Language language(nullptr);
    test::ModalOwner owner;
    const auto open = [&](WPARAM key) {
        owner.Post([] { ::UpdateWindow(::GetActiveWindow()); });
        owner.PostKey(key);
        AboutDialog(fonts, language).Show(owner.Window());
    };
    owner.Post([&] {
        const HWND dialog = ::GetActiveWindow();
        EXPECT_EQ(TextOfWindow(dialog), "About");
        EXPECT_EQ(TextOfWindow(::GetDlgItem(dialog, IDC_PRODUCT_NAME)), "Brennvar Personal Firewall");
        EXPECT_EQ(TextOfWindow(::GetDlgItem(dialog, IDC_PRODUCT_VERSION)), "Version 0.1.0");
        EXPECT_EQ(TextOfWindow(::GetDlgItem(dialog, IDC_PRODUCT_COPYRIGHT)), "Copyright (C) Quorlan");
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), IDOK);
    });
    open(VK_RETURN);
    test::ExpectNothingLeftBy([&] { open(VK_ESCAPE); });
}

}  // namespace brennvar
