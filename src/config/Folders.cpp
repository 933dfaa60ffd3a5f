#include "config/Folders.h"

namespace brennvar {

std::string SettingsFilePath(const std::string& dataFolder) {
    return dataFolder + R"(\settings.ini)";
}
std::string ConfigFilePath(const std::string& dataFolder) {
    return dataFolder + R"(\config.conf)";
}
std::string RulesFilePath(const std::string& dataFolder) {
    return dataFolder + R"(\Rules\rules.conf)";
}
std::string AdvancedRulesFilePath(const std::string& dataFolder) {
    return dataFolder + R"(\Rules\rules_advanced.conf)";
}
std::string RulesFolderPath(const std::string& dataFolder) {
    return dataFolder + R"(\Rules)";
}
std::string ImportFolderPath(const std::string& dataFolder) {
    return dataFolder + R"(\Rules.import)";
}
std::string RestoreFolderPath(const std::string& dataFolder) {
    return dataFolder + R"(\Rules.restore)";
}
std::string TrustedFilePath(const std::string& dataFolder) {
    return dataFolder + R"(\trusted.conf)";
}
std::string SitesFilePath(const std::string& dataFolder) {
    return dataFolder + R"(\domain.conf)";
}
std::string LogFolderPath(const std::string& dataFolder) {
    return dataFolder + R"(\Log)";
}
std::string AdviceFilePath(const std::string& dataFolder) {
    return dataFolder + R"(\advice.dat)";
}

std::string LanguagesFolderPath(const std::string& installationFolder) {
    return installationFolder + R"(\Languages)";
}
std::string LanguageFilePath(const std::string& installationFolder, const std::string& languageName) {
    return LanguagesFolderPath(installationFolder) + '\\' + languageName + R"(\default.ini)";
}
std::string SkinsFolderPath(const std::string& installationFolder) {
    return installationFolder + R"(\Skins)";
}
std::string SkinFolderPath(const std::string& installationFolder, const std::string& skinName) {
    return SkinsFolderPath(installationFolder) + '\\' + skinName;
}
std::string SkinFilePath(const std::string& installationFolder, const std::string& skinName) {
    return SkinFolderPath(installationFolder, skinName) + R"(\default.ini)";
}

}  // namespace brennvar
