#include "Preview/PosixFolderBookmarks.hpp"

#include "Preview/PercentEncoding.hpp"

#include <fmt/format.h>
#include <sys/stat.h>

#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace corvanta {

namespace {

struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    friend bool operator==(const Identity&, const Identity&) = default;
};

/// Nothing when there is no folder at `path`.
std::optional<Identity> identityOfFolder(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return std::nullopt;
    return Identity{status.st_dev, status.st_ino};
}

std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data() + text.size() || *end != ':')
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    return number;
}

/// The folder beside `path` with this identity.
std::optional<std::filesystem::path> renamed(const std::filesystem::path& path, const Identity& identity) {
    std::error_code error;
    std::filesystem::directory_iterator entry(path.parent_path(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (!entry->is_symlink(error) && identityOfFolder(entry->path()) == identity)
            return entry->path();
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> PosixFolderBookmarks::make(const std::filesystem::path& folder) const {
    const std::optional<Identity> identity = identityOfFolder(folder);
    if (!folder.is_absolute() || !identity)
        return std::nullopt;
    return fmt::format("{}:{}:{}", identity->device, identity->inode,
                       PercentEncoding::encodingPath(folder.native()));
}

std::optional<std::filesystem::path> PosixFolderBookmarks::resolve(const std::string& bookmark) const {
    std::string_view rest = bookmark;
    const std::optional<std::uint64_t> device = takeNumber(rest);
    const std::optional<std::uint64_t> inode = device ? takeNumber(rest) : std::nullopt;
    const std::optional<std::string> text = inode ? PercentEncoding::bytes(rest) : std::nullopt;
    if (!text || text->find('\0') != std::string::npos)
        return std::nullopt;
    const std::filesystem::path path(*text);
    if (!path.is_absolute())
        return std::nullopt;
    // A folder under the same path is taken although its identity changed: devices are numbered anew at every
    // start, and a site that was restored from a backup is still the user's site.
    if (identityOfFolder(path))
        return path;
    return renamed(path, {*device, *inode});
}

} // namespace corvanta
