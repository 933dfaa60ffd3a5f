// The dialogs of the security password, with what is typed into them.
#include "OpeningPage.h"
#include "config/ResourceIds.h"
#include "config/Resources_win.h"
#include "ipc/Pipe_win.h"
#include "security/EnterPasswordDialog_win.h"
#include "security/VerifyPasswordDialog_win.h"

namespace brennvar::gallery {
namespace {

constexpr int kEdits[] = {IDC_PASSWORD_OLD, IDC_PASSWORD, IDC_PASSWORD_CONFIRM};

// What is typed, in the order of the fields; OK follows where a message is to open.
struct Typing {
    const char* texts[3];
    bool confirms;
};
Typing s_typing;  // for the timer, which has no other way to it

// A password that is there at once.
class ShownPassword final : public PasswordSource {
public:
    [[nodiscard]] std::optional<Password> Read() const override { return Password("Secret1"); }
};
class ImmediateQueue final : public TaskQueue {
public:
    void Post(Task task, Task completion) override {
        task();
        completion();
    }
};

// What the dialogs borrow.
struct Surroundings {
    explicit Surroundings(const Look& look) : fonts(look.fonts) {}
    const CFonts& fonts;
    const Language language = OpenLanguage();
    ShownPassword stored;
    ImmediateQueue reads;
    ServiceLink link{[] {}, [](const StopSignal& stop) { return std::make_unique<WinPipeConnector>(stop); }};
    Commander commander{link, language};
    [[nodiscard]] PasswordDialogContext Context() {
        return {.fonts = fonts, .language = language, .reads = reads, .stored = stored};
    }
};

// Types when the dialog that opens next over the window is there.
void TypeLater(HWND window, const Typing& typing) {
    s_typing = typing;
    ::SetTimer(window, 1, USER_TIMER_MINIMUM, [](HWND owner, UINT, UINT_PTR id, DWORD) {
        ::KillTimer(owner, id);
        const HWND dialog = ::GetLastActivePopup(owner);
        for (int i = 0; i < 3; ++i) ::SetDlgItemTextA(dialog, kEdits[i], s_typing.texts[i]);
        if (s_typing.confirms) ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    });
}

std::unique_ptr<GalleryPage> MakeVerifyPage(Typing typing) {
    return std::make_unique<OpeningPage>([typing](HWND window, const Look& look) {
        Surroundings surroundings(look);
        TypeLater(window, typing);
        (void)VerifyPasswordDialog(surroundings.Context()).Ask(window);
    });
}

std::unique_ptr<GalleryPage> MakeEnterPage(Typing typing) {
    return std::make_unique<OpeningPage>([typing](HWND window, const Look& look) {
        Surroundings surroundings(look);
        TypeLater(window, typing);
        (void)EnterPasswordDialog(surroundings.Context(), surroundings.commander).Ask(window);
    });
}

}  // namespace

std::unique_ptr<GalleryPage> MakePasswordGallery() {
    return MakeVerifyPage({{"", "Secret1", "Secr"}, false});
}
std::unique_ptr<GalleryPage> MakePasswordWrongGallery() {
    return MakeVerifyPage({{"", "secret1", "secret1"}, true});
}
std::unique_ptr<GalleryPage> MakePasswordUnconfirmedGallery() {
    return MakeVerifyPage({{"", "Secret1", "Secret2"}, true});
}
std::unique_ptr<GalleryPage> MakeSetPasswordGallery() {
    return MakeEnterPage({{"Secret1", "A new one", ""}, false});
}
std::unique_ptr<GalleryPage> MakeSetPasswordWrongGallery() {
    return MakeEnterPage({{"secret1", "A new one", "A new one"}, true});
}
std::unique_ptr<GalleryPage> MakeSetPasswordUnconfirmedGallery() {
    return MakeEnterPage({{"Secret1", "A new one", "A new"}, true});
}

}  // namespace brennvar::gallery
