#pragma once

#include "Corvanta/HTMLDocument.hpp"
#include "Documents/Fingerprint.hpp"
#include "Documents/Journal.hpp"
#include "Documents/OutsideChanges.hpp"
#include "Documents/WaitingJournal.hpp"
#include "Documents/WorkerQueue.hpp"
#include "EditorCore/SharedText.hpp"
#include "Platform/FileManager.hpp"
#include "Platform/FileOperations.hpp"
#include "Platform/MainQueue.hpp"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

namespace corvanta {

/// A document that is being edited, and the file it belongs to.
class OpenDocument {
public:
    /// What it takes to lose nothing. Outlives the document.
    struct Services {
        FileOperations& operations;
        MainQueue& mainQueue;
        WorkerQueue& worker;
        /// Where the journals are, an existing folder.
        std::filesystem::path journals;
    };

    /// What a change of the file by somebody else asks for.
    enum class Reaction {
        none,
        /// The text is to become that of the file: nothing of the user's is lost.
        follow,
        /// Both the file and the text were changed: the user decides.
        ask,
        /// The file is gone or something else took its place: the user is told, and the text is unsaved now.
        tell,
    };

    /// A new document with the template's text.
    OpenDocument();

    /// The document in the file at `path`, whatever its encoding. When it is not a regular file or cannot be
    /// read, nothing, and `error` is `DocumentError::fileReadCorruptFile`.
    static std::optional<OpenDocument> read(const FileManager& fileManager, const std::filesystem::path& path,
                                            std::error_code& error);

    /// A new document with this document's text, which is saved nowhere.
    OpenDocument duplicate() const;

    /// The content. Whoever changes its text calls `textDidChange`.
    HTMLDocument document;

    /// Absent for a document that was never saved.
    const std::optional<std::filesystem::path>& fileLocation() const { return fileLocation_; }

    /// Whether the text differs from the saved one. Going back to the saved text makes a document unedited
    /// again. Quick, because texts of different lengths differ.
    bool isEdited() const { return !savedText_ || document.text != *savedText_; }

    /// Whether this is a new document as it came from the template.
    bool isUntouched() const { return !fileLocation_ && !isEdited(); }

    /// The file's name, or a name for a new document. German.
    std::string displayName() const;

    /// From now on keeps every edit in a journal, and tells `observer` when somebody else changed the file.
    /// The observer does not end the document.
    void protect(const Services& services, OutsideChanges::Observer observer);

    /// As `protect`, for a document whose unsaved text was left behind in a journal: it becomes this text,
    /// and nothing of the journal is lost in between.
    void protectInPlaceOf(WaitingJournal& journal, const std::string& text, const Services& services,
                          OutsideChanges::Observer observer);

    /// Keeps what was changed in the text. A failure means that a death of the process would lose something:
    /// the user should know, once.
    std::error_code textDidChange();

    /// The name of the journal that holds what is not saved; absent when there is nothing.
    std::optional<std::string> journalName() const;

    /// Waits until what was typed is on the disk, because the program is about to be ended.
    std::error_code bringToDisk();

    /// Writes the text to its file. A document that was not edited is not written, and one whose file
    /// somebody else changed is refused with `DocumentError::fileChangedOutside`. Must have a file.
    std::error_code save();

    /// As `save`, after the user chose to overwrite what somebody else wrote.
    std::error_code saveOverOutsideChange();

    /// Writes the text to the file at `path`, which is the document's from then on.
    std::error_code saveAs(const std::filesystem::path& path);

    /// Reads the file again: drops what was not saved. Must have a file.
    std::error_code revert(const FileManager& fileManager);

    /// There is a reason to look whether the file was changed.
    void lookForOutsideChanges();

    /// What a change asks for that was found. After `none` and `tell` nothing remains to be done here.
    Reaction reactionTo(const OutsideChanges::Finding& finding);

    /// Takes over the file's new text. The caller puts it into the editor as one step that can be undone.
    void follow(const OutsideChanges::Finding& finding);

    /// The user keeps the own text; saving it will overwrite what was found.
    void keepOwnText(const OutsideChanges::Finding& finding);

    /// Forgets what was not saved: the document is closed and nothing of it is to come back.
    void close();

private:
    std::error_code write(const std::filesystem::path& path);
    void watch();
    void textIsSaved(const Fingerprint& fileContent);
    Journal::Base journalBase() const;

    std::optional<std::filesystem::path> fileLocation_;

    /// Absent when the text is in no file any more.
    std::optional<SharedText> savedText_;

    /// The file's bytes when it was last read or written.
    Fingerprint fileContent_;

    /// The text that the journal holds.
    SharedText journaledText_;

    std::optional<Services> services_;
    OutsideChanges::Observer observer_;
    std::unique_ptr<Journal> journal_;
    std::unique_ptr<OutsideChanges> outsideChanges_;
};

} // namespace corvanta
