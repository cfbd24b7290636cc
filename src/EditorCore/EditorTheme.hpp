#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/SyntaxToken.hpp"

#include <array>
#include <map>
#include <string>
#include <string_view>

namespace corvanta {

/// A set of colours for the code pane.
struct EditorTheme {
    /// The key that the settings store.
    std::string id;
    std::map<SyntaxToken, DynamicColor> colors;

    static const EditorTheme& dezent();
    static const EditorTheme& klassisch();
    static const EditorTheme& kontrast();

    /// The built-in themes in the order of the theme picker.
    static const std::array<const EditorTheme*, 3>& all();

    /// The built-in theme with exactly this id, else `dezent`.
    static const EditorTheme& theme(std::string_view id);

    /// The display name that belongs to `id`; German, not translated.
    std::string_view anzeige() const;

    /// The colour for `token`, or the standard text colour when the theme has none for it.
    DynamicColor color(SyntaxToken token) const;
};

/// The colour of text that nothing else colours: black on light, white on dark.
inline constexpr DynamicColor standardTextColor{{0, 0, 0}, {255, 255, 255}};

} // namespace corvanta
