#include "Documents/Journal.hpp"

#include "Documents/JournalFormat.hpp"
#include "Platform/SystemCall.hpp"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

using Kind = JournalFormat::Kind;

/// Below this size a journal is never written anew, in bytes.
constexpr std::size_t smallestOutgrown = 1'000'000;
/// A journal is written anew when it is this many times as long as the text.
constexpr std::size_t outgrownFactor = 2;

/// The copy of the base text would otherwise be in the way of the first letter, which is just being written
/// down and drawn.
constexpr WorkerQueue::Duration baseCopyDelay{20};

/// The first bytes of a file of the journal. `seed` becomes the checksum of the last record.
std::string beginning(const JournalHead& head, const std::optional<SharedText>& text, std::uint64_t& seed) {
    seed = JournalFormat::firstSeed();
    std::string bytes(JournalFormat::signature);
    bytes += JournalFormat::record(JournalFormat::content(head), seed);
    if (text)
        bytes += JournalFormat::record(JournalFormat::content(Kind::wholeText, text->string()), seed);
    return bytes;
}

} // namespace

Journal::Journal(FileOperations& operations, WorkerQueue& worker, std::filesystem::path folder, Base base)
    : operations_(operations),
      worker_(worker),
      parent_(std::move(folder)),
      base_(std::move(base)),
      baseText_(Fingerprint::of(base_.text.string())),
      textSize_(base_.text.size()) {}

Journal::Journal(FileOperations& operations, WorkerQueue& worker, std::unique_ptr<JournalFolder> leftBehind,
                 Base base, const SharedText& text)
    : operations_(operations),
      worker_(worker),
      parent_(leftBehind->path().parent_path()),
      base_(std::move(base)),
      baseText_(Fingerprint::of(base_.text.string())),
      folder_(std::move(leftBehind)),
      syncer_(std::make_shared<JournalSyncer>(operations, folder_->path())),
      textSize_(text.size()) {
    // Until the new file is on the disk, the old ones hold the text.
    if (const auto numbers = folder_->numbers(); numbers && !numbers->empty())
        lastNumber_ = numbers->back();
    isBehind_ = static_cast<bool>(begin(text));
    scheduleSync();
}

Journal::~Journal() {
    // Not to be lost either when the power goes a moment after the program has ended.
    sync();
    removeSpare();
}

void Journal::prepare() {
    isPrepared_ = true;
    makeSpare();
}

void Journal::makeSpare() {
    spare_ = std::make_shared<SpareJournal>(operations_, parent_);
    worker_.after({}, [spare = spare_] { spare->make(); });
}

std::optional<std::string> Journal::name() const {
    return folder_ ? std::optional(folder_->path().filename().string()) : std::nullopt;
}

std::error_code Journal::append(const TextChange& change, const SharedText& text) {
    // What is unchanged before and after may overlap when nothing changed at all.
    const std::size_t shorter = std::min(textSize_, text.size());
    const std::size_t offset = std::min(static_cast<std::size_t>(change.unchangedBefore), shorter);
    const std::size_t after = std::min(static_cast<std::size_t>(change.unchangedAfter), shorter - offset);
    const std::size_t removed = textSize_ - offset - after;
    const std::string inserted =
        text.substring(static_cast<std::int64_t>(offset), static_cast<std::int64_t>(text.size() - after));
    textSize_ = text.size();
    if (removed == 0 && inserted.empty())
        return {};

    std::error_code error = start();
    if (!error && (isBehind_ || isOutgrown(text.size())))
        error = begin(text);
    else if (!error)
        error = writeRecord(JournalFormat::content(JournalFormat::Edit{offset, removed, inserted}));
    isBehind_ = static_cast<bool>(error);
    scheduleSync();
    return error;
}

std::error_code Journal::keepCopy(const SharedText& text) {
    textSize_ = text.size();
    std::error_code error = start();
    if (!error && isBehind_)
        error = begin(text);
    if (!error)
        error = writeRecord(JournalFormat::content(Kind::overwriting, text.string()));
    isBehind_ = static_cast<bool>(error);
    scheduleSync();
    return error ? error : sync();
}

