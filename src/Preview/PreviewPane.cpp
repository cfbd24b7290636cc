#include "Preview/PreviewPane.hpp"

#include "DesignSystem/t.hpp"
#include "Preview/PreviewResourceHints.hpp"

#include <string_view>

namespace corvanta {

PreviewPane::PreviewPane(PreviewFolderAccess& access, const FileManager& fileManager)
    : access_(access),
      fileManager_(fileManager),
      foldersChanged_(
          access.releasedFolders.subscribe([this](const PreviewFolderAccess::Folders&) { refresh(); })) {}

void PreviewPane::update(const std::string& html, const std::optional<std::filesystem::path>& documentURL) {
    html_ = html;
    documentURL_ = documentURL;
    refresh();
}

void PreviewPane::refresh() {
    std::optional<PreviewSite> site = currentSite();
    if (site_ != site) {
        site_ = std::move(site);
        missingResource_.reset();
    }
    changed_.emit();
}

std::optional<PreviewSite> PreviewPane::currentSite() const {
    if (!documentURL_)
        return std::nullopt;
    const std::optional<std::filesystem::path> root = access_.root(*documentURL_);
    if (!root)
        return std::nullopt;
    return PreviewSite::make(*documentURL_, *root, fileManager_);
}

std::optional<PreviewPane::Obstacle> PreviewPane::obstacle() const {
    if (!PreviewResourceHints::referencesLocalFiles(html_))
        return std::nullopt;
    if (!documentURL_)
        return Obstacle::unsaved;
    if (access_.releasedRoot(*documentURL_))
        return std::nullopt;
    return Obstacle::needsFolder;
}

void PreviewPane::reportMissing(const std::string& path) {
    if (missingResource_)
        return;
    missingResource_ = path;
    changed_.emit();
}

std::string PreviewPane::hint(Obstacle obstacle) {
    return obstacle == Obstacle::unsaved
               ? t("Verknüpfte Bilder und Stylesheets erscheinen, sobald die Datei gesichert ist.")
               : t("Für verknüpfte Bilder und CSS-Dateien braucht die Vorschau Zugriff auf den "
                   "Projektordner.");
}

std::optional<std::string> PreviewPane::missingResourceLine() const {
    if (!missingResource_)
        return std::nullopt;
    return t("Nicht gefunden: %@", *missingResource_);
}

} // namespace corvanta
