#include "Preview/PreviewFolderAccess.hpp"

#include "DesignSystem/t.hpp"
#include "Preview/FallbackRoot.hpp"
#include "Preview/PreviewSite.hpp"
#include "Preview/StandardizedPath.hpp"

#include <algorithm>
#include <iterator>

namespace corvanta {

namespace {

constexpr std::string_view logCategory = "preview";

std::ptrdiff_t depth(const std::filesystem::path& folder) {
    return std::distance(folder.begin(), folder.end());
}

} // namespace

PreviewFolderAccess::PreviewFolderAccess(UserDefaults& defaults, const FolderBookmarks& folderBookmarks,
                                         const FileManager& fileManager, Log& log)
    : defaults_(defaults), folderBookmarks_(folderBookmarks), fileManager_(fileManager), log_(log) {
    restore();
}

void PreviewFolderAccess::restore() {
    const auto stored =
        defaults_.get<std::vector<std::string>>(defaultsKey).value_or(std::vector<std::string>());
    for (const std::string& bookmark : stored) {
        if (const std::optional<std::filesystem::path> folder = folderBookmarks_.resolve(bookmark))
            grants_.push_back({resolved(*folder), bookmark});
    }
    if (grants_.size() < stored.size())
        store();
    publish();
}

std::optional<std::filesystem::path> PreviewFolderAccess::root(const std::filesystem::path& document) const {
    if (std::optional<std::filesystem::path> released = releasedRoot(document))
        return released;
    return fallbackRoot(document);
}

std::optional<std::filesystem::path>
PreviewFolderAccess::releasedRoot(const std::filesystem::path& document) const {
    const std::filesystem::path file = resolved(document);
    std::optional<std::filesystem::path> deepest;
    for (const Grant& grant : grants_) {
        if (PreviewSite::relativePath(file, grant.folder) &&
            (!deepest || depth(grant.folder) > depth(*deepest)))
            deepest = grant.folder;
    }
    return deepest;
}

std::optional<std::filesystem::path>
PreviewFolderAccess::fallbackRoot(const std::filesystem::path& document) const {
    return corvanta::fallbackRoot(document, fileManager_);
}

void PreviewFolderAccess::requestAccess(const std::filesystem::path& document, FolderPanel& panel) {
    panel.choose({document.parent_path(), t("Freigeben"),
                  t("Wähle den Ordner, der die Wurzel deiner Website ist. Die Vorschau liest daraus Bilder, "
                    "Stylesheets, "
                    "Skripte und Schriften. Pfade wie /bilder/kopf.jpg beziehen sich auf diesen Ordner.")},
                 [this, document](const std::optional<std::filesystem::path>& folder) {
                     if (folder)
                         grantIfItHolds(document, resolved(*folder));
                 });
}

void PreviewFolderAccess::grantIfItHolds(const std::filesystem::path& document,
                                         const std::filesystem::path& folder) {
    if (!PreviewSite::relativePath(resolved(document), folder)) {
        log_.info(logCategory, "released folder does not contain the document — ignored");
        return;
    }
    remember(folder);
}

void PreviewFolderAccess::remember(const std::filesystem::path& folder) {
    grants_.push_back({folder, folderBookmarks_.make(folder)});
    if (grants_.back().bookmark)
        store();
    else
        log_.info(logCategory, "folder released but no bookmark could be made — access ends with the app");
    publish();
}

void PreviewFolderAccess::release(const std::filesystem::path& folder) {
    const auto grant = std::ranges::find(grants_, folder, &Grant::folder);
    if (grant == grants_.end())
        return;
    grants_.erase(grant);
    store();
    publish();
}

void PreviewFolderAccess::store() {
    std::vector<std::string> bookmarks;
    for (const Grant& grant : grants_) {
        if (grant.bookmark)
            bookmarks.push_back(*grant.bookmark);
    }
    defaults_.set(defaultsKey, std::move(bookmarks));
}

void PreviewFolderAccess::publish() {
    Folders folders;
    std::ranges::transform(grants_, std::back_inserter(folders), &Grant::folder);
    releasedFolders = std::move(folders);
}

std::filesystem::path PreviewFolderAccess::resolved(const std::filesystem::path& path) const {
    return standardizedPath(fileManager_.resolvingSymlinks(standardizedPath(path)));
}

} // namespace corvanta
