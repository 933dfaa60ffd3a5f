// Keeps what is to be sent by mail.
#pragma once

#include <vector>

#include "dialogs/MailWish.h"

namespace brennvar::test {

class FakeMailForms final : public MailForms {
public:
    std::vector<MailWish> wishes;

    void OpenMailForm(const MailWish& wish) override { wishes.push_back(wish); }
};

}  // namespace brennvar::test
