#include "Corvanta/gtk/LanguageSurroundings.hpp"

#include "Platform/ResourceFolder.hpp"

#include <glibmm/miscutils.h>

#include <string>
#include <vector>

namespace corvanta {

namespace {

std::vector<std::string> preferredLanguages() {
    std::vector<std::string> names;
    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name)
        names.emplace_back(*name);
    return names;
}

} // namespace

std::filesystem::path LanguageSurroundings::settingsFile() {
    return std::filesystem::path(Glib::get_user_config_dir()) / "Corvanta" / "Einstellungen.json";
}

Sprache::Umgebung LanguageSurroundings::make(UserDefaults& userDefaults, const FileManager& fileManager) {
    return {userDefaults, fileManager, preferredLanguages, resourceFolder(runningExecutable()),
            Glib::get_user_data_dir()};
}

} // namespace corvanta
