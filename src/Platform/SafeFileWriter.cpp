#include "Platform/SafeFileWriter.hpp"

#include "Platform/OpenedFile.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Platform/SystemCall.hpp"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

namespace {

using Path = std::filesystem::path;

// Builds that leave one protection out exist to prove that the tests notice.
#ifdef CORVANTA_LEAVES_OUT_FOLDER_SYNC
constexpr bool syncsTheFolder = false;
#else
constexpr bool syncsTheFolder = true;
#endif
#ifdef CORVANTA_LEAVES_OUT_RENAME
constexpr bool renames = false;
#else
constexpr bool renames = true;
#endif
#ifdef CORVANTA_LEAVES_OUT_TEMPORARY_FILE
constexpr bool truncatesInPlace = true;
#else
constexpr bool truncatesInPlace = false;
#endif

/// As many links as the kernel follows before it calls them a circle.
constexpr int longestChainOfLinks = 40;

Path folderOf(const Path& file) {
    return file.has_parent_path() ? file.parent_path() : Path(".");
}

/// Where the link at `file` leads; nothing when it is none or cannot be read.
std::optional<Path> linkTarget(FileOperations& operations, const Path& file, std::error_code& error) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length =
        uninterrupted([&] { return operations.readlink(file, target.data(), target.size()); });
    if (length >= 0)
        return Path(std::string(target.data(), static_cast<std::size_t>(length)));
    if (errno != EINVAL && errno != ENOENT)
        error = lastError();
    return std::nullopt;
}

/// The path behind all links that `file` itself is. The last link's target need not exist, which is why
/// realpath() does not do.
Path behindLinks(FileOperations& operations, Path file, std::error_code& error) {
    error.clear();
    for (int followed = 0; followed <= longestChainOfLinks; ++followed) {
        const std::optional<Path> target = linkTarget(operations, file, error);
        if (!target)
            return file;
        file = folderOf(file) / *target;
    }
    error = make_error_code(std::errc::too_many_symbolic_link_levels);
    return file;
}

/// The names of the extended attributes, or nothing when they cannot be listed.
std::optional<std::vector<std::string>> attributeNames(FileOperations& operations, const OpenedFile& file) {
    const ssize_t size = uninterrupted([&] { return operations.flistxattr(file.get(), nullptr, 0); });
    if (size < 0)
        return errno == ENOTSUP ? std::optional(std::vector<std::string>()) : std::nullopt;
    std::string list(static_cast<std::size_t>(size), '\0');
    const ssize_t length =
        uninterrupted([&] { return operations.flistxattr(file.get(), list.data(), list.size()); });
    if (length < 0)
        return std::nullopt;

    std::vector<std::string> names;
    for (std::size_t start = 0; start < static_cast<std::size_t>(length);) {
        names.emplace_back(list.c_str() + start);
        start += names.back().size() + 1;
    }
    return names;
}

std::optional<std::string> attribute(FileOperations& operations, const OpenedFile& file,
                                     const std::string& name) {
    const auto read = [&](char* value, std::size_t size) {
        return uninterrupted([&] { return operations.fgetxattr(file.get(), name.c_str(), value, size); });
    };
    const ssize_t size = read(nullptr, 0);
    if (size < 0)
        return std::nullopt;
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t length = read(value.data(), value.size());
    if (length < 0)
        return std::nullopt;
    value.resize(static_cast<std::size_t>(length));
    return value;
}

/// Gives `copy` the extended attribute `name` of `original`.
std::error_code takeOverAttribute(FileOperations& operations, const OpenedFile& original,
                                  const OpenedFile& copy, const std::string& name) {
    const auto value = attribute(operations, original, name);
    if (!value)
        return lastError();
    // A security label is often inherited right and may not be set.
    if (attribute(operations, copy, name) == value)
        return {};
    return outcome(
        [&] { return operations.fsetxattr(copy.get(), name.c_str(), value->data(), value->size()); });
}

