#include "EditorCore/EditorTheme.hpp"

#include <algorithm>

namespace corvanta {

// The themes are made at their first use; the language makes that safe from several threads.

/// Muted greys with one green. The attributes' grey is the same in both appearances, and numbers look like
/// strings.
const EditorTheme& EditorTheme::dezent() {
    static const EditorTheme theme{"dezent",
                                   {{SyntaxToken::tag, {{74, 76, 78}, {182, 184, 186}}},
                                    {SyntaxToken::attribute, {{142, 144, 146}, {142, 144, 146}}},
                                    {SyntaxToken::string, {{111, 157, 0}, {132, 189, 0}}},
                                    {SyntaxToken::comment, {{176, 178, 180}, {90, 92, 94}}},
                                    {SyntaxToken::keyword, {{44, 46, 48}, {216, 218, 220}}},
                                    {SyntaxToken::number, {{111, 157, 0}, {132, 189, 0}}}}};
    return theme;
}

const EditorTheme& EditorTheme::klassisch() {
    static const EditorTheme theme{"klassisch",
                                   {{SyntaxToken::tag, {{11, 96, 200}, {100, 168, 240}}},
                                    {SyntaxToken::attribute, {{14, 126, 126}, {76, 194, 194}}},
                                    {SyntaxToken::string, {{196, 26, 22}, {252, 106, 93}}},
                                    {SyntaxToken::comment, {{23, 117, 0}, {108, 153, 85}}},
                                    {SyntaxToken::keyword, {{139, 44, 168}, {208, 139, 224}}},
                                    {SyntaxToken::number, {{178, 89, 0}, {240, 160, 69}}}}};
    return theme;
}

const EditorTheme& EditorTheme::kontrast() {
    static const EditorTheme theme{"kontrast",
                                   {{SyntaxToken::tag, {{0, 0, 204}, {122, 168, 255}}},
                                    {SyntaxToken::attribute, {{0, 90, 90}, {58, 220, 220}}},
                                    {SyntaxToken::string, {{184, 0, 0}, {255, 122, 122}}},
                                    {SyntaxToken::comment, {{90, 90, 90}, {168, 168, 168}}},
                                    {SyntaxToken::keyword, {{106, 0, 168}, {224, 139, 255}}},
                                    {SyntaxToken::number, {{154, 74, 0}, {255, 178, 90}}}}};
    return theme;
}

const std::array<const EditorTheme*, 3>& EditorTheme::all() {
    static const std::array<const EditorTheme*, 3> themes{&dezent(), &klassisch(), &kontrast()};
    return themes;
}

const EditorTheme& EditorTheme::theme(std::string_view id) {
    const auto* const found =
        std::find_if(all().begin(), all().end(), [id](const auto* theme) { return theme->id == id; });
    return found == all().end() ? dezent() : **found;
}

std::string_view EditorTheme::anzeige() const {
    if (id == "klassisch")
        return "Klassisch";
    if (id == "kontrast")
        return "Kontrast";
    return "Dezent (Standard)";
}

DynamicColor EditorTheme::color(SyntaxToken token) const {
    const auto found = colors.find(token);
    return found == colors.end() ? standardTextColor : found->second;
}

} // namespace corvanta
