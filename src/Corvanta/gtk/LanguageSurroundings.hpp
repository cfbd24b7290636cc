#pragma once

#include "DesignSystem/Sprache.hpp"
#include "Platform/FileManager.hpp"
#include "Platform/UserDefaults.hpp"

#include <filesystem>

namespace corvanta {

/// Where the language of the interface comes from on this system.
struct LanguageSurroundings {
    LanguageSurroundings() = delete;

    /// The file of the user's settings.
    static std::filesystem::path settingsFile();

    /// `userDefaults` are those in the settings file.
    static Sprache::Umgebung make(UserDefaults& userDefaults, const FileManager& fileManager);
};

} // namespace corvanta
