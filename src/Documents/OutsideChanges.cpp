#include "Documents/OutsideChanges.hpp"

#include "Platform/OpenedFile.hpp"

#include <fcntl.h>

#include <cerrno>
#include <ctime>
#include <system_error>
#include <tuple>
#include <utility>

namespace corvanta {

namespace {

/// The file system's clock goes in steps; within one of them a second change leaves no trace in the status.
constexpr std::int64_t clockStep = 100'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

bool isOld(const struct stat& status) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now) - nanoseconds(status.st_ctim) > clockStep;
}

bool isSame(const struct stat& one, const struct stat& other) {
    const auto significant = [](const struct stat& status) {
        return std::tuple(status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
                          nanoseconds(status.st_ctim));
    };
    return significant(one) == significant(other);
}

} // namespace

OutsideChanges::OutsideChanges(FileOperations& operations, MainQueue& mainQueue, std::filesystem::path file,
                               const Fingerprint& known, Observer observer)
    : operations_(operations),
      mainQueue_(mainQueue),
      file_(std::move(file)),
      known_(known),
      observer_(std::move(observer)) {}

void OutsideChanges::lookSoon() {
    if (!pending_)
        lookAgainAfter(MainQueue::Duration::zero());
}

std::optional<OutsideChanges::Finding> OutsideChanges::lookNow() {
    Seen seen = look();
    return seen.kind ? std::optional(Finding{*seen.kind, std::move(seen.bytes)}) : std::nullopt;
}

void OutsideChanges::setKnown(const Fingerprint& known) {
    known_ = known;
    knownStatus_.reset();
    suspicion_.reset();
    reported_.reset();
    pending_.reset();
}

OutsideChanges::Seen OutsideChanges::look() {
    const OpenedFile file(operations_, file_, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (!file.isOpen()) {
        // A file that may not be read, or a disk that fails, is not a change.
        if (errno == ENOENT || errno == ENOTDIR)
            return {Kind::vanished, {}, {}};
        return errno == ENXIO ? Seen{Kind::notAFile, {}, {}} : Seen();
    }
    struct stat status {};
    if (file.status(status))
        return {};
    if (!S_ISREG(status.st_mode))
        return {Kind::notAFile, {}, {}};
    if (knownStatus_ && isSame(*knownStatus_, status))
        return {};

    std::error_code error;
    std::optional<std::string> bytes = file.readAll(error);
    if (!bytes)
        return {};
    const Fingerprint content = Fingerprint::of(*bytes);
    if (content != known_)
        return {Kind::changed, content, std::move(*bytes)};
    if (isOld(status))
        knownStatus_ = status;
    return {};
}

void OutsideChanges::lookAgainAfter(MainQueue::Duration pause) {
    pending_ = mainQueue_.after(pause, [this] { lookAtRest(); });
}

void OutsideChanges::lookAtRest() {
    // The handle of the look that is under way has served its purpose.
    pending_.reset();
    Seen seen = look();
    if (!seen.kind) {
        suspicion_.reset();
        reported_.reset();
        return;
    }
    if (reported_ && reported_->isSame(seen)) {
        suspicion_.reset();
        return;
    }
    if (!suspicion_ || !suspicion_->isSame(seen)) {
        const bool isWithoutContent = seen.isWithoutContent();
        suspicion_ = std::move(seen);
        lookAgainAfter(isWithoutContent ? restWithoutContent : rest);
        return;
    }
    suspicion_.reset();
    const Finding finding{*seen.kind, std::exchange(seen.bytes, {})};
    reported_ = std::move(seen);
    observer_(finding);
}

} // namespace corvanta
