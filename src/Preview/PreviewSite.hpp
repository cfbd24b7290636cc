#pragma once

#include "Platform/FileManager.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// Ties the preview's address space to a folder: "vmpreview://dokument/" is `root`, and everything below it
/// is named as it later will be on a web server whose document root is that folder. URLs are UTF-8.
struct PreviewSite {
    static constexpr std::string_view scheme = "vmpreview";
    static constexpr std::string_view host = "dokument";

    /// The root folder of the site, with ".", ".." and symbolic links resolved.
    std::filesystem::path root;

    /// The document's path below `root`: components joined by "/", no leading "/", never empty.
    std::string documentPath;

    /// The site of `document` below `root`, or nothing when the document does not lie strictly inside it.
    static std::optional<PreviewSite> make(const std::filesystem::path& document,
                                           const std::filesystem::path& root, const FileManager& fileManager);

    /// The URL that shows the document. `isDocument` holds for it whenever `documentPath` is valid UTF-8.
    std::string documentRequestURL() const;

    /// Whether a request for `url` asks for the document.
    bool isDocument(std::string_view url) const;

    /// The file strictly inside the root that `url` names, or nothing. The disk is not asked: the file need
    /// not exist, and a link inside the root is not resolved.
    std::optional<std::filesystem::path> fileURL(std::string_view url) const;

    /// The path of `file` below `root`, or nothing when it does not lie strictly inside. Compared component
    /// by component, exactly, after resolving "." and ".." in both.
    static std::optional<std::string> relativePath(const std::filesystem::path& file,
                                                   const std::filesystem::path& root);

    /// The path that `url` asks for, decoded, without its first slash; may be empty. Query and fragment do
    /// not belong to it.
    static std::string requestedPath(std::string_view url);

    friend bool operator==(const PreviewSite&, const PreviewSite&) = default;
};

} // namespace corvanta
