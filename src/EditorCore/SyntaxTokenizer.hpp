#pragma once

#include "EditorCore/SyntaxCheckpoint.hpp"
#include "EditorCore/SyntaxSpan.hpp"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace corvanta {

/// Cuts the text of a page (markup, scripts, style sheets and PHP in one file) into the spans that are
/// coloured. A pure function of the text; every input has an answer.
struct SyntaxTokenizer {
    SyntaxTokenizer() = delete;

    /// The spans of `text` (UTF-8) in ascending order, never overlapping, none empty. Ranges count UTF-16
    /// code units.
    static std::vector<SyntaxSpan> tokenize(std::string_view text);

    /// Hands the same spans to `consume`, some at a time: the list of a large page is larger than the page,
    /// and memory for it costs more than the tokenizing.
    using Consume = std::function<void(std::span<const SyntaxSpan>)>;
    static void tokenize(std::string_view text, const Consume& consume);

    /// Is shown the spans behind the last checkpoint that it saw, and the checkpoint at which they end;
    /// answers with the byte from which on it wants to see the next one, or `stop`.
    using Visit = std::function<std::int64_t(std::span<const SyntaxSpan>, const SyntaxCheckpoint&)>;
    static constexpr std::int64_t stop = -1;

    /// An edit at least this many bytes behind a checkpoint does not change the spans before the checkpoint.
    static constexpr std::int64_t lookAhead = 16;

    /// Shows `visit` the spans from `checkpoint` to the end of the text, which it sees as the last
    /// checkpoint, or to the one at which it answers `stop`. A checkpoint holds for every text that is the
    /// same up to it and `lookAhead` bytes beyond.
    static void resume(std::string_view text, const SyntaxCheckpoint& checkpoint, const Visit& visit);
};

} // namespace corvanta