/// Gives `copy` exactly the extended attributes of `original`; those that it inherited from the folder go.
std::error_code takeOverAttributes(FileOperations& operations, const OpenedFile& original,
                                   const OpenedFile& copy) {
    const auto wanted = attributeNames(operations, original);
    if (!wanted)
        return lastError();
    const auto present = attributeNames(operations, copy);
    if (!present)
        return lastError();

    for (const std::string& name : *present) {
        if (std::ranges::find(*wanted, name) != wanted->end())
            continue;
        if (const auto error = outcome([&] { return operations.fremovexattr(copy.get(), name.c_str()); }))
            return error;
    }
    for (const std::string& name : *wanted) {
        if (const auto error = takeOverAttribute(operations, original, copy, name))
            return error;
    }
    return {};
}

/// Gives `copy` the owner, the attributes and at last the mode of `original`, in this order: a change of the
/// owner takes mode bits away, and an access control list changes the mode.
std::error_code takeOverIdentity(FileOperations& operations, const OpenedFile& original,
                                 const struct stat& originalStatus, const OpenedFile& copy) {
    struct stat copyStatus {};
    if (const auto error = copy.status(copyStatus))
        return error;
    const uid_t owner = originalStatus.st_uid;
    const gid_t group = originalStatus.st_gid;
    if (copyStatus.st_uid != owner || copyStatus.st_gid != group) {
        if (const auto error = outcome([&] { return operations.fchown(copy.get(), owner, group); }))
            return error;
    }
    if (const auto error = takeOverAttributes(operations, original, copy))
        return error;
    return outcome([&] { return operations.fchmod(copy.get(), originalStatus.st_mode & 07777); });
}

/// A new hidden file with a name nobody can foresee, removed unless it is renamed.
class TemporaryFile {
public:
    /// `mode` is subject to the umask. Check `isOpen`; when it is not, errno says why.
    TemporaryFile(FileOperations& operations, const Path& folder, mode_t mode)
        : operations_(operations),
          path_(folder / unusedName()),
          file_(operations, path_, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (exists_)
            uninterrupted([&] { return operations_.unlink(path_); });
    }

    bool isOpen() const { return exists_; }
    OpenedFile& file() { return file_; }

    std::error_code renameTo(const Path& file) {
        if (!renames)
            return {};
        const std::error_code error = outcome([&] { return operations_.rename(path_, file); });
        exists_ = static_cast<bool>(error);
        return error;
    }

private:
    /// The file's own name is not part of it: with an addition it could become too long.
    static std::string unusedName() {
        std::random_device random;
        const std::uint64_t number = (std::uint64_t{random()} << 32U) | random();
        return fmt::format(".corvanta-{:016x}", number);
    }

    FileOperations& operations_;
    Path path_;
    OpenedFile file_;
    bool exists_ = file_.isOpen();
};

/// Puts the content on the disk; after that the file can take its place.
std::error_code finish(TemporaryFile& temporary) {
    const std::error_code error = temporary.file().sync();
    return error ? error : temporary.file().close();
}

/// Makes the file's new name last.
std::error_code keepName(FileOperations& operations, const Path& path) {
    return syncsTheFolder ? syncFolder(operations, folderOf(path)) : std::error_code();
}

std::error_code create(FileOperations& operations, const Path& path, std::string_view bytes) {
    // The file's final mode from the start: only the kernel knows the umask and the folder's default list.
    TemporaryFile temporary(operations, folderOf(path), 0666);
    if (!temporary.isOpen())
        return lastError();
    if (const auto error = temporary.file().writeAll(bytes))
        return error;
    if (const auto error = finish(temporary))
        return error;
    if (const auto error = temporary.renameTo(path))
        return error;
    return keepName(operations, path);
}

/// Whether the folder, not the disk or the content, is what stands in the way of a replacement: it takes no
/// new file, does not let go of the old one (sticky bit), or the file is a mount point.
bool isRefusalByTheFolder(const std::error_code& error) {
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system || error == std::errc::device_or_resource_busy;
}

