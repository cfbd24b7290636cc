#pragma once

#include "Corvanta/OpenDocument.hpp"
#include "Documents/JournalHead.hpp"
#include "Documents/RecentDocuments.hpp"
#include "Documents/WaitingJournal.hpp"
#include "Platform/FileManager.hpp"
#include "Platform/UserDefaults.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

namespace corvanta {

/// The documents that are open, each file in one of them only.
class DocumentController {
public:
    /// Called when somebody else changed the file of a document.
    using OutsideObserver = std::function<void(OpenDocument&, const OutsideChanges::Finding&)>;

    /// The arguments outlive the controller.
    DocumentController(const FileManager& fileManager, UserDefaults& defaults,
                       OpenDocument::Services services, OutsideObserver observer);
    DocumentController(const DocumentController&) = delete;
    DocumentController& operator=(const DocumentController&) = delete;

    /// In the order of opening. They stay where they are until they are closed.
    std::vector<OpenDocument*> documents() const;

    RecentDocuments& recentDocuments() { return recentDocuments_; }

    /// The document of this file, whatever path, link or second name of it is given; null when it is not
    /// open.
    OpenDocument* find(const std::filesystem::path& path) const;

    OpenDocument& openUntitled();

    /// The document of the file, open already or read now. Null when it cannot be read.
    OpenDocument* open(const std::filesystem::path& path, std::error_code& error);

    /// A new document with the text of another one.
    OpenDocument& duplicate(const OpenDocument& original);

    /// A new document with a text that is in no file.
    OpenDocument& openUnsaved(const std::string& text);

    /// The documents that a dead process left unsaved. Take time only when they are read.
    std::vector<WaitingJournal> waitingJournals() const;

    /// Opens the document of a journal with the text that came back, unsaved; `recovered` is what `journal`
    /// gave when it was read. The file stays as it is. When it is gone or another document has it, the text
    /// becomes a new document. Null when nothing came back: the journal is removed if the file has its text,
    /// and stays if it could not be read.
    OpenDocument* restore(WaitingJournal& journal, const WaitingJournal::Recovered& recovered);

    /// As `OpenDocument::saveAs`; refused with `DocumentError::fileIsOpenElsewhere` when another document has
    /// that file.
    std::error_code saveAs(OpenDocument& document, const std::filesystem::path& path);

    /// Reads the document's file again; drops what was not saved.
    std::error_code revert(OpenDocument& document) { return document.revert(fileManager_); }

    /// Closes a document; nothing of it comes back. It lives as long as the caller still refers to it.
    std::unique_ptr<OpenDocument> close(OpenDocument& document);

    /// Brings what was typed everywhere to the disk, because the program is about to be ended without
    /// questions.
    void bringToDisk();

private:
    OpenDocument& add(OpenDocument document);
    OpenDocument documentToRestore(const std::optional<JournalHead>& head) const;
    OutsideChanges::Observer observerOf(OpenDocument& document);

    const FileManager& fileManager_;
    OpenDocument::Services services_;
    OutsideObserver observer_;
    RecentDocuments recentDocuments_;
    std::vector<std::unique_ptr<OpenDocument>> documents_;
};

} // namespace corvanta
