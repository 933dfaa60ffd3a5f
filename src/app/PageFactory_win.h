// Makes the pages of the control center and gives each what it needs from the rest of the program.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "app/PageList.h"
#include "base/Clock.h"
#include "base/TaskThread.h"
#include "commands/Commander.h"
#include "config/Language.h"
#include "config/OptionSource.h"
#include "config/SkinsAndLanguages.h"
#include "config/UserValues.h"
#include "dialogs/Page_win.h"
#include "ipc/ServiceLink.h"
#include "statistics/Statistics.h"
#include "ui/Fonts_win.h"
#include "views/ApplicationChanges.h"
#include "views/ConnectionsReader.h"
#include "views/ListPage_win.h"

namespace brennvar {

class PageFactory {
public:
    // Borrowed for the life of the window.
    struct Parts {
        const CFonts& fonts;
        const Language& language;
        UserValues& userValues;
        ServiceLink& link;
        Commander& commander;
        TaskThread& reads;
        Clock& readsClock;
        ConnectionsReader& connections;
        Statistics& statistics;
        ApplicationChanges& applicationChanges;
        const OptionSource& options;
        SkinsAndLanguages& resources;
    };
    explicit PageFactory(const Parts& parts) : m_parts(parts) {}

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
