// What the two dialogs for the security password share: fields that show no character, one below the other, and an
// OK button that first reads the password that is stored at that moment, which may have to wait for the service.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "base/Password.h"
#include "base/Refreshed.h"
#include "config/Language.h"
#include "config/Text.h"
#include "controls/Button_win.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"
#include "dialogs/MessageDialog_win.h"
#include "dialogs/SkinDialog_win.h"
#include "security/StoredPassword.h"

namespace brennvar {

// Borrowed for the life of a dialog.
struct PasswordDialogContext {
    const CFonts& fonts;
    const Language& language;
    TaskQueue& reads;
    const PasswordSource& stored;  // until the queue has ended
};

class PasswordDialog : public CSkinDialog {
public:
    // Returns when the dialog has been closed: true when with OK, after all was right. What is wrong is told and
    // may be tried again.
    [[nodiscard]] bool Ask(HWND owner);

    // What the user is told when the stored password cannot be read.
    static constexpr Text kUnreadable = Text{1400, "The settings cannot be read at the moment. Please try again."};

protected:
    // A label and the edit field below it, both of the template.
    struct Field {
        int label;
        int edit;
        Text text;
    };
    PasswordDialog(int templateId, const PasswordDialogContext& context, std::vector<Field> fields);

    // OK has been pressed and this is the stored password.
    virtual void OnStored(const Password& stored) = 0;

    [[nodiscard]] Password Entered(int edit) const;
    void Tell(const Text& message, MessageSign sign);
    // A failure, about what stands in a field, which is then ready to be typed anew.
    void Complain(const Text& message, int edit);

private:
    void OnInitDialog() final;
    void OnCreateContent() final;
    void OnDestroy() final;
    void OnCancel() final;
    void OnCommand(int id, int notification) final;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) final;
    void AdoptControls();
    [[nodiscard]] int PlaceControls(bool measuresOnly);
    void OnRead(const std::optional<Password>& stored);

    struct Row {
        CLabel label;
        CEdit edit;
    };

    const int m_templateId;
    const PasswordDialogContext m_context;
    const std::vector<Field> m_fields;
    CLabel m_heading;
    std::deque<Row> m_rows;
    CButton m_ok;
    CButton m_cancel;
    bool m_isWanted = false;  // OK has been pressed, and Cancel not since
    Refreshed<Password> m_stored;
};

}  // namespace brennvar
