#include "Documents/JournalFolder.hpp"

#include "Platform/SystemCall.hpp"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <random>
#include <string>
#include <utility>

namespace corvanta {

namespace {

constexpr const char* lockName = "lock";

std::string unusedName() {
    std::random_device random;
    const std::uint64_t number = (std::uint64_t{random()} << 32U) | random();
    return fmt::format("{:016x}", number);
}

} // namespace

JournalFolder::JournalFolder(FileOperations& operations, std::filesystem::path path, OpenedFile lock)
    : operations_(operations), path_(std::move(path)), lock_(std::move(lock)) {}

std::unique_ptr<JournalFolder>
JournalFolder::make(FileOperations& operations, const std::filesystem::path& parent, std::error_code& error) {
    const std::filesystem::path path = parent / unusedName();
    error.clear();
    if (uninterrupted([&] { return operations.mkdir(path, 0700); }) != 0) {
        error = lastError();
        return nullptr;
    }
    auto folder = lock(operations, path, O_RDWR | O_CREAT | O_EXCL);
    if (!folder) {
        error = lastError();
        operations.rmdir(path);
    }
    return folder;
}

std::unique_ptr<JournalFolder> JournalFolder::take(FileOperations& operations,
                                                   const std::filesystem::path& path) {
    // Made anew when the last one died between the removal of the lock and that of the folder.
    return lock(operations, path, O_RDWR | O_CREAT);
}

std::unique_ptr<JournalFolder> JournalFolder::lock(FileOperations& operations,
                                                   const std::filesystem::path& path, int flags) {
    OpenedFile lock(operations, path / lockName, flags | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (!lock.isOpen() || uninterrupted([&] { return operations.flock(lock.get(), LOCK_EX | LOCK_NB); }) != 0)
        return nullptr;
    return std::unique_ptr<JournalFolder>(new JournalFolder(operations, path, std::move(lock)));
}

std::optional<std::vector<int>> JournalFolder::numbers() const {
    const auto names = operations_.entries(path_);
    if (!names)
        return std::nullopt;
    std::vector<int> numbers;
    for (const std::string& name : *names) {
        int number = 0;
        const char* end = name.data() + name.size();
        if (const auto parsed = std::from_chars(name.data(), end, number); parsed.ptr == end)
            numbers.push_back(number);
    }
    std::ranges::sort(numbers);
    return numbers;
}

void JournalFolder::remove() {
    const auto unlink = [this](const std::filesystem::path& file) {
        return uninterrupted([&] { return operations_.unlink(file); }) == 0 || errno == ENOENT;
    };
    std::vector<int> numbers = this->numbers().value_or(std::vector<int>());
    if (!numbers.empty() && numbers.front() == 0)
        std::rotate(numbers.begin(), numbers.begin() + 1, numbers.end());
    for (const int number : numbers) {
        if (!unlink(file(number)))
            return;
    }
    unlink(path_ / lockName);
    uninterrupted([&] { return operations_.rmdir(path_); });
}

} // namespace corvanta
