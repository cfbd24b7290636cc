// Whatever a page asks for, the preview never names a file outside the site's root; and whatever a document
// is called, its own URL finds it.

#include "EditorCore/Utf8.hpp"
#include "Preview/PreviewSite.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

/// Checked without the code that is tried.
bool liesStrictlyInside(const std::filesystem::path& file, std::string_view root) {
    const std::string_view path = file.native();
    const std::string_view prefix = root == "/" ? "" : root;
    if (!path.starts_with(prefix) || path.size() <= prefix.size() + 1 || path[prefix.size()] != '/')
        return false;
    for (const std::filesystem::path& component : file) {
        if (component == ".." || component == "." || component.empty())
            return false;
    }
    return path.find('\0') == std::string_view::npos;
}

void tryRequest(std::string_view url, const char* root) {
    const corvanta::PreviewSite site{root, "blog/index.html"};
    const std::string requested = corvanta::PreviewSite::requestedPath(url);
    require(site.isDocument(url) == (requested == site.documentPath));
    if (const auto file = site.fileURL(url)) {
        require(liesStrictlyInside(*file, root));
        require(!requested.empty());
    }
}

void tryDocument(std::string_view name) {
    if (name.empty() || !corvanta::Utf8::isValid(name))
        return;
    const corvanta::PreviewSite site{"/web", std::string(name)};
    require(site.isDocument(site.documentRequestURL()));
    require(site.isDocument(site.documentRequestURL() + "?a/b#c"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    tryRequest(text, "/web/seite");
    tryRequest(text, "/");
    tryDocument(text);
    return 0;
}