/// Whether the disk is what fails. Overwriting the old file there would be the worst that could be done.
bool isFailureOfTheDisk(const std::error_code& error) {
    return error == std::errc::no_space_on_device || error == std::errc::io_error || error.value() == EDQUOT;
}

/// Replaces the file at `path`, which is `old`. Returns nothing when that would lose something or is not
/// allowed; then the file is as it was and can only be overwritten.
std::optional<std::error_code> replace(FileOperations& operations, const Path& path, const OpenedFile& old,
                                       const struct stat& oldStatus, std::string_view bytes) {
    if (oldStatus.st_nlink > 1)
        return std::nullopt;
    TemporaryFile temporary(operations, folderOf(path), 0600);
    if (!temporary.isOpen()) {
        const std::error_code error = lastError();
        return isRefusalByTheFolder(error) ? std::nullopt : std::optional(error);
    }
    if (const auto error = temporary.file().writeAll(bytes))
        return error;
    if (const auto error = takeOverIdentity(operations, old, oldStatus, temporary.file()))
        return isFailureOfTheDisk(error) ? std::optional(error) : std::nullopt;
    if (const auto error = finish(temporary))
        return error;
    if (const auto error = temporary.renameTo(path))
        return isRefusalByTheFolder(error) ? std::nullopt : std::optional(error);
    return keepName(operations, path);
}

/// Claims the room for `size` bytes before a byte of the old content is lost.
std::error_code reserve(FileOperations& operations, const OpenedFile& file, const struct stat& status,
                        std::size_t size) {
    const auto length = static_cast<off_t>(size);
    if (length <= status.st_size)
        return {};
    const std::error_code error = outcome([&] { return operations.fallocate(file.get(), length); });
    if (!error || error == std::errc::operation_not_supported)
        return {};
    // What it could claim is given back.
    const std::error_code notGivenBack = file.truncate(static_cast<std::size_t>(status.st_size));
    return notGivenBack ? notGivenBack : error;
}

std::error_code overwrite(FileOperations& operations, OpenedFile& file, const struct stat& status,
                          std::string_view bytes) {
    if (const auto error = reserve(operations, file, status, bytes.size()))
        return error;
    if (const auto error = file.writeAll(bytes))
        return error;
    if (const auto error = file.truncate(bytes.size()))
        return error;
    if (const auto error = file.sync())
        return error;
    return file.close();
}

std::error_code truncateAndWrite(OpenedFile& file, std::string_view bytes) {
    if (const auto error = file.truncate(0))
        return error;
    if (const auto error = file.writeAll(bytes))
        return error;
    return file.sync();
}

} // namespace

std::error_code SafeFileWriter::write(FileOperations& operations, const std::filesystem::path& file,
                                      std::string_view bytes, const KeepCopy& keepCopy) {
    std::error_code error;
    const Path path = behindLinks(operations, file, error);
    if (error)
        return error;

    struct stat status {};
    error = outcome([&] { return operations.lstat(path, status); });
    if (error)
        return error == std::errc::no_such_file_or_directory ? create(operations, path, bytes) : error;
    if (!S_ISREG(status.st_mode))
        return make_error_code(std::errc::not_supported);

    // Opening it asks whether this file may be written; its folder alone would let it be replaced.
    OpenedFile old(operations, path, O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    if (!old.isOpen())
        return lastError();
    // From here on it is this file, whatever the path names meanwhile.
    error = old.status(status);
    if (error)
        return error;
    if (!S_ISREG(status.st_mode))
        return make_error_code(std::errc::not_supported);

    if (truncatesInPlace)
        return truncateAndWrite(old, bytes);
    if (const auto replaced = replace(operations, path, old, status, bytes))
        return *replaced;
    error = keepCopy();
    return error ? error : overwrite(operations, old, status, bytes);
}

std::error_code SafeFileWriter::write(const std::filesystem::path& file, std::string_view bytes) {
    PosixFileOperations operations;
    return write(operations, file, bytes, [] { return std::error_code(); });
}

} // namespace corvanta
