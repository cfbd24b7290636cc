#include "Tools/ColoredPieces.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace corvanta {

namespace {

std::string forTerminal(const ColoredPiece& piece) {
    if (!piece.color)
        return std::string(piece.text);
    return fmt::format("\x1b[38;2;{};{};{}m{}\x1b[39m", piece.color->red, piece.color->green,
                       piece.color->blue, piece.text);
}

/// `text` as the content of an element. Carriage returns are escaped, as a parser would drop them.
std::string escapedForHTML(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '\r':
            escaped += "&#13;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string forHTML(const ColoredPiece& piece) {
    if (!piece.color)
        return escapedForHTML(piece.text);
    return fmt::format(R"(<span style="color:#{:02X}{:02X}{:02X}">{}</span>)", piece.color->red,
                       piece.color->green, piece.color->blue, escapedForHTML(piece.text));
}

} // namespace

int runHighlight(const Arguments& arguments, Output& output) {
    const EditorTheme& theme = EditorTheme::theme(arguments.value("theme").value_or("dezent"));
    const Appearance appearance = arguments.has("dark") ? Appearance::dark : Appearance::light;
    const bool isHTML = arguments.has("html");
    const std::string text = readText(arguments.operand(0));

    if (isHTML)
        output.write(R"(<pre class="corvanta">)");
    // A parser drops a line feed right behind the tag; it takes this one instead of the text's own.
    if (isHTML && text.starts_with('\n'))
        output.write("\n");
    for (const ColoredPiece& piece : coloredPieces(text, theme, appearance))
        output.write(isHTML ? forHTML(piece) : forTerminal(piece));
    if (isHTML)
        output.write("</pre>\n");
    return 0;
}

} // namespace corvanta
