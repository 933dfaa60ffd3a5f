// Where the files lie below the installation folder and the data folder (Folders_win.h finds these two). Paths are
// single-byte text in the system's code page, built by plain concatenation; folders have no trailing backslash.
#pragma once

#include <string>

namespace brennvar {

// Below the data folder.
[[nodiscard]] std::string SettingsFilePath(const std::string& dataFolder);
[[nodiscard]] std::string ConfigFilePath(const std::string& dataFolder);
[[nodiscard]] std::string RulesFilePath(const std::string& dataFolder);
[[nodiscard]] std::string AdvancedRulesFilePath(const std::string& dataFolder);
[[nodiscard]] std::string RulesFolderPath(const std::string& dataFolder);
[[nodiscard]] std::string ImportFolderPath(const std::string& dataFolder);   // while rules are imported
[[nodiscard]] std::string RestoreFolderPath(const std::string& dataFolder);  // what imports have replaced
[[nodiscard]] std::string TrustedFilePath(const std::string& dataFolder);
[[nodiscard]] std::string SitesFilePath(const std::string& dataFolder);
[[nodiscard]] std::string LogFolderPath(const std::string& dataFolder);
[[nodiscard]] std::string AdviceFilePath(const std::string& dataFolder);

// Below the installation folder; the names are those in settings.ini.
[[nodiscard]] std::string LanguagesFolderPath(const std::string& installationFolder);
[[nodiscard]] std::string LanguageFilePath(const std::string& installationFolder, const std::string& languageName);
[[nodiscard]] std::string SkinsFolderPath(const std::string& installationFolder);
[[nodiscard]] std::string SkinFolderPath(const std::string& installationFolder, const std::string& skinName);
[[nodiscard]] std::string SkinFilePath(const std::string& installationFolder, const std::string& skinName);

}  // namespace brennvar
