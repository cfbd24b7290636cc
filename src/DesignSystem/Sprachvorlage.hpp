#pragma once

#include "Platform/FileManager.hpp"

#include <filesystem>
#include <map>
#include <string>

namespace corvanta {

/// Writes the files that somebody who adds a language starts from.
struct Sprachvorlage {
    Sprachvorlage() = delete;

    /// Makes `ort` a JSON object of `eintraege`, readable, sorted by their names, slashes as they are. At
    /// every moment the file is whole, the old one or the new one. A file that says this already is left
    /// alone, which saves every start the wait for the disk. A failure has no consequence and is not told.
    static void schreibe(const FileManager& dateien, const std::filesystem::path& ort,
                         const std::map<std::string, std::string>& eintraege);
};

} // namespace corvanta