std::error_code Journal::sync() {
    return syncer_ ? syncer_->sync() : std::error_code();
}

void Journal::rebase(Base base) {
    forgetEdits();
    if (isPrepared_ && !spare_)
        makeSpare();
    base_ = std::move(base);
    baseText_ = Fingerprint::of(base_.text.string());
    textSize_ = base_.text.size();
}

void Journal::remove() {
    forgetEdits();
    isPrepared_ = false;
    removeSpare();
}

void Journal::removeSpare() {
    if (const auto unused = spare_ ? spare_->take() : std::nullopt)
        unused->folder->remove();
    spare_.reset();
}

void Journal::forgetEdits() {
    if (syncer_)
        syncer_->close();
    if (folder_)
        folder_->remove();
    syncer_.reset();
    folder_.reset();
    emptyFile_.reset();
    part_ = Part();
    lastNumber_ = 0;
    isBehind_ = false;
}

JournalHead Journal::head() const {
    return {base_.file, base_.fileContent, baseText_};
}

/// Makes sure that there is a journal to write to.
std::error_code Journal::start() {
    if (folder_) {
        // The file may have what the disk refused, but not for good: it is written once more, as a whole.
        isBehind_ = syncer_->takeError() || isBehind_;
        return {};
    }
    const bool wasBehind = isBehind_;
    std::error_code error;
    if (auto place = spare_ ? spare_->take() : std::nullopt) {
        folder_ = std::move(place->folder);
        emptyFile_ = std::move(place->file);
    } else {
        folder_ = JournalFolder::make(operations_, parent_, error);
    }
    spare_.reset();
    if (!folder_)
        return error;
    syncer_ = std::make_shared<JournalSyncer>(operations_, folder_->path());
    if (!wasBehind)
        error = beginAtBase();
    if (error)
        forgetEdits();
    isBehind_ = wasBehind;
    return error;
}

/// Begins the journal with the edits to the base text.
std::error_code Journal::beginAtBase() {
    if (!base_.file)
        return begin(base_.text);
    // The document's file holds the text until it has been copied.
    syncer_->setBaseCopying(
        [&operations = operations_, path = folder_->file(0), head = head(), text = base_.text] {
            std::uint64_t seed = 0;
            const OpenedFile file(operations, path, JournalFolder::creating, 0600);
            if (file.isOpen() && !file.writeAll(beginning(head, text, seed)))
                file.sync();
        });
    const std::error_code error = begin(std::nullopt);
    worker_.after(baseCopyDelay, [syncer = syncer_] { syncer->copyBase(); });
    return error;
}

/// Begins a new file of the journal, with the whole text or with the edits to the base text.
std::error_code Journal::begin(const std::optional<SharedText>& text) {
    // No number is used twice, also after a failure: what lies there may be all that there is.
    const int number = ++lastNumber_;
    const std::filesystem::path path = folder_->file(number);
    Part part;
    part.file = emptyFile_
                    ? std::exchange(emptyFile_, nullptr)
                    : std::make_shared<const OpenedFile>(operations_, path, JournalFolder::creating, 0600);
    if (!part.file->isOpen())
        return lastError();
    const std::string bytes = beginning(head(), text, part.seed);
    part.size = bytes.size();
    if (const auto error = part.file->writeAll(bytes)) {
        uninterrupted([&] { return operations_.unlink(path); });
        return error;
    }
    part_ = part;
    syncer_->begin(part.file, number);
    return {};
}

std::error_code Journal::writeRecord(std::string_view content) {
    const std::string record = JournalFormat::record(content, part_.seed);
    part_.size += record.size();
    return part_.file->writeAll(record);
}

bool Journal::isOutgrown(std::size_t textSize) const {
    return part_.size > std::max(smallestOutgrown, outgrownFactor * textSize);
}

void Journal::scheduleSync() {
    if (syncer_ && part_.file && syncer_->noteWriting())
        worker_.after(longestUnsynced, [syncer = syncer_] { syncer->sync(); });
}

} // namespace corvanta
