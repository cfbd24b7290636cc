#include "Documents/WaitingJournal.hpp"

#include "Documents/JournalFormat.hpp"
#include "Documents/JournalReader.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "Platform/OpenedFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <tuple>

namespace corvanta {

namespace {

/// Enough for a head with the longest path.
constexpr std::size_t longestHead = PATH_MAX + 128;

OpenedFile openForReading(FileOperations& operations, const std::filesystem::path& path) {
    return {operations, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0};
}

std::optional<JournalHead> readHead(FileOperations& operations, const std::filesystem::path& path) {
    const OpenedFile file = openForReading(operations, path);
    if (!file.isOpen())
        return std::nullopt;
    std::string start(longestHead, '\0');
    const ssize_t length = operations.read(file.get(), start.data(), start.size());
    if (length < 0)
        return std::nullopt;
    return JournalReader::head(std::string_view(start).substr(0, static_cast<std::size_t>(length)));
}

/// Whether there may be something in the journal. The process may have died before it wrote anything.
bool holdsSomething(FileOperations& operations, const JournalFolder& folder,
                    const std::vector<int>& numbers) {
    return std::ranges::any_of(numbers, [&](int number) {
        struct stat status {};
        if (number == 0)
            return false;
        return operations.lstat(folder.file(number), status) != 0 ||
               status.st_size >= static_cast<off_t>(JournalFormat::shortestWithHead);
    });
}

/// When the file was last written.
timespec timeOf(FileOperations& operations, const std::filesystem::path& path) {
    struct stat status {};
    operations.lstat(path, status);
    return status.st_mtim;
}

/// Whether `journal` is the beginning of one that holds nothing but `text`: the process died when it began to
/// write it anew, and nothing is lost.
bool isBeginningOfJournalOf(const std::string& text, std::string_view journal,
                            const std::optional<JournalHead>& olderHead) {
    const auto head = JournalReader::head(journal);
    if (!head && !olderHead)
        return false;
    std::uint64_t seed = JournalFormat::firstSeed();
    std::string whole(JournalFormat::signature);
    whole += JournalFormat::record(JournalFormat::content(head ? *head : *olderHead), seed);
    whole += JournalFormat::record(JournalFormat::content(JournalFormat::Kind::wholeText, text), seed);
    return whole.starts_with(journal);
}

} // namespace

std::vector<WaitingJournal> WaitingJournal::allIn(FileOperations& operations,
                                                  const std::filesystem::path& folder) {
    std::vector<std::pair<timespec, WaitingJournal>> found;
    for (const std::string& name : operations.entries(folder).value_or(std::vector<std::string>())) {
        auto journal = JournalFolder::take(operations, folder / name);
        if (!journal)
            continue;
        const auto numbers = journal->numbers();
        if (numbers && holdsSomething(operations, *journal, *numbers)) {
            const timespec time = timeOf(operations, journal->file(numbers->back()));
            found.emplace_back(time, WaitingJournal(operations, std::move(journal), *numbers));
        } else if (numbers) {
            journal->remove();
        }
    }
    std::ranges::stable_sort(
        found, {}, [](const auto& entry) { return std::tuple(entry.first.tv_sec, entry.first.tv_nsec); });
    std::vector<WaitingJournal> waiting;
    waiting.reserve(found.size());
    for (auto& [time, journal] : found)
        waiting.push_back(std::move(journal));
    return waiting;
}

WaitingJournal::WaitingJournal(FileOperations& operations, std::unique_ptr<JournalFolder> folder,
                               std::vector<int> numbers)
    : operations_(&operations), folder_(std::move(folder)), numbers_(std::move(numbers)) {
    for (auto number = numbers_.rbegin(); number != numbers_.rend(); ++number) {
        head_ = readHead(operations, folder_->file(*number));
        if (head_)
            return;
    }
}

WaitingJournal::Recovered WaitingJournal::read() const {
    const std::optional<std::string> file =
        head_ && head_->file ? contents(*head_->file) : std::optional<std::string>();
    Recovered recovered = readNewest(baseText(file));
    recovered.file = stateOfFile(recovered, file);
    return recovered;
}

std::optional<std::string> WaitingJournal::contents(const std::filesystem::path& path) const {
    const OpenedFile file = openForReading(*operations_, path);
    struct stat status {};
    if (!file.isOpen() || file.status(status) || !S_ISREG(status.st_mode))
        return std::nullopt;
    std::error_code error;
    return file.readAll(error);
}

/// The text that the first edit belongs to: the copy, or else the file while it is as it was.
std::optional<std::string> WaitingJournal::baseText(const std::optional<std::string>& file) const {
    if (const auto copy = contents(folder_->file(0))) {
        JournalReader::Replay replay = JournalReader::replay(*copy, std::nullopt);
        if (replay.text && replay.end == JournalReader::End::whole)
            return std::move(replay.text);
    }
    if (file && head_ && Fingerprint::of(*file) == head_->fileContent)
        return TextDecoding::string(*file);
    return std::nullopt;
}

WaitingJournal::Recovered WaitingJournal::readNewest(const std::optional<std::string>& baseText) const {
    Recovered recovered;
    // Those that were begun later and give no text.
    std::vector<std::string> unfinished;
    for (auto number = numbers_.rbegin(); number != numbers_.rend() && *number != 0; ++number) {
        const std::optional<std::string> journal = contents(folder_->file(*number));
        if (!journal)
            continue;
        JournalReader::Replay replay = JournalReader::replay(*journal, baseText);
        if (recovered.typed.empty())
            recovered.typed = std::move(replay.typed);
        if (!replay.text) {
            unfinished.push_back(*journal);
            continue;
        }
        const auto head = JournalReader::head(*journal);
        const bool lostNothingLater = std::ranges::all_of(unfinished, [&](const std::string& later) {
            return isBeginningOfJournalOf(*replay.text, later, head);
        });
        recovered.isWhole = replay.end == JournalReader::End::whole && lostNothingLater;
        recovered.wasOverwriting = replay.wasOverwriting;
        recovered.text = std::move(replay.text);
        recovered.typed.clear();
        return recovered;
    }
    // Without anything that was typed, the text before is still better than nothing.
    if (recovered.typed.empty())
        recovered.text = baseText;
    return recovered;
}

WaitingJournal::File WaitingJournal::stateOfFile(const Recovered& recovered,
                                                 const std::optional<std::string>& file) const {
    if (!head_ || !head_->file)
        return File::none;
    if (!file)
        return File::missing;
    if (recovered.text && recovered.isWhole && TextDecoding::string(*file) == *recovered.text)
        return File::saved;
    return Fingerprint::of(*file) == head_->fileContent ? File::unchanged : File::changed;
}

} // namespace corvanta
