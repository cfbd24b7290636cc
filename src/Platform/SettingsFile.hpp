#pragma once

#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <system_error>

namespace corvanta {

/// A JSON object in a file that several processes change at the same time. At every moment the file is whole,
/// and a process replaces only the members that it changed.
class SettingsFile {
public:
    /// The new values of changed members; a member without one is removed.
    using Changes = std::map<std::string, std::optional<nlohmann::json>, std::less<>>;

    /// What the file holds. `members` is always an object, and empty when the file is absent, empty, cannot
    /// be read or is damaged: no JSON object, nested without measure, or larger than any settings are.
    struct Content {
        nlohmann::json members = nlohmann::json::object();
        bool isDamaged = false;
        /// Why the file cannot be read; none when it is absent.
        std::error_code error;
    };

    /// The file and its folder need not exist yet. When `path` is a link, the file behind it is meant.
    explicit SettingsFile(std::filesystem::path path) : path_(std::move(path)) {}

    Content read() const;

    /// Merges `changes` into what the file holds now and puts the result on the disk, while all other
    /// processes that do the same wait. A damaged file is kept under another name beside it, also when
    /// nothing changes. A file that cannot be read is not touched. May wait for other processes and the disk,
    /// at most about two seconds for a process that does not let go.
    std::error_code apply(const Changes& changes) const;

private:
    std::filesystem::path path_;
};

} // namespace corvanta
