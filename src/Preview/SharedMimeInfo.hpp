#pragma once

#include "Platform/FileManager.hpp"
#include "Preview/TypeRegistry.hpp"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// The desktop's shared MIME information, read from its "globs2" files at the first question. Asked on one
/// thread only.
class SharedMimeInfo final : public TypeRegistry {
public:
    /// `dataFolders` are absolute, the most important one first. `fileManager` must outlive this object.
    SharedMimeInfo(const FileManager& fileManager, std::vector<std::filesystem::path> dataFolders);

    std::optional<std::string> mimeType(std::string_view extension) const override;

    /// The folders that the environment names for shared data (XDG_DATA_HOME, XDG_DATA_DIRS), the user's own
    /// first.
    static std::vector<std::filesystem::path> environmentDataFolders();

private:
    struct Entry {
        int weight = 0;
        std::string type;
    };
    using Entries = std::map<std::string, Entry, std::less<>>;

    Entries load() const;

    const FileManager& fileManager_;
    std::vector<std::filesystem::path> dataFolders_;
    mutable std::optional<Entries> entries_;
};

} // namespace corvanta
