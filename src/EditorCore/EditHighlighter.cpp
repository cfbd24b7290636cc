#include "EditorCore/EditHighlighter.hpp"

#include "EditorCore/SyntaxHighlighter.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"

#include <algorithm>
#include <string>

namespace corvanta {

namespace {

/// The least distance of two checkpoints in bytes: an edit costs the reading of about this much.
constexpr std::int64_t spacing = 2048;

/// How many bytes are read at first behind what changed, and by what factor more each time the old spans did
/// not go on there.
constexpr std::int64_t firstReading = 8 * spacing;
constexpr std::int64_t growth = 8;

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
    const SyntaxCheckpoint start =
        firstInvalid == checkpoints_.begin() ? SyntaxCheckpoint{} : *(firstInvalid - 1);

    std::int64_t length = firstReading;
    Reading reading;
    do {
        const std::int64_t lastByte = text.atByte(size - change.unchangedAfter + length).byte;
        reading = read(text, start, lastByte, old);
        length = lastByte < size ? length * growth : 0;
    } while (!reading.met && length > 0);

    SyntaxHighlighter::paint(textStorage_, {start.codeUnit, reading.end - start.codeUnit}, reading.spans,
                             theme, font, baseColor);

    const auto kept = reading.met.value_or(checkpoints_.end());
    std::transform(kept, checkpoints_.end(), kept, [&](const SyntaxCheckpoint& checkpoint) {
        return moved(checkpoint, bytesAdded, codeUnitsAdded);
    });
    const auto gap = checkpoints_.erase(firstInvalid, kept);
    checkpoints_.insert(gap, reading.found.begin(), reading.found.end());
    bytes_ = size;
    codeUnits_ = textStorage_.length();
}

/// Reads the text from `start` to `lastByte`, at most up to where one of the old checkpoints from `old` on
/// holds again. What is met so near to `lastByte` that the text behind it might matter does not count.
EditHighlighter::Reading EditHighlighter::read(const SharedText& text, const SyntaxCheckpoint& start,
                                               std::int64_t lastByte, Checkpoints::iterator old) {
    const std::int64_t bytesAdded = text.end().byte - bytes_;
    const bool toTheEnd = lastByte == text.end().byte;
    const std::string part = text.substring(start.byte, lastByte);

    Reading reading;
    reading.end = textStorage_.length();
    std::int64_t nextWanted = start.byte + spacing;
    SyntaxTokenizer::resume(
        part, moved(start, -start.byte, 0), reading.spans, [&](const SyntaxCheckpoint& inPart) {
            const SyntaxCheckpoint checkpoint = moved(inPart, start.byte, 0);
            if (!toTheEnd && checkpoint.byte + SyntaxTokenizer::lookAhead > lastByte)
                return SyntaxTokenizer::stop;
            while (old != checkpoints_.end() && old->byte + bytesAdded < checkpoint.byte)
                ++old;
            if (old != checkpoints_.end() && old->byte + bytesAdded == checkpoint.byte) {
                if (old->context == checkpoint.context) {
                    reading.met = old;
                    reading.end = checkpoint.codeUnit;
                    return SyntaxTokenizer::stop;
                }
                ++old;
            }
            if (checkpoint.byte >= nextWanted) {
                reading.found.push_back(checkpoint);
                nextWanted = checkpoint.byte + spacing;
            }
            const std::int64_t next =
                old == checkpoints_.end() ? nextWanted : std::min(nextWanted, old->byte + bytesAdded);
            return next - start.byte;
        });
    return reading;
}

} // namespace corvanta
