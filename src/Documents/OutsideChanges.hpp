#pragma once

#include "Documents/Fingerprint.hpp"
#include "Platform/FileOperations.hpp"
#include "Platform/MainQueue.hpp"

#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace corvanta {

/// Finds out whether somebody else changed a document's file. Only its content counts: a file that was
/// touched, replaced by one with the same bytes, or saved by the document itself has not changed. Programs
/// save in several steps, so that a change is believed when the file has been at rest for a while.
class OutsideChanges {
public:
    /// How long a file must be at rest.
    static constexpr MainQueue::Duration rest{400};
    /// How long when it is gone or empty: it is probably being written anew.
    static constexpr MainQueue::Duration restWithoutContent{2'000};

    enum class Kind {
        changed,
        /// There is nothing at the file's path.
        vanished,
        /// There is a folder or something else that is no regular file.
        notAFile,
    };

    struct Finding {
        Kind kind = Kind::changed;
        /// What the file holds now, when it is one.
        std::string bytes;
    };

    using Observer = std::function<void(const Finding&)>;

    /// Watches for changes of `file`, which held `known` when it was last read or written. `observer` is
    /// called once for each change, from a later turn of the main loop. `operations` and `mainQueue` outlive
    /// this.
    OutsideChanges(FileOperations& operations, MainQueue& mainQueue, std::filesystem::path file,
                   const Fingerprint& known, Observer observer);

    /// There is a reason to look: the file monitor saw something, or the window became active.
    void lookSoon();

    /// Looks at once, because the document is about to be saved. What it finds need not be at rest.
    std::optional<Finding> lookNow();

    /// The document has this content of the file now, or knows of it: it was saved, or followed the file, or
    /// the user chose to keep the own text.
    void setKnown(const Fingerprint& known);

private:
    /// What one look at the file shows.
    struct Seen {
        std::optional<Kind> kind;
        Fingerprint content;
        std::string bytes;

        bool isSame(const Seen& other) const { return kind == other.kind && content == other.content; }
        bool isWithoutContent() const { return kind == Kind::vanished || (kind && content.size == 0); }
    };

    Seen look();
    void lookAgainAfter(MainQueue::Duration pause);
    void lookAtRest();

    FileOperations& operations_;
    MainQueue& mainQueue_;
    const std::filesystem::path file_;
    Fingerprint known_;
    const Observer observer_;

    /// The status with which the file was seen to hold what is known.
    std::optional<struct stat> knownStatus_;
    /// What may become a finding when it is still so after a rest.
    std::optional<Seen> suspicion_;
    /// What the observer knows already.
    std::optional<Seen> reported_;
    std::unique_ptr<MainQueue::Handle> pending_;
};

} // namespace corvanta
