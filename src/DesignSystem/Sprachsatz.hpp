#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace corvanta {

/// An interface language that can be chosen.
struct Sprachsatz {
    /// The language's code, the lower-cased name of its file without extension ("en"). No two languages that
    /// can be chosen have the same.
    std::string kennung;

    /// What the language picker shows.
    std::string name;

    /// Whether the file lies in the user's own folder; else it came with the program.
    bool eigen = false;

    /// The language file.
    std::filesystem::path ort;

    friend bool operator==(const Sprachsatz&, const Sprachsatz&) = default;
};

} // namespace corvanta

template <>
struct std::hash<corvanta::Sprachsatz> {
    std::size_t operator()(const corvanta::Sprachsatz& satz) const noexcept {
        return std::hash<std::string>()(satz.kennung);
    }
};
