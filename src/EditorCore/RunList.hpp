#pragma once

#include "EditorCore/SyntaxSpan.hpp"

#include <cstdint>
#include <vector>

namespace corvanta {

/// The coloured runs of a text that is being edited, in ascending order. They move with the text: what an
/// edit costs depends on how far it lies from the last one, not on how many runs there are. Ranges count
/// UTF-16 code units.
class RunList {
public:
    /// Tells that `length` units now stand at `location`. Inside a run they belong to it, at its ends they do
    /// not.
    void didInsert(std::int64_t location, std::int64_t length);

    /// Tells that the text in `range` is gone.
    void didErase(TextRange range);

    /// Takes the colour from the text in `range`.
    void clear(TextRange range);

    /// Adds a run where the text has no colour.
    void add(const SyntaxSpan& run);

    /// The runs that have text in `range`, whole.
    std::vector<SyntaxSpan> overlapping(TextRange range) const;

private:
    /// A run by the distance of its start from the end of the text, which an edit before it does not change.
    struct RunFromEnd {
        std::int64_t distance = 0;
        std::int64_t length = 0;
        SyntaxToken token{};
    };

    SyntaxSpan fromStart(const RunFromEnd& run) const;
    RunFromEnd fromEnd(const SyntaxSpan& run) const;
    void moveGap(std::int64_t location);

    std::int64_t textLength_ = 0;

    /// The runs that start before the gap, in order, and those behind it, the nearest last. The gap is where
    /// the last change was.
    std::vector<SyntaxSpan> before_;
    std::vector<RunFromEnd> behind_;
};

} // namespace corvanta
