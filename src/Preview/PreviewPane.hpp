#pragma once

#include "Platform/FileManager.hpp"
#include "Platform/Published.hpp"
#include "Platform/Subscription.hpp"
#include "Preview/PreviewFolderAccess.hpp"
#include "Preview/PreviewSite.hpp"

#include <sigc++/signal.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace corvanta {

/// What the preview column of a document window shows: the page, its site, and what stands in the way of the
/// files that the page links.
class PreviewPane {
public:
    /// Why linked files cannot show.
    enum class Obstacle {
        /// The document has no file yet.
        unsaved,
        /// No granted folder holds the document.
        needsFolder
    };

    /// `access` and `fileManager` outlive the pane.
    PreviewPane(PreviewFolderAccess& access, const FileManager& fileManager);

    /// `html` (UTF-8) is the document's text, `documentURL` its file, absent for a document never saved.
    void update(const std::string& html, const std::optional<std::filesystem::path>& documentURL);

    /// To be called for each linked file that could not be delivered. The first one stays.
    void reportMissing(const std::string& path);

    const std::string& html() const { return html_; }
    const std::optional<std::filesystem::path>& documentURL() const { return documentURL_; }
    const std::optional<PreviewSite>& site() const { return site_; }
    std::optional<Obstacle> obstacle() const;

    /// The path of the linked file that was reported missing first since the site changed.
    const std::optional<std::string>& missingResource() const { return missingResource_; }

    /// What the user is told of `obstacle`.
    static std::string hint(Obstacle obstacle);

    /// What the user is told of the missing file; nothing when none is known.
    std::optional<std::string> missingResourceLine() const;

    /// Calls `observer` after each change of what is shown, as long as the returned subscription lives.
    [[nodiscard]] Subscription subscribe(const std::function<void()>& observer) {
        return Subscription(changed_.connect(observer));
    }

private:
    std::optional<PreviewSite> currentSite() const;
    void refresh();

    PreviewFolderAccess& access_;
    const FileManager& fileManager_;
    std::string html_;
    std::optional<std::filesystem::path> documentURL_;
    std::optional<PreviewSite> site_;
    std::optional<std::string> missingResource_;
    sigc::signal<void()> changed_;
    Subscription foldersChanged_;
};

} // namespace corvanta
