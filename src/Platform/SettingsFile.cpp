#include "Platform/SettingsFile.hpp"

#include "Platform/OpenedFile.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Platform/SystemCall.hpp"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <string_view>
#include <thread>

namespace corvanta {

namespace {

using Path = std::filesystem::path;
using Json = nlohmann::json;

/// In bytes. Settings of a person take a few thousand; what is larger is not ours and would only cost time.
constexpr std::uintmax_t largestSettings = std::uintmax_t{16} << 20U;

/// Writing JSON costs stack for every level.
constexpr int deepestNesting = 100;

constexpr std::chrono::milliseconds patience{2000};
constexpr std::chrono::milliseconds betweenTries{5};

Path withSuffix(Path path, std::string_view suffix) {
    return path += suffix;
}

/// The object in `text`, or nothing when it holds something else.
std::optional<Json> parsedObject(const std::string& text) {
    bool isTooDeep = false;
    const auto watchDepth = [&](int depth, Json::parse_event_t, const Json&) {
        isTooDeep = isTooDeep || depth > deepestNesting;
        return !isTooDeep;
    };
    Json parsed = Json::parse(text, watchDepth, false);
    if (isTooDeep || !parsed.is_object())
        return std::nullopt;
    return parsed;
}

/// The lock that a process holds from reading the settings until it has written them. The file stays behind:
/// removed, it could be made a second time while the first is still held.
class Lock {
public:
    explicit Lock(const Path& path) : file_(operations_, path, O_RDWR | O_CREAT | O_CLOEXEC, 0600) {
        if (!file_.isOpen()) {
            error_ = lastError();
            return;
        }
        // Waiting without end would keep the program from ending behind a process that was stopped.
        const auto end = std::chrono::steady_clock::now() + patience;
        while (operations_.flock(file_.get(), LOCK_EX | LOCK_NB) != 0) {
            error_ = lastError();
            const bool isHeld = error_ == std::errc::operation_would_block;
            if ((!isHeld && error_ != std::errc::interrupted) || std::chrono::steady_clock::now() >= end)
                return;
            std::this_thread::sleep_for(betweenTries);
        }
        error_.clear();
    }

    const std::error_code& error() const { return error_; }

private:
    PosixFileOperations operations_;
    OpenedFile file_;
    std::error_code error_;
};

std::error_code makeFolder(const Path& folder) {
    std::error_code error;
    if (std::filesystem::create_directories(folder, error))
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    return error;
}

/// Renames the file to a name beside it that nothing has yet.
std::error_code setAside(const Path& path) {
    for (int number = 1;; ++number) {
        const Path other = withSuffix(path, fmt::format(".damaged-{}", number));
        std::error_code error;
        if (std::filesystem::exists(std::filesystem::symlink_status(other, error)))
            continue;
        std::filesystem::rename(path, other, error);
        return error;
    }
}

/// What the old file lets others do, or that they may do nothing.
mode_t permissions(const Path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0600U;
}

std::error_code writeNewFile(FileOperations& operations, const Path& path, mode_t mode,
                             std::string_view bytes) {
    OpenedFile file(operations, path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (!file.isOpen())
        return lastError();
    if (const std::error_code error = file.writeAll(bytes))
        return error;
    if (operations.fchmod(file.get(), mode) != 0)
        return lastError();
    if (const std::error_code error = file.sync())
        return error;
    return file.close();
}

/// Always through a new file, also where that costs a second name of the old one: half a file of settings
/// would be worse. The new file's name is the same each time, so that what a killed process leaves behind is
/// used up by the next one; only the holder of the lock comes here.
std::error_code replace(const Path& path, std::string_view bytes) {
    PosixFileOperations operations;
    const Path replacement = withSuffix(path, ".new");
    std::error_code error = writeNewFile(operations, replacement, permissions(path), bytes);
    if (!error && operations.rename(replacement, path) != 0)
        error = lastError();
    if (error) {
        operations.unlink(replacement);
        return error;
    }
    // Best effort: after a loss of power the old settings would be whole, too.
    syncFolder(operations, path.parent_path());
    return {};
}

SettingsFile::Content contentOf(const Path& path) {
    const PosixFileManager files;
    SettingsFile::Content content;
    if (files.fileSize(path).value_or(0) > largestSettings) {
        content.isDamaged = true;
        return content;
    }
    const auto text = files.contents(path, content.error);
    if (content.error == std::errc::no_such_file_or_directory)
        content.error.clear();
    // An empty file is what a full disk or a crash left of one; there is nothing in it to be kept.
    if (!text || text->empty())
        return content;
    if (auto members = parsedObject(*text))
        content.members = std::move(*members);
    else
        content.isDamaged = true;
    return content;
}

void merge(Json& members, const SettingsFile::Changes& changes) {
    for (const auto& [key, value] : changes) {
        if (value)
            members[key] = *value;
        else
            members.erase(key);
    }
}

std::string written(const Json& members) {
    return members.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

SettingsFile::Content SettingsFile::read() const {
    return contentOf(path_);
}

std::error_code SettingsFile::apply(const Changes& changes) const {
    const Path path = PosixFileManager().resolvingSymlinks(path_);
    if (const std::error_code error = makeFolder(path.parent_path()))
        return error;
    const Lock lock(withSuffix(path, ".lock"));
    if (lock.error())
        return lock.error();

    Content content = contentOf(path);
    if (content.error)
        return content.error;
    if (content.isDamaged) {
        if (const std::error_code error = setAside(path))
            return error;
    }
    const Json before = content.members;
    merge(content.members, changes);
    return content.members == before ? std::error_code() : replace(path, written(content.members));
}

} // namespace corvanta
