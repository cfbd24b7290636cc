#include "Preview/PreviewMIMEType.hpp"

#include "EditorCore/ASCII.hpp"

#include <string_view>
#include <unordered_map>

namespace corvanta {

namespace {

/// What does not depend on the desktop's settings: the types of everyday web files, by extension. PHP is
/// shown as the markup that it is, unexecuted.
const std::unordered_map<std::string_view, std::string_view>& known() {
    static const std::unordered_map<std::string_view, std::string_view> table{
        {"html", "text/html"},
        {"htm", "text/html"},
        {"xhtml", "application/xhtml+xml"},
        {"shtml", "text/html"},
        {"php", "text/html"},
        {"css", "text/css"},
        {"js", "text/javascript"},
        {"mjs", "text/javascript"},
        {"json", "application/json"},
        {"map", "application/json"},
        {"xml", "application/xml"},
        {"txt", "text/plain"},
        {"svg", "image/svg+xml"},
        {"png", "image/png"},
        {"jpg", "image/jpeg"},
        {"jpeg", "image/jpeg"},
        {"gif", "image/gif"},
        {"webp", "image/webp"},
        {"avif", "image/avif"},
        {"ico", "image/x-icon"},
        {"bmp", "image/bmp"},
        {"woff", "font/woff"},
        {"woff2", "font/woff2"},
        {"ttf", "font/ttf"},
        {"otf", "font/otf"},
        {"eot", "application/vnd.ms-fontobject"},
        {"mp4", "video/mp4"},
        {"webm", "video/webm"},
        {"mov", "video/quicktime"},
        {"mp3", "audio/mpeg"},
        {"ogg", "audio/ogg"},
        {"wav", "audio/wav"},
        {"pdf", "application/pdf"},
    };
    return table;
}

/// Lower case, without the dot; empty when the name has none.
std::string pathExtension(const std::filesystem::path& file) {
    std::string extension = ASCII::lowercased(file.extension().native());
    if (extension.starts_with('.'))
        extension.erase(0, 1);
    return extension;
}

} // namespace

std::string PreviewMIMEType::forFile(const std::filesystem::path& file, const TypeRegistry& registry) {
    const std::string extension = pathExtension(file);
    if (const auto row = known().find(extension); row != known().end())
        return std::string(row->second);
    return registry.mimeType(extension).value_or("application/octet-stream");
}

} // namespace corvanta
