#include "Corvanta/DocumentController.hpp"

#include "Corvanta/DocumentError.hpp"
#include "Documents/FileIdentity.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace corvanta {

DocumentController::DocumentController(const FileManager& fileManager, UserDefaults& defaults,
                                       OpenDocument::Services services, OutsideObserver observer)
    : fileManager_(fileManager),
      services_(std::move(services)),
      observer_(std::move(observer)),
      recentDocuments_(defaults) {}

std::vector<OpenDocument*> DocumentController::documents() const {
    std::vector<OpenDocument*> documents;
    for (const auto& document : documents_)
        documents.push_back(document.get());
    return documents;
}

OpenDocument* DocumentController::find(const std::filesystem::path& path) const {
    const auto found = std::ranges::find_if(documents_, [&](const auto& document) {
        return document->fileLocation() && areSameFile(*document->fileLocation(), path);
    });
    return found == documents_.end() ? nullptr : found->get();
}

OpenDocument& DocumentController::openUntitled() {
    return add(OpenDocument());
}

OpenDocument* DocumentController::open(const std::filesystem::path& path, std::error_code& error) {
    error.clear();
    if (OpenDocument* document = find(path))
        return document;
    std::optional<OpenDocument> document = OpenDocument::read(fileManager_, path, error);
    if (!document)
        return nullptr;
    recentDocuments_.add(path);
    return &add(std::move(*document));
}

OpenDocument& DocumentController::duplicate(const OpenDocument& original) {
    return add(original.duplicate());
}

OpenDocument& DocumentController::openUnsaved(const std::string& text) {
    OpenDocument document;
    document.document.text = text;
    return add(document.duplicate());
}

std::vector<WaitingJournal> DocumentController::waitingJournals() const {
    return WaitingJournal::allIn(services_.operations, services_.journals);
}

OpenDocument* DocumentController::restore(WaitingJournal& journal,
                                          const WaitingJournal::Recovered& recovered) {
    if (recovered.file == WaitingJournal::File::saved) {
        journal.discard();
        return nullptr;
    }
    if (!recovered.text && recovered.typed.empty())
        return nullptr;
    // Mere pieces are no text that could be saved to the file.
    OpenDocument document = recovered.text ? documentToRestore(journal.head()) : OpenDocument();
    OpenDocument& restored = *documents_.emplace_back(std::make_unique<OpenDocument>(std::move(document)));
    restored.protectInPlaceOf(journal, recovered.text.value_or(recovered.typed), services_,
                              observerOf(restored));
    return &restored;
}

/// The document of the journal's file as it is on the disk, or a new one.
OpenDocument DocumentController::documentToRestore(const std::optional<JournalHead>& head) const {
    if (head && head->file && find(*head->file) == nullptr) {
        std::error_code error;
        if (auto document = OpenDocument::read(fileManager_, *head->file, error))
            return std::move(*document);
    }
    return {};
}

std::error_code DocumentController::saveAs(OpenDocument& document, const std::filesystem::path& path) {
    const OpenDocument* other = find(path);
    if (other != nullptr && other != &document)
        return DocumentError::fileIsOpenElsewhere;
    const std::error_code error = document.saveAs(path);
    if (!error)
        recentDocuments_.add(path);
    return error;
}

std::unique_ptr<OpenDocument> DocumentController::close(OpenDocument& document) {
    document.close();
    const auto found = std::ranges::find(documents_, &document, [](const auto& each) { return each.get(); });
    std::unique_ptr<OpenDocument> closed = std::move(*found);
    documents_.erase(found);
    return closed;
}

void DocumentController::bringToDisk() {
    for (const auto& document : documents_)
        document->bringToDisk();
}

OpenDocument& DocumentController::add(OpenDocument document) {
    OpenDocument& added = *documents_.emplace_back(std::make_unique<OpenDocument>(std::move(document)));
    added.protect(services_, observerOf(added));
    return added;
}

OutsideChanges::Observer DocumentController::observerOf(OpenDocument& document) {
    return [this, &document](const OutsideChanges::Finding& finding) { observer_(document, finding); };
}

} // namespace corvanta
