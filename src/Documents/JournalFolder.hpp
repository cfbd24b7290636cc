#pragma once

#include "Platform/FileOperations.hpp"
#include "Platform/OpenedFile.hpp"

#include <fcntl.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

namespace corvanta {

/// The folder of one document's journal, locked as long as this lives, so that no other process takes a
/// living one's journal for one that was left behind. The system lets go of the lock when the process dies.
///
/// The journal's files are numbered. File 0 holds the base text; of the others each begins with the whole
/// text or belongs to the base text, and the one with the highest number counts.
class JournalFolder {
public:
    /// How its files are opened.
    static constexpr int creating = O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC | O_NOFOLLOW;

    /// Makes a new folder with a name of its own in `parent`.
    static std::unique_ptr<JournalFolder> make(FileOperations& operations,
                                               const std::filesystem::path& parent, std::error_code& error);

    /// Takes an existing folder. Nothing when a living process has it or it is none of a journal.
    static std::unique_ptr<JournalFolder> take(FileOperations& operations, const std::filesystem::path& path);

    const std::filesystem::path& path() const { return path_; }

    std::filesystem::path file(int number) const { return path_ / std::to_string(number); }

    /// The numbers of the files that are there, in ascending order; nothing when that cannot be found out.
    std::optional<std::vector<int>> numbers() const;

    /// Removes the folder with the whole journal. The file that counts goes after the older ones and before
    /// the base text, so that a death in between leaves the same text or none.
    void remove();

private:
    JournalFolder(FileOperations& operations, std::filesystem::path path, OpenedFile lock);

    static std::unique_ptr<JournalFolder> lock(FileOperations& operations, const std::filesystem::path& path,
                                               int flags);

    FileOperations& operations_;
    std::filesystem::path path_;
    OpenedFile lock_;
};

} // namespace corvanta
