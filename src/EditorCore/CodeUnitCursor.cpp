#include "EditorCore/CodeUnitCursor.hpp"

#include "EditorCore/Utf8.hpp"

namespace corvanta {

namespace {

/// How far to look ahead for ASCII: what was looked at should still be in the processor's cache when the
/// tokenizer gets there.
constexpr std::size_t lookAhead = 4096;

} // namespace

TextRange CodeUnitCursor::codeUnitsBeyondASCII(std::size_t start, std::size_t end) {
    const std::int64_t location = codeUnits(start);
    return {location, codeUnits(end) - location};
}

std::int64_t CodeUnitCursor::codeUnits(std::size_t offset) {
    if (offset > asciiUntil_) {
        const std::string_view passed = text_.substr(asciiUntil_, offset - asciiUntil_);
        surplus_ += static_cast<std::int64_t>(passed.size()) - Utf8::codeUnitCount(passed);
        asciiUntil_ = offset + Utf8::asciiPrefixLength(text_.substr(offset, lookAhead));
    }
    return static_cast<std::int64_t>(offset) - surplus_;
}

} // namespace corvanta
