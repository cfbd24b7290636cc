#pragma once

#include "EditorCore/SyntaxSpan.hpp"

#include <cstdint>
#include <deque>
#include <vector>

namespace corvanta {

/// The coloured runs of a text that is being edited, in ascending order. They move with the text: what an
/// edit costs depends on how far it lies from the last one, not on how many runs there are. Ranges count
/// UTF-16 code units; a text has less than 2^32 of them.
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
    /// A run in half the room of a span: a large page has a million.
    struct Run {
        /// Of a run before the gap its start; of one behind it the distance of its start from the end of the
        /// text, which an edit before it does not change.
        std::uint32_t place = 0;
        std::uint32_t length = 0;
        SyntaxToken token{};
    };

    static SyntaxSpan fromStart(const Run& run) { return {{run.place, run.length}, run.token}; }
    SyntaxSpan fromEnd(const Run& run) const { return {{textLength_ - run.place, run.length}, run.token}; }
    void pushBefore(const SyntaxSpan& run);
    void pushBehind(const SyntaxSpan& run);
    void moveGap(std::int64_t location);

    std::int64_t textLength_ = 0;

    /// The runs that start before the gap, in order, and those behind it, the nearest last. The gap is where
    /// the last change was. Growing moves none of them, and the memory that one gives up the other takes.
    std::deque<Run> before_;
    std::deque<Run> behind_;
};

} // namespace corvanta
