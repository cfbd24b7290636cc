#pragma once

#include "Documents/JournalFolder.hpp"
#include "Documents/JournalHead.hpp"
#include "Platform/FileOperations.hpp"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// A journal whose process is dead, with what was typed and never saved. Nobody else can take it while this
/// lives. As long as it is not discarded and its text in no new journal, it waits again after the next start.
class WaitingJournal {
public:
    /// What has become of the document's file since the journal began.
    enum class File {
        /// The document was never saved.
        none,
        unchanged,
        /// It holds another text now. Both are somebody's work.
        changed,
        /// It cannot be read, or something else lies there.
        missing,
        /// It holds the text of the journal: there is nothing to bring back.
        saved,
    };

    struct Recovered {
        /// The text as it was at the last edit that could be read, valid as far as the edits were. Absent
        /// when nothing could be read or the text that the edits belong to is lost.
        std::optional<std::string> text;

        /// When `text` is absent: what was typed, one piece a line.
        std::string typed;

        /// Whether nothing of the journal was damaged or missing.
        bool isWhole = false;

        /// Whether the file was being overwritten in place: it may be torn, and `text` is what it was to
        /// hold.
        bool wasOverwriting = false;

        File file = File::none;
    };

    /// All journals in `folder` that wait, the longest waiting first. Folders without anything of use are
    /// removed. Reads only the beginning of each journal.
    static std::vector<WaitingJournal> allIn(FileOperations& operations, const std::filesystem::path& folder);

    /// As `Journal::name`.
    std::string name() const { return folder_->path().filename().string(); }

    /// To which document the journal belongs. Absent when that cannot be read.
    const std::optional<JournalHead>& head() const { return head_; }

    /// Reads the journal. Changes nothing.
    Recovered read() const;

    /// Removes the journal.
    void discard() { folder_->remove(); }

    /// Gives the journal away, so that a new one can go on in its place.
    std::unique_ptr<JournalFolder> takeFolder() { return std::move(folder_); }

private:
    WaitingJournal(FileOperations& operations, std::unique_ptr<JournalFolder> folder,
                   std::vector<int> numbers);

    std::optional<std::string> contents(const std::filesystem::path& path) const;
    std::optional<std::string> baseText(const std::optional<std::string>& file) const;
    Recovered readNewest(const std::optional<std::string>& baseText) const;
    File stateOfFile(const Recovered& recovered, const std::optional<std::string>& file) const;

    FileOperations* operations_;
    std::unique_ptr<JournalFolder> folder_;
    std::vector<int> numbers_;
    std::optional<JournalHead> head_;
};

} // namespace corvanta
