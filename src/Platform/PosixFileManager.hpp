#pragma once

#include "Platform/FileManager.hpp"

namespace corvanta {

/// The real file system.
class PosixFileManager final : public FileManager {
public:
    std::optional<std::string> contents(const std::filesystem::path& path,
                                        std::error_code& error) const override;
    std::optional<std::uintmax_t> fileSize(const std::filesystem::path& path) const override;
    std::optional<std::vector<std::filesystem::path>>
    contentsOfFolder(const std::filesystem::path& path) const override;
    bool isListable(const std::filesystem::path& path) const override;
    std::filesystem::path resolvingSymlinks(const std::filesystem::path& path) const override;
};

} // namespace corvanta
