// Makes the pages of the control center and gives each what it needs from the rest of the program.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "app/PageList.h"
#include "base/Clock.h"
#include "base/TaskThread.h"
#include "config/Language.h"
#include "config/ResourceChoice.h"
#include "config/UserValues.h"
#include "dialogs/Page_win.h"
#include "ipc/Device.h"
#include "ipc/ServiceLink.h"
#include "lists/ListPage_win.h"
#include "security/SecurityPasswordGate_win.h"
#include "statistics/Statistics.h"
#include "ui/Fonts_win.h"
#include "views/ApplicationChanges.h"

namespace brennvar {

class PageFactory {
public:
    // Borrowed for the life of the window.
    struct Parts {
        const CFonts& fonts;
        const Language& language;
        UserValues& userValues;
        ServiceLink& link;
        SecurityPasswordGate& gate;
        TaskThread& reads;
        Clock& readsClock;
        DeviceOpener& devices;
        Statistics& statistics;
        ApplicationChanges& applicationChanges;
        // The user's choice of skin and language. False: not now.
        std::function<bool(const ResourceChoice& current, const ResourceChoice& chosen)> applyResources;
    };
    explicit PageFactory(Parts parts) : m_parts(std::move(parts)) {}

    [[nodiscard]] std::unique_ptr<CPage> Make(const PageInfo& info) const;

private:
    [[nodiscard]] ListPageContext Lists() const;
    [[nodiscard]] std::unique_ptr<CPage> MakeStatistics(PageTexts texts) const;
    [[nodiscard]] std::unique_ptr<CPage> MakeConnections(PageTexts texts) const;
    [[nodiscard]] std::unique_ptr<CPage> MakeApplications(PageTexts texts) const;
    [[nodiscard]] std::unique_ptr<CPage> MakeOptions(PageTexts texts) const;

    const Parts m_parts;
};

}  // namespace brennvar
