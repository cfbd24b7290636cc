#pragma once

#include "EditorCore/SyntaxSpan.hpp"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace corvanta {

/// What a text view shows of the colours: the picture, beside the list of runs that is the truth. The view's
/// colours move with the text by themselves when it is edited, and this list moves with them, so that only
/// what really differs has to be painted. Ranges count UTF-16 code units.
class PaintedRuns {
public:
    /// Tells that `length` units now stand at `location`. Inside a coloured run they take its colour. Beside
    /// one it is the view that decides whether they do; what it shows there counts as unknown.
    void didInsert(std::int64_t location, std::int64_t length);

    /// Tells that the text in `range` is gone.
    void didErase(TextRange range);

    /// Tells that the text in `range` now shows `wanted`, cut to the range.
    void didPaint(TextRange range, std::span<const SyntaxSpan> wanted);

    /// The smallest part of `range` outside which the view shows `wanted`; nothing when it shows it
    /// everywhere.
    std::optional<TextRange> staleRange(TextRange range, std::span<const SyntaxSpan> wanted) const;

private:
    /// A coloured stretch; without a token what it shows is unknown.
    struct Run {
        TextRange range;
        std::optional<SyntaxToken> token;

        friend bool operator==(const Run&, const Run&) = default;
    };

    static std::vector<Run> clipped(std::span<const Run> runs, TextRange range);
    static std::vector<Run> clipped(std::span<const SyntaxSpan> spans, TextRange range);
    std::vector<Run>::iterator firstEndingAfter(std::int64_t location);
    void joinAt(std::int64_t location);
    std::span<const Run> overlapping(TextRange range) const;

    std::vector<Run> runs_;
};

/// The part of `spans`, which are in ascending order, that overlaps `range`.
std::span<const SyntaxSpan> overlapping(std::span<const SyntaxSpan> spans, TextRange range);

} // namespace corvanta
