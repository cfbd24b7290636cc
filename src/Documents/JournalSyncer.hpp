#pragma once

#include "Platform/FileOperations.hpp"
#include "Platform/OpenedFile.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <system_error>

namespace corvanta {

/// Brings what was written to a journal to the disk. Shared by the main thread, which writes, and the
/// worker's, which waits for the disk.
class JournalSyncer {
public:
    /// `folder` is the journal's, new in its parent. `operations` outlives the syncer.
    JournalSyncer(FileOperations& operations, std::filesystem::path folder);

    /// From now on `file` is the journal; it has this number and holds something. Those with lower numbers,
    /// except 0, are removed when the disk has this one.
    void begin(std::shared_ptr<const OpenedFile> file, int number);

    /// Says that something was written. Returns whether somebody has to see to it that `sync` is called.
    bool noteWriting();

    /// Waits until the disk has everything written so far.
    std::error_code sync();

    /// Leaves it to the syncer to copy the base text.
    void setBaseCopying(std::function<void()> copying);

    /// Copies the base text, unless that has been done.
    void copyBase();

    /// Waits for what is being done; nothing is done any more after that.
    void close();

    /// Why the disk did not take what was written, if it did not since this was last asked.
    std::error_code takeError();

private:
    struct Task {
        std::shared_ptr<const OpenedFile> file;
        int number = 0;
        bool hasNewName = false;
    };

    std::error_code carryOut(const Task& task);
    void copyBaseOnce();

    FileOperations& operations_;
    const std::filesystem::path folder_;

    /// Held while the disk is waited for.
    std::mutex syncing_;
    bool isClosed_ = false;
    std::function<void()> baseCopying_;
    int oldestNumber_ = 1;

    /// Held for moments.
    std::mutex mutex_;
    Task task_;
    bool isUnsynced_ = false;
    bool isAskedFor_ = false;
    std::error_code error_;
};

} // namespace corvanta
