#include "Platform/PosixFileManager.hpp"

#include "Platform/OpenedFile.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Platform/SystemCall.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace corvanta {

std::optional<std::string> PosixFileManager::contents(const std::filesystem::path& path,
                                                      std::error_code& error) const {
    // O_NONBLOCK so that a pipe without a writer or a sleeping device cannot hold the program up.
    PosixFileOperations operations;
    const OpenedFile file(operations, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (!file.isOpen()) {
        // A socket cannot be opened at all; to the caller it is one more thing that is not a file.
        error = errno == ENXIO ? make_error_code(std::errc::not_supported) : lastError();
        return std::nullopt;
    }
    struct stat status {};
    error = file.status(status);
    if (error)
        return std::nullopt;
    if (!S_ISREG(status.st_mode)) {
        error = make_error_code(std::errc::not_supported);
        return std::nullopt;
    }
    return file.readAll(error);
}

std::optional<std::uintmax_t> PosixFileManager::fileSize(const std::filesystem::path& path) const {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? std::nullopt : std::optional(size);
}

std::optional<std::vector<std::filesystem::path>>
PosixFileManager::contentsOfFolder(const std::filesystem::path& path) const {
    std::error_code error;
    std::vector<std::filesystem::path> contents;
    for (std::filesystem::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error))
        contents.push_back(entry->path());
    if (error)
        return std::nullopt;
    std::ranges::sort(contents, {},
                      [](const std::filesystem::path& each) -> const std::string& { return each.native(); });
    return contents;
}

bool PosixFileManager::isListable(const std::filesystem::path& path) const {
    std::error_code error;
    const std::filesystem::directory_iterator entries(path, error);
    return !error;
}

std::filesystem::path PosixFileManager::resolvingSymlinks(const std::filesystem::path& path) const {
    std::error_code error;
    std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path.lexically_normal() : resolved;
}

} // namespace corvanta
