#include "Corvanta/HTMLDocument.hpp"

#include "Corvanta/DocumentError.hpp"
#include "EditorCore/TextDecoding.hpp"

#include <array>
#include <utility>

namespace corvanta {

namespace {

const std::array<ContentType, 7>& contentTypes() {
    static const std::array<ContentType, 7> types{{
        {"HTML", {"text/html", "application/xhtml+xml"}, {"html", "htm", "shtml", "xhtml"}},
        {"CSS", {"text/css"}, {"css"}},
        {"JavaScript", {"text/javascript", "application/javascript"}, {"js", "mjs", "cjs"}},
        {"PHP", {"application/x-php"}, {"php", "phtml", "inc"}},
        {"Reiner Text", {"text/plain"}, {"txt", "text"}},
        {"Quelltext",
         {"text/x-csrc", "text/x-chdr", "text/x-c++src", "text/x-c++hdr", "text/x-java", "text/x-python",
          "application/x-shellscript", "application/x-ruby", "application/x-perl", "text/rust"},
         {"c", "h", "cc", "cpp", "hpp", "java", "py", "sh", "rb", "pl", "rs", "go", "ts", "swift", "m"}},
        {"Text",
         {"text/*", "application/json", "application/xml", "image/svg+xml"},
         {"json", "xml", "svg", "md", "csv", "ini", "conf", "yaml", "yml"}},
    }};
    return types;
}

constexpr std::size_t writableCount = 5;

} // namespace

std::span<const ContentType> HTMLDocument::readableContentTypes() {
    return contentTypes();
}

std::span<const ContentType> HTMLDocument::writableContentTypes() {
    return readableContentTypes().first(writableCount);
}

std::optional<HTMLDocument> HTMLDocument::read(const FileManager& fileManager,
                                               const std::filesystem::path& path, std::error_code& error) {
    std::optional<std::string> bytes = fileManager.contents(path, error);
    if (!bytes) {
        // The reason does not matter to whoever opens a document, only that there is none.
        error = DocumentError::fileReadCorruptFile;
        return std::nullopt;
    }
    return fromFileContents(*std::move(bytes));
}

HTMLDocument HTMLDocument::fromFileContents(std::string bytes) {
    return HTMLDocument{TextDecoding::string(std::move(bytes))};
}

} // namespace corvanta
