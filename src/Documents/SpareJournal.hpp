#pragma once

#include "Documents/JournalFolder.hpp"
#include "Platform/FileOperations.hpp"
#include "Platform/OpenedFile.hpp"

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>

namespace corvanta {

/// An empty journal that the worker makes before anything is typed, because making files takes many times as
/// long as writing to one. Shared by the main thread and the worker's. When the process dies before the first
/// edit, what is left behind holds nothing and is removed at the next start.
class SpareJournal {
public:
    struct Place {
        std::unique_ptr<JournalFolder> folder;
        /// File 1 of the folder, empty.
        std::shared_ptr<const OpenedFile> file;
    };

    /// `parent` is where all journals are. `operations` outlives this.
    SpareJournal(FileOperations& operations, std::filesystem::path parent);

    /// Makes it, unless it is too late or something fails.
    void make();

    /// What was made, for whoever writes to it. Nothing is made any more after that.
    std::optional<Place> take();

private:
    FileOperations& operations_;
    const std::filesystem::path parent_;
    std::mutex mutex_;
    bool isTaken_ = false;
    std::optional<Place> place_;
};

} // namespace corvanta
