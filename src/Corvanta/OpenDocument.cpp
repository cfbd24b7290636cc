#include "Corvanta/OpenDocument.hpp"

#include "Corvanta/DocumentError.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "Platform/SafeFileWriter.hpp"

#include <utility>

namespace corvanta {

namespace {

std::optional<std::string> contents(const FileManager& fileManager, const std::filesystem::path& path,
                                    std::error_code& error) {
    std::optional<std::string> bytes = fileManager.contents(path, error);
    // The reason does not matter to whoever opens a document, only that there is none.
    if (!bytes)
        error = DocumentError::fileReadCorruptFile;
    return bytes;
}

} // namespace

OpenDocument::OpenDocument() : document{DocumentTemplate::newHTML}, savedText_(document.text) {}

std::optional<OpenDocument> OpenDocument::read(const FileManager& fileManager,
                                               const std::filesystem::path& path, std::error_code& error) {
    std::optional<std::string> bytes = contents(fileManager, path, error);
    if (!bytes)
        return std::nullopt;
    const Fingerprint fingerprint = Fingerprint::of(*bytes);
    OpenDocument opened;
    opened.document = HTMLDocument::fromFileContents(*std::move(bytes));
    opened.fileLocation_ = path;
    opened.textIsSaved(fingerprint);
    return opened;
}

OpenDocument OpenDocument::duplicate() const {
    OpenDocument copy;
    copy.document = document;
    copy.savedText_.reset();
    return copy;
}

std::string OpenDocument::displayName() const {
    return fileLocation_ ? fileLocation_->filename().string() : "Ohne Titel";
}

void OpenDocument::protect(const Services& services, OutsideChanges::Observer observer) {
    services_.emplace(services);
    observer_ = std::move(observer);
    journal_ =
        std::make_unique<Journal>(services.operations, services.worker, services.journals, journalBase());
    journal_->prepare();
    watch();
    journaledText_ = document.text;
    // A duplicate is in no file from the start.
    if (isEdited())
        journal_->append({}, document.text);
}

void OpenDocument::protectInPlaceOf(WaitingJournal& journal, const std::string& text,
                                    const Services& services, OutsideChanges::Observer observer) {
    services_.emplace(services);
    observer_ = std::move(observer);
    document.text = text;
    journal_ = std::make_unique<Journal>(services.operations, services.worker, journal.takeFolder(),
                                         journalBase(), document.text);
    journal_->prepare();
    journaledText_ = document.text;
    watch();
}

std::error_code OpenDocument::textDidChange() {
    if (!journal_)
        return {};
    const TextChange change = SharedText::change(journaledText_, document.text);
    journaledText_ = document.text;
    return journal_->append(change, document.text);
}

std::optional<std::string> OpenDocument::journalName() const {
    return journal_ ? journal_->name() : std::nullopt;
}

std::error_code OpenDocument::bringToDisk() {
    return journal_ ? journal_->sync() : std::error_code();
}

std::error_code OpenDocument::save() {
    if (!isEdited())
        return {};
    const auto finding = outsideChanges_ ? outsideChanges_->lookNow() : std::nullopt;
    const bool isChanged = finding && finding->kind == OutsideChanges::Kind::changed;
    if (isChanged && reactionTo(*finding) == Reaction::none)
        return {};
    return isChanged ? make_error_code(DocumentError::fileChangedOutside) : saveOverOutsideChange();
}

std::error_code OpenDocument::saveOverOutsideChange() {
    return saveAs(*fileLocation_);
}

std::error_code OpenDocument::saveAs(const std::filesystem::path& path) {
    if (const std::error_code error = write(path))
        return error;
    const bool isElsewhere = fileLocation_ != path;
    fileLocation_ = path;
    textIsSaved(Fingerprint::of(document.fileContents()));
    if (isElsewhere)
        watch();
    return {};
}

std::error_code OpenDocument::write(const std::filesystem::path& path) {
    if (!services_)
        return SafeFileWriter::write(path, document.fileContents());
    bool wasOverwritten = false;
    const std::error_code error =
        SafeFileWriter::write(services_->operations, path, document.fileContents(), [&] {
            wasOverwritten = true;
            return journal_->keepCopy(document.text);
        });
    if (error && wasOverwritten && outsideChanges_ && path == fileLocation_) {
        // What the file holds now comes from here, torn as it may be, and from nobody else.
        if (const auto finding = outsideChanges_->lookNow())
            keepOwnText(*finding);
    }
    return error;
}

std::error_code OpenDocument::revert(const FileManager& fileManager) {
    std::error_code error;
    const std::optional<std::string> bytes = contents(fileManager, *fileLocation_, error);
    if (!bytes)
        return error;
    document = HTMLDocument::fromFileContents(*bytes);
    textIsSaved(Fingerprint::of(*bytes));
    return {};
}

void OpenDocument::lookForOutsideChanges() {
    if (outsideChanges_)
        outsideChanges_->lookSoon();
}

OpenDocument::Reaction OpenDocument::reactionTo(const OutsideChanges::Finding& finding) {
    if (finding.kind != OutsideChanges::Kind::changed) {
        // What was the file's text is now nowhere but here.
        savedText_.reset();
        journaledText_ = document.text;
        if (journal_)
            journal_->append({}, document.text);
        return Reaction::tell;
    }
    if (HTMLDocument::fromFileContents(finding.bytes) == document) {
        textIsSaved(Fingerprint::of(finding.bytes));
        return Reaction::none;
    }
    return isEdited() ? Reaction::ask : Reaction::follow;
}

void OpenDocument::follow(const OutsideChanges::Finding& finding) {
    document = HTMLDocument::fromFileContents(finding.bytes);
    textIsSaved(Fingerprint::of(finding.bytes));
}

void OpenDocument::keepOwnText(const OutsideChanges::Finding& finding) {
    if (outsideChanges_ && finding.kind == OutsideChanges::Kind::changed)
        outsideChanges_->setKnown(Fingerprint::of(finding.bytes));
}

void OpenDocument::close() {
    if (journal_)
        journal_->remove();
    journal_.reset();
    outsideChanges_.reset();
}

/// The file, which holds `fileContent`, has the text as it is now.
void OpenDocument::textIsSaved(const Fingerprint& fileContent) {
    fileContent_ = fileContent;
    savedText_ = document.text;
    if (journal_)
        journal_->rebase(journalBase());
    journaledText_ = document.text;
    if (outsideChanges_)
        outsideChanges_->setKnown(fileContent);
}

void OpenDocument::watch() {
    outsideChanges_.reset();
    if (services_ && fileLocation_)
        outsideChanges_ = std::make_unique<OutsideChanges>(services_->operations, services_->mainQueue,
                                                           *fileLocation_, fileContent_, observer_);
}

Journal::Base OpenDocument::journalBase() const {
    return {fileLocation_, fileContent_, savedText_.value_or(SharedText())};
}

} // namespace corvanta
