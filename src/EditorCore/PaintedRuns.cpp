#include "EditorCore/PaintedRuns.hpp"

#include <algorithm>

namespace corvanta {

namespace {

TextRange fromTo(std::int64_t first, std::int64_t last) {
    return {first, last - first};
}

TextRange intersection(TextRange a, TextRange b) {
    return fromTo(std::max(a.location, b.location), std::min(a.end(), b.end()));
}

template <typename Run>
std::span<const Run> overlappingRuns(std::span<const Run> runs, TextRange range) {
    const auto first = std::partition_point(
        runs.begin(), runs.end(), [&](const Run& run) { return run.range.end() <= range.location; });
    const auto last = std::partition_point(first, runs.end(),
                                           [&](const Run& run) { return run.range.location < range.end(); });
    return {first, last};
}

/// Appends a run, or lengthens the last one where both show the same without a gap.
template <typename Run>
void append(std::vector<Run>& runs, const Run& run) {
    if (run.range.length <= 0)
        return;
    if (!runs.empty() && runs.back().token == run.token && runs.back().range.end() == run.range.location)
        runs.back().range.length += run.range.length;
    else
        runs.push_back(run);
}

} // namespace

std::span<const SyntaxSpan> overlapping(std::span<const SyntaxSpan> spans, TextRange range) {
    return overlappingRuns(spans, range);
}

std::span<const PaintedRuns::Run> PaintedRuns::overlapping(TextRange range) const {
    return overlappingRuns(std::span<const Run>(runs_), range);
}

std::vector<PaintedRuns::Run>::iterator PaintedRuns::firstEndingAfter(std::int64_t location) {
    return std::partition_point(runs_.begin(), runs_.end(),
                                [&](const Run& run) { return run.range.end() <= location; });
}

std::vector<PaintedRuns::Run> PaintedRuns::clipped(std::span<const Run> runs, TextRange range) {
    std::vector<Run> result;
    for (const Run& run : runs)
        append(result, Run{intersection(run.range, range), run.token});
    return result;
}

std::vector<PaintedRuns::Run> PaintedRuns::clipped(std::span<const SyntaxSpan> spans, TextRange range) {
    std::vector<Run> result;
    for (const SyntaxSpan& span : spans)
        append(result, Run{intersection(span.range, range), span.token});
    return result;
}

void PaintedRuns::didInsert(std::int64_t location, std::int64_t length) {
    auto run = std::partition_point(runs_.begin(), runs_.end(),
                                    [&](const Run& each) { return each.range.end() < location; });
    const bool isInside = run != runs_.end() && run->range.location < location && location < run->range.end();
    const bool touches = run != runs_.end() && run->range.location <= location && !isInside;
    if (isInside)
        run->range.length += length;
    if (run != runs_.end() && run->range.location < location)
        ++run;
    for (auto later = run; later != runs_.end(); ++later)
        later->range.location += length;
    if (touches)
        runs_.insert(run, Run{{location, length}, std::nullopt});
}

void PaintedRuns::didErase(TextRange range) {
    const auto first = firstEndingAfter(range.location);
    for (auto run = first; run != runs_.end(); ++run) {
        const auto moved = [&](std::int64_t location) {
            return location <= range.location ? location : std::max(range.location, location - range.length);
        };
        run->range = fromTo(moved(run->range.location), moved(run->range.end()));
    }
    runs_.erase(std::remove_if(first, runs_.end(), [](const Run& run) { return run.range.length == 0; }),
                runs_.end());
    joinAt(range.location);
}

/// What the view shows in one colour without a gap is one run, which text typed into it belongs to.
void PaintedRuns::joinAt(std::int64_t location) {
    const auto behind = firstEndingAfter(location);
    if (behind == runs_.begin() || behind == runs_.end() || behind->range.location != location)
        return;
    const auto before = behind - 1;
    if (before->range.end() != location || before->token != behind->token)
        return;
    before->range.length += behind->range.length;
    runs_.erase(behind);
}

void PaintedRuns::didPaint(TextRange range, std::span<const SyntaxSpan> wanted) {
    const std::span<const Run> replaced = overlapping(range);
    std::vector<Run> painted;
    if (!replaced.empty()) {
        append(painted, Run{fromTo(replaced.front().range.location, range.location), replaced.front().token});
    }
    for (const Run& run : clipped(corvanta::overlapping(wanted, range), range))
        append(painted, run);
    if (!replaced.empty())
        append(painted, Run{fromTo(range.end(), replaced.back().range.end()), replaced.back().token});

    const auto at = runs_.erase(runs_.begin() + (replaced.data() - runs_.data()),
                                runs_.begin() + (replaced.data() - runs_.data()) +
                                    static_cast<std::ptrdiff_t>(replaced.size()));
    runs_.insert(at, painted.begin(), painted.end());
}

std::optional<TextRange> PaintedRuns::staleRange(TextRange range, std::span<const SyntaxSpan> wanted) const {
    const std::vector<Run> shown = clipped(overlapping(range), range);
    const std::vector<Run> meant = clipped(corvanta::overlapping(wanted, range), range);

    const auto [shownFirst, meantFirst] =
        std::mismatch(shown.begin(), shown.end(), meant.begin(), meant.end());
    const auto shownLeft = std::make_reverse_iterator(shownFirst);
    const auto meantLeft = std::make_reverse_iterator(meantFirst);
    const auto [shownLast, meantLast] = std::mismatch(shown.rbegin(), shownLeft, meant.rbegin(), meantLeft);

    const bool shownDiffers = shownFirst != shown.end() && shownLast != shownLeft;
    const bool meantDiffers = meantFirst != meant.end() && meantLast != meantLeft;
    if (!shownDiffers && !meantDiffers)
        return std::nullopt;
    if (!shownDiffers)
        return fromTo(meantFirst->range.location, meantLast->range.end());
    if (!meantDiffers)
        return fromTo(shownFirst->range.location, shownLast->range.end());

    // Where both begin or end with the same colour, only what one of them has beyond the other is stale.
    const bool sameStart =
        shownFirst->range.location == meantFirst->range.location && shownFirst->token == meantFirst->token;
    const bool sameEnd =
        shownLast->range.end() == meantLast->range.end() && shownLast->token == meantLast->token;
    return fromTo(sameStart ? std::min(shownFirst->range.end(), meantFirst->range.end())
                            : std::min(shownFirst->range.location, meantFirst->range.location),
                  sameEnd ? std::max(shownLast->range.location, meantLast->range.location)
                          : std::max(shownLast->range.end(), meantLast->range.end()));
}

} // namespace corvanta
