#include "config/Resources_win.h"

#include <memory>

#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/IniSnapshot_win.h"
#include "config/Ini_win.h"
#include "config/Settings.h"

namespace brennvar {

std::string CurrentLanguageName() {
    return ReadLanguageName(CIni(SettingsFilePath(GetDataFolder())));
}

ResourceChoice CurrentResourceChoice() {
    const CIni settings(SettingsFilePath(GetDataFolder()));
    return {.skin = ReadSkinName(settings), .language = ReadLanguageName(settings)};
}

Language OpenLanguage() {
    return Language(
        std::make_unique<CIniSnapshot>(LanguageFilePath(GetInstallationFolder(), CurrentLanguageName())));
}

Skin OpenSkin() {
    const std::string name = ReadSkinName(CIni(SettingsFilePath(GetDataFolder())));
    const std::string installation = GetInstallationFolder();
    return Skin(std::make_unique<CIniSnapshot>(SkinFilePath(installation, name)),
                SkinFolderPath(installation, name));
}

}  // namespace brennvar
