#include "Documents/SpareJournal.hpp"

#include <system_error>
#include <utility>

namespace corvanta {

SpareJournal::SpareJournal(FileOperations& operations, std::filesystem::path parent)
    : operations_(operations), parent_(std::move(parent)) {}

void SpareJournal::make() {
    const std::lock_guard lock(mutex_);
    if (isTaken_)
        return;
    std::error_code error;
    std::unique_ptr<JournalFolder> folder = JournalFolder::make(operations_, parent_, error);
    if (!folder)
        return;
    auto file =
        std::make_shared<const OpenedFile>(operations_, folder->file(1), JournalFolder::creating, 0600);
    if (file->isOpen())
        place_ = {std::move(folder), std::move(file)};
    else
        folder->remove();
}

std::optional<SpareJournal::Place> SpareJournal::take() {
    const std::lock_guard lock(mutex_);
    isTaken_ = true;
    return std::exchange(place_, std::nullopt);
}

} // namespace corvanta
