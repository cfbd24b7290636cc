#include "Tools/ColoredPieces.hpp"

#include "EditorCore/SyntaxTokenizer.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace corvanta {

namespace {

/// Hands a text out from its start to its end, measured in UTF-16 code units.
class TextFeed {
public:
    explicit TextFeed(std::string_view text) : rest_(text) {}

    /// The next `codeUnits` of the text, which end between two characters.
    std::string_view take(std::int64_t codeUnits) {
        std::size_t length = 0;
        while (codeUnits > 0 && length < rest_.size()) {
            const auto lead = static_cast<std::uint8_t>(rest_[length]);
            length += lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
            codeUnits -= lead < 0xF0 ? 1 : 2;
        }
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view takeRest() { return std::exchange(rest_, {}); }

private:
    std::string_view rest_;
};

} // namespace

std::vector<ColoredPiece> coloredPieces(std::string_view text, const EditorTheme& theme,
                                        Appearance appearance) {
    std::vector<ColoredPiece> pieces;
    TextFeed feed(text);
    std::int64_t position = 0;
    SyntaxTokenizer::tokenize(text, [&](std::span<const SyntaxSpan> spans) {
        for (const SyntaxSpan& span : spans) {
            if (span.range.location > position)
                pieces.push_back({feed.take(span.range.location - position), std::nullopt});
            pieces.push_back({feed.take(span.range.length), theme.color(span.token).resolved(appearance)});
            position = span.range.end();
        }
    });
    if (const std::string_view rest = feed.takeRest(); !rest.empty())
        pieces.push_back({rest, std::nullopt});
    return pieces;
}

} // namespace corvanta
