#include "app/InstalledResources_win.h"

#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/ResourceFolders_win.h"
#include "config/Resources_win.h"

namespace brennvar {

std::vector<std::string> InstalledResources::Skins() const {
    return ListResourceFolders(SkinsFolderPath(GetInstallationFolder()));
}

std::vector<std::string> InstalledResources::Languages() const {
    return ListResourceFolders(LanguagesFolderPath(GetInstallationFolder()));
}

ResourceChoice InstalledResources::Current() const {
    return CurrentResourceChoice();
}

}  // namespace brennvar
