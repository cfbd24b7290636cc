#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/EditorTheme.hpp"
#include "Platform/Color.hpp"

#include <optional>
#include <string_view>
#include <vector>

namespace corvanta {

/// A stretch of text in one colour; without one, in that of plain text.
struct ColoredPiece {
    std::string_view text;
    std::optional<Color> color;
};

/// `text` (valid UTF-8) cut into the pieces that `theme` colours and those between them. Joined, they are the
/// whole text; they refer to it and must not outlive it.
std::vector<ColoredPiece> coloredPieces(std::string_view text, const EditorTheme& theme,
                                        Appearance appearance);

} // namespace corvanta
