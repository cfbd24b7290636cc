#pragma once

#include "Platform/FileManager.hpp"
#include "Platform/Log.hpp"
#include "Preview/PreviewSite.hpp"
#include "Preview/SchemeTask.hpp"
#include "Preview/TypeRegistry.hpp"

#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace corvanta {

/// Answers every request that the preview's web view makes: the document from memory, so that the preview
/// shows the text in the editor, saved or not, and every other path with the file of that name below the
/// site's root. Lives as long as its web view; used on the main thread only.
class PreviewSchemeHandler {
public:
    /// The document's text (UTF-8) at the moment of the request.
    using HTMLSource = std::function<std::string()>;
    using MissingResourceReport = std::function<void(const std::string& requestedPath)>;

    /// `fileManager`, `registry` and `log` must outlive this object. `onMissingResource` hears of each path
    /// that could not be delivered, once.
    PreviewSchemeHandler(const FileManager& fileManager, const TypeRegistry& registry, Log& log,
                         std::optional<PreviewSite> site, HTMLSource currentHTML,
                         MissingResourceReport onMissingResource);

    const std::optional<PreviewSite>& site() const { return site_; }

    /// Without a site nothing is served.
    void setSite(std::optional<PreviewSite> site) { site_ = std::move(site); }

    void setCurrentHTML(HTMLSource currentHTML) { currentHTML_ = std::move(currentHTML); }

    /// The requested paths that were reported so far; a path stays reported, also after a reload.
    const std::set<std::string>& missingResources() const { return missingResources_; }

    /// Answers `task` completely before it returns.
    void start(SchemeTask& task);

    /// The web view gave `task` up. There is nothing to cancel: no task is open by then.
    static void stop(SchemeTask& /*task*/) {}

    /// The Content-Type of `file` when it is served. Text is always declared UTF-8, whatever the file holds.
    static std::string contentType(const std::filesystem::path& file, const TypeRegistry& registry);

    /// The Content-Type of the document, which comes from memory and not from a file.
    static constexpr std::string_view documentContentType = "text/html; charset=utf-8";

private:
    /// Answers `task` with `file`; false, and no answer, when it cannot be read.
    bool deliver(const std::filesystem::path& file, SchemeTask& task, const std::string& url) const;
    void reportMissing(const std::string& url);

    const FileManager& fileManager_;
    const TypeRegistry& registry_;
    Log& log_;
    std::optional<PreviewSite> site_;
    HTMLSource currentHTML_;
    std::set<std::string> missingResources_;
    MissingResourceReport onMissingResource_;
};

} // namespace corvanta
