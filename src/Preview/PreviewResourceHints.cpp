#include "Preview/PreviewResourceHints.hpp"

#include "EditorCore/ASCII.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvanta {

namespace {

constexpr std::array<std::string_view, 4> attributeMarkers{"src=", "href=", "srcset=", "data-src="};

constexpr std::array<std::string_view, 9> externalPrefixes{"http://", "https://", "//",          "data:", "#",
                                                           "mailto:", "tel:",     "javascript:", "about:"};

/// How far behind a marker its value is looked for, in characters. All characters that matter are ASCII, so
/// counting bytes gives the same answer.
constexpr std::size_t reach = 200;

bool endsInMarker(std::string_view text) {
    return std::ranges::any_of(attributeMarkers, [text](std::string_view marker) {
        return text.size() >= marker.size() &&
               ASCII::equals(text.substr(text.size() - marker.size()), marker);
    });
}

/// Whether the text behind a marker begins with the name of a local file.
bool namesLocalFile(std::string_view text) {
    const std::string_view piece = text.substr(0, reach);
    const std::size_t start = piece.find_first_not_of("\"' ");
    if (start == std::string_view::npos)
        return false;
    const std::string_view value = piece.substr(start);
    return std::ranges::none_of(externalPrefixes, [value](std::string_view prefix) {
        return ASCII::equals(value.substr(0, prefix.size()), prefix);
    });
}

} // namespace

bool PreviewResourceHints::referencesLocalFiles(std::string_view html) {
    // Every marker ends in "=", so one pass over the equals signs finds them all.
    for (std::size_t position = html.find('='); position != std::string_view::npos;
         position = html.find('=', position + 1)) {
        if (endsInMarker(html.substr(0, position + 1)) && namesLocalFile(html.substr(position + 1)))
            return true;
    }
    return false;
}

} // namespace corvanta
