#pragma once

#include <algorithm>
#include <cstdint>

namespace corvanta {

/// What several edits left as it was: how many bytes at the start and at the end of the text. Everything
/// between may have changed.
struct TextChange {
    std::int64_t unchangedBefore = 0;
    std::int64_t unchangedAfter = 0;

    /// What is left as it was after a further change.
    constexpr TextChange united(const TextChange& later) const {
        return {std::min(unchangedBefore, later.unchangedBefore),
                std::min(unchangedAfter, later.unchangedAfter)};
    }
};

} // namespace corvanta
