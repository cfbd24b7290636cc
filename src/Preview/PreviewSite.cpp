#include "Preview/PreviewSite.hpp"

#include "Preview/PercentEncoding.hpp"
#include "Preview/StandardizedPath.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace corvanta {

namespace {

/// The path of `url` as it stands there, still escaped (RFC 3986, appendix B). Also finds the path of a text
/// that is no proper URL, one with a blank in it for example: a page may hold any address, and what the user
/// meant by it is the file of that name.
std::string_view escapedPath(std::string_view url) {
    url = url.substr(0, url.find_first_of("?#"));

    const std::size_t schemeEnd = url.find_first_of(":/");
    if (schemeEnd != std::string_view::npos && schemeEnd > 0 && url[schemeEnd] == ':')
        url.remove_prefix(schemeEnd + 1);

    if (url.starts_with("//"))
        url.remove_prefix(std::min(url.find('/', 2), url.size()));
    return url;
}

/// `path` without its escapes, or as it is when they cannot be decoded.
std::string decoded(std::string path) {
    if (std::optional<std::string> result = PercentEncoding::removing(path))
        return *std::move(result);
    return path;
}

std::string escapingPercentSigns(std::string_view path) {
    std::string escaped;
    for (const char byte : path)
        escaped += byte == '%' ? std::string("%25") : std::string(1, byte);
    return escaped;
}

} // namespace

std::optional<PreviewSite> PreviewSite::make(const std::filesystem::path& document,
                                             const std::filesystem::path& root,
                                             const FileManager& fileManager) {
    std::filesystem::path resolvedRoot =
        standardizedPath(fileManager.resolvingSymlinks(standardizedPath(root)));
    std::optional<std::string> documentPath =
        relativePath(fileManager.resolvingSymlinks(standardizedPath(document)), resolvedRoot);
    if (!documentPath)
        return std::nullopt;
    return PreviewSite{std::move(resolvedRoot), *std::move(documentPath)};
}

std::string PreviewSite::documentRequestURL() const {
    // Requests are decoded twice. A name that itself looks escaped ("100%25.html") would come back as another
    // one, so its percent signs are escaped once more; every other name survives the second decoding as it
    // is.
    const std::string path =
        decoded(documentPath) == documentPath ? documentPath : escapingPercentSigns(documentPath);
    return fmt::format("{}://{}/{}", scheme, host, PercentEncoding::encodingPath(path));
}

bool PreviewSite::isDocument(std::string_view url) const {
    return requestedPath(url) == documentPath;
}

std::optional<std::filesystem::path> PreviewSite::fileURL(std::string_view url) const {
    const std::string path = requestedPath(url);
    // The system's calls end a name at its first NUL and would open another file than the one that was
    // checked.
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::nullopt;

    // Joined as text: operator/ would let a path with a slash of its own at the start replace the root.
    std::filesystem::path file = standardizedPath(root.native() + "/" + path);
    if (!relativePath(file, root))
        return std::nullopt;
    return file;
}

std::optional<std::string> PreviewSite::relativePath(const std::filesystem::path& file,
                                                     const std::filesystem::path& root) {
    const std::filesystem::path inner = standardizedPath(file);
    const std::filesystem::path outer = standardizedPath(root);
    const auto [innerRest, outerRest] = std::mismatch(inner.begin(), inner.end(), outer.begin(), outer.end());
    if (outerRest != outer.end() || innerRest == inner.end())
        return std::nullopt;

    std::string relative = innerRest->native();
    for (auto component = std::next(innerRest); component != inner.end(); ++component)
        relative += "/" + component->native();
    return relative;
}

std::string PreviewSite::requestedPath(std::string_view url) {
    // Decoded twice on purpose: pages made elsewhere hold addresses that were escaped once too often, and a
    // path that is plain after the first decoding is not changed by the second.
    std::string path = decoded(decoded(std::string(escapedPath(url))));
    if (path.starts_with('/'))
        path.erase(0, 1);
    return path;
}

} // namespace corvanta
