#pragma once

#include "Documents/Fingerprint.hpp"
#include "Documents/JournalFolder.hpp"
#include "Documents/JournalHead.hpp"
#include "Documents/JournalSyncer.hpp"
#include "Documents/SpareJournal.hpp"
#include "Documents/WorkerQueue.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextChange.hpp"
#include "Platform/FileOperations.hpp"
#include "Platform/OpenedFile.hpp"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace corvanta {

/// Keeps what is typed into one document until it is saved, outside the document's file: a process that is
/// killed loses nothing, a power cut at most the last second. Used on the main thread; what waits for the
/// disk is done on the worker's.
class Journal {
public:
    /// At the latest this long after an edit it begins to make its way to the disk, however fast edits follow
    /// each other. The disk then has the rest of the second.
    static constexpr WorkerQueue::Duration longestUnsynced{500};

    /// The text to which the edits belong.
    struct Base {
        /// Absent for a document that was never saved.
        std::optional<std::filesystem::path> file;

        /// The file's bytes; the default for a document without a file.
        Fingerprint fileContent;

        /// What the editor showed before the first edit.
        SharedText text;
    };

    /// A journal for a document that has no edits yet: nothing is written before the first. `folder` is where
    /// all journals are, an existing folder. `operations` and `worker` outlive the journal.
    Journal(FileOperations& operations, WorkerQueue& worker, std::filesystem::path folder, Base base);

    /// Goes on in the place of a journal that was left behind and whose text is `text`.
    Journal(FileOperations& operations, WorkerQueue& worker, std::unique_ptr<JournalFolder> leftBehind,
            Base base, const SharedText& text);

    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /// Leaves the journal on the disk, as a death would. One without edits leaves nothing.
    ~Journal();

    /// Has the worker make a place for the edits, now and after each `rebase`, so that the first of them does
    /// not have to wait for it.
    void prepare();

    /// How the journal is named among the others. Absent as long as there are no edits.
    std::optional<std::string> name() const;

    /// Writes down an edit; when this returns, a death of the process no longer loses it. `change` says what
    /// it left as it was of the text before, `text` is the whole text after it. After a failure every further
    /// edit tries to catch up.
    std::error_code append(const TextChange& change, const SharedText& text);

    /// Puts `text` on the disk before the document's file is overwritten with it. When this returns without a
    /// failure, a power cut no longer loses it.
    std::error_code keepCopy(const SharedText& text);

    /// Waits until all edits are on the disk.
    std::error_code sync();

    /// The document was saved, or follows its file: forgets the edits; those to come belong to `base`.
    void rebase(Base base);

    /// Forgets the edits, because they are saved or not wanted.
    void remove();

private:
    /// The file that is being written.
    struct Part {
        std::shared_ptr<const OpenedFile> file;
        /// The checksum of the last record.
        std::uint64_t seed = 0;
        /// In bytes.
        std::size_t size = 0;
    };

    JournalHead head() const;
    std::error_code start();
    std::error_code beginAtBase();
    std::error_code begin(const std::optional<SharedText>& text);
    void makeSpare();
    void removeSpare();
    void forgetEdits();
    std::error_code writeRecord(std::string_view content);
    bool isOutgrown(std::size_t textSize) const;
    void scheduleSync();

    FileOperations& operations_;
    WorkerQueue& worker_;
    const std::filesystem::path parent_;
    Base base_;
    Fingerprint baseText_;

    /// What the first edit will begin in, if somebody asked for it.
    std::shared_ptr<SpareJournal> spare_;
    bool isPrepared_ = false;
    /// The file that came with the folder, as long as nothing was written to it.
    std::shared_ptr<const OpenedFile> emptyFile_;

    /// Present from the first edit on.
    std::unique_ptr<JournalFolder> folder_;
    std::shared_ptr<JournalSyncer> syncer_;
    Part part_;
    int lastNumber_ = 0;

    /// In bytes, after the last edit.
    std::size_t textSize_ = 0;

    /// Whether an edit could not be written, so that only a whole text can follow.
    bool isBehind_ = false;
};

} // namespace corvanta
