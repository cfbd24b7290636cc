#include "EditorCore/EditHighlighter.hpp"

#include "EditorCore/SyntaxTokenizer.hpp"

#include <algorithm>
#include <span>
#include <string>

namespace corvanta {

namespace {

/// The least distance of two checkpoints in bytes: an edit costs the reading of about this much.
constexpr std::int64_t spacing = 2048;

/// How many bytes are read at first, and by what factor more each time that was not enough.
constexpr std::int64_t firstReading = 8 * spacing;
constexpr std::int64_t growth = 8;

/// The most bytes that are read at once as long as that gets on: a large text is not copied as a whole.
constexpr std::int64_t longestReading = 1 << 20;

SyntaxCheckpoint moved(SyntaxCheckpoint checkpoint, std::int64_t bytes, std::int64_t codeUnits) {
    checkpoint.byte += bytes;
    checkpoint.codeUnit += codeUnits;
    return checkpoint;
}

} // namespace

void EditHighlighter::highlightChange(const TextChange& change, const EditorTheme& theme,
                                      const EditorFont& font, const DynamicColor& baseColor) {
    const SharedText text = textStorage_.text();
    const std::int64_t size = text.end().byte;
    const std::int64_t bytesAdded = size - bytes_;
    const std::int64_t codeUnitsAdded = textStorage_.length() - codeUnits_;

    // The checkpoints that still hold before the change, and those behind it that may hold again.
    const auto firstInvalid = std::partition_point(
        checkpoints_.begin(), checkpoints_.end(), [&](const SyntaxCheckpoint& checkpoint) {
            return checkpoint.byte + SyntaxTokenizer::lookAhead <= change.unchangedBefore;
        });
    const auto old =
        std::partition_point(firstInvalid, checkpoints_.end(), [&](const SyntaxCheckpoint& checkpoint) {
            return checkpoint.byte < bytes_ - change.unchangedAfter;
        });
    Progress progress{
        firstInvalid == checkpoints_.begin() ? SyntaxCheckpoint{} : *(firstInvalid - 1), {}, old};
    {
        SyntaxPainting painting(textStorage_, theme, font, baseColor);
        std::int64_t length = firstReading;
        std::int64_t lastByte = 0;
        do {
            const std::int64_t start = progress.place.byte;
            lastByte = text.atByte(start + length).byte;
            readOn(text, lastByte, progress, painting);
            length *= growth;
            if (progress.place.byte > start)
                length = std::min(length, longestReading);
        } while (!progress.met && lastByte < size);
    }

    const auto kept = progress.met ? progress.old : checkpoints_.end();
    std::transform(kept, checkpoints_.end(), kept, [&](const SyntaxCheckpoint& checkpoint) {
        return moved(checkpoint, bytesAdded, codeUnitsAdded);
    });
    const auto gap = checkpoints_.erase(firstInvalid, kept);
    checkpoints_.insert(gap, progress.found.begin(), progress.found.end());
    bytes_ = size;
    codeUnits_ = textStorage_.length();
}

/// Colours the text up to `lastByte`, at most up to where one of the old checkpoints holds again. What is met
/// so near to `lastByte` that the text behind it might matter does not count.
void EditHighlighter::readOn(const SharedText& text, std::int64_t lastByte, Progress& progress,
                             SyntaxPainting& painting) {
    const std::int64_t size = text.end().byte;
    const std::int64_t bytesAdded = size - bytes_;
    const std::int64_t start = progress.place.byte;
    const std::string part = text.substring(start, lastByte);

    std::int64_t nextWanted = start + spacing;
    const auto visit = [&](std::span<const SyntaxSpan> spans, const SyntaxCheckpoint& inPart) {
        const SyntaxCheckpoint checkpoint = moved(inPart, start, 0);
        if (lastByte < size && checkpoint.byte + SyntaxTokenizer::lookAhead > lastByte)
            return SyntaxTokenizer::stop;
        painting.paint({progress.place.codeUnit, checkpoint.codeUnit - progress.place.codeUnit}, spans);
        progress.place = checkpoint;
        if (checkpoint.byte == size)
            return SyntaxTokenizer::stop;

        Checkpoints::iterator& old = progress.old;
        while (old != checkpoints_.end() && old->byte + bytesAdded < checkpoint.byte)
            ++old;
        if (old != checkpoints_.end() && old->byte + bytesAdded == checkpoint.byte) {
            progress.met = old->context == checkpoint.context;
            if (progress.met)
                return SyntaxTokenizer::stop;
            ++old;
        }
        if (checkpoint.byte >= nextWanted) {
            progress.found.push_back(checkpoint);
            nextWanted = checkpoint.byte + spacing;
        }
        const std::int64_t next =
            old == checkpoints_.end() ? nextWanted : std::min(nextWanted, old->byte + bytesAdded);
        return next - start;
    };
    SyntaxTokenizer::resume(part, moved(progress.place, -start, 0), visit);
}

} // namespace corvanta
