#pragma once

#include "DesignSystem/Texttabelle.hpp"
#include "Platform/FileManager.hpp"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace corvanta {

/// Reads language files: one JSON object in UTF-8 whose members are all strings.
struct Sprachdatei {
    Sprachdatei() = delete;

    /// In bytes. All texts of the program together have a hundredth of it; what is larger was never meant
    /// to be a language and is not read.
    static constexpr std::uintmax_t groessteDatei = std::uintmax_t{1} << 20U;

    /// The members of the object in the file `ort`; of several members with the same name the last one. A
    /// byte-order mark is passed over. Nothing when the file is too large, cannot be read, or holds anything
    /// else than such an object.
    static std::optional<Texttabelle> lies(const FileManager& dateien, const std::filesystem::path& ort);
};

} // namespace corvanta
