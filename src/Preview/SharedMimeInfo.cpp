#include "Preview/SharedMimeInfo.hpp"

#include "EditorCore/ASCII.hpp"

#include <charconv>
#include <cstdlib>
#include <set>
#include <string_view>
#include <utility>

namespace corvanta {

namespace {

/// One line of a globs2 file: "weight:type:pattern" and possibly ":flags".
struct GlobLine {
    int weight = 0;
    std::string_view type;
    std::string_view pattern;
    std::string_view flags;
};

/// What stands before the next `separator`, which is taken off `text` with it.
std::string_view takeUntil(char separator, std::string_view& text) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

std::optional<GlobLine> parse(std::string_view line) {
    GlobLine glob;
    const std::string_view weight = takeUntil(':', line);
    const char* const weightEnd = weight.data() + weight.size();
    if (weight.empty() || std::from_chars(weight.data(), weightEnd, glob.weight).ptr != weightEnd)
        return std::nullopt;
    glob.type = takeUntil(':', line);
    glob.pattern = takeUntil(':', line);
    glob.flags = line;
    return glob;
}

/// The extension that a pattern of the form "*.extension" matches, in lower case unless the pattern minds the
/// case.
std::optional<std::string> extensionMatched(const GlobLine& glob) {
    constexpr std::string_view start = "*.";
    if (!glob.pattern.starts_with(start))
        return std::nullopt;
    const std::string_view extension = glob.pattern.substr(start.size());
    if (extension.empty() || extension.find_first_of("*?[.") != std::string_view::npos)
        return std::nullopt;
    const bool mindsCase = glob.flags.find("cs") != std::string_view::npos;
    return mindsCase ? std::string(extension) : ASCII::lowercased(extension);
}

std::string environment(const char* name, const std::string& fallback) {
    const char* const value = std::getenv(name);
    return value == nullptr || *value == '\0' ? fallback : value;
}

} // namespace

SharedMimeInfo::SharedMimeInfo(const FileManager& fileManager, std::vector<std::filesystem::path> dataFolders)
    : fileManager_(fileManager), dataFolders_(std::move(dataFolders)) {}

std::optional<std::string> SharedMimeInfo::mimeType(std::string_view extension) const {
    if (!entries_)
        entries_ = load();
    const auto entry = entries_->find(extension);
    return entry == entries_->end() ? std::nullopt : std::optional(entry->second.type);
}

SharedMimeInfo::Entries SharedMimeInfo::load() const {
    Entries entries;
    // Types whose patterns in less important folders do not count.
    std::set<std::string, std::less<>> closedTypes;
    for (const std::filesystem::path& folder : dataFolders_) {
        std::error_code error;
        const std::optional<std::string> file = fileManager_.contents(folder / "mime" / "globs2", error);
        if (!file)
            continue;

        std::set<std::string, std::less<>> closedHere;
        std::string_view rest = *file;
        while (!rest.empty()) {
            const std::optional<GlobLine> glob = parse(takeUntil('\n', rest));
            if (!glob || closedTypes.contains(glob->type))
                continue;
            if (glob->pattern == "__NOGLOBS__")
                closedHere.emplace(glob->type);
            const std::optional<std::string> extension = extensionMatched(*glob);
            if (!extension)
                continue;
            // Of equal weights the first one stays, so that the more important folder wins.
            const auto [entry, isNew] = entries.try_emplace(*extension);
            if (isNew || glob->weight > entry->second.weight)
                entry->second = Entry{glob->weight, std::string(glob->type)};
        }
        closedTypes.merge(closedHere);
    }
    return entries;
}

std::vector<std::filesystem::path> SharedMimeInfo::environmentDataFolders() {
    std::vector<std::filesystem::path> folders;
    const auto add = [&folders](const std::filesystem::path& folder) {
        // The base directory rules say that relative folders are to be ignored.
        if (folder.is_absolute())
            folders.push_back(folder);
    };
    add(environment("XDG_DATA_HOME", environment("HOME", "") + "/.local/share"));
    const std::string shared = environment("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    std::string_view rest = shared;
    while (!rest.empty())
        add(takeUntil(':', rest));
    return folders;
}

} // namespace corvanta
