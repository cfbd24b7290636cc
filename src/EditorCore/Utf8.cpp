#include "EditorCore/Utf8.hpp"

#include "EditorCore/ByteWord.hpp"
#include "EditorCore/ReadAhead.hpp"

#include <algorithm>
#include <array>

namespace corvanta {

namespace {

constexpr std::uint8_t byteAt(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint8_t>(bytes[offset]);
}

constexpr bool isContinuation(std::uint8_t byte) {
    return (byte & 0xC0U) == 0x80U;
}

/// What the first byte of a sequence asks of those after it.
struct Lead {
    /// Bytes in all; 0 when no sequence starts like this.
    std::uint8_t length = 0;
    /// The bounds of the second byte; any further one is a plain continuation byte.
    std::uint8_t secondFirst = 0x80;
    std::uint8_t secondLast = 0xBF;
};

/// The Unicode Standard, table "Well-Formed UTF-8 Byte Sequences".
constexpr std::array<Lead, 256> leads = [] {
    std::array<Lead, 256> table{};
    const auto fill = [&table](std::size_t first, std::size_t last, Lead lead) {
        for (std::size_t byte = first; byte <= last; ++byte)
            table[byte] = lead;
    };
    fill(0x00, 0x7F, {1});
    fill(0xC2, 0xDF, {2});
    fill(0xE0, 0xE0, {3, 0xA0, 0xBF});
    fill(0xE1, 0xEC, {3});
    fill(0xED, 0xED, {3, 0x80, 0x9F});
    fill(0xEE, 0xEF, {3});
    fill(0xF0, 0xF0, {4, 0x90, 0xBF});
    fill(0xF1, 0xF3, {4});
    fill(0xF4, 0xF4, {4, 0x80, 0x8F});
    return table;
}();

/// The sequence that starts at the front of some bytes.
struct Sequence {
    /// Of an ill-formed one: of its longest start that is well-formed so far, at least 1.
    std::size_t length = 0;
    bool isWellFormed = false;
};

constexpr Sequence firstSequence(std::string_view bytes) {
    const Lead& first = leads[byteAt(bytes, 0)];
    if (first.length <= 1)
        return {1, first.length == 1};
    if (bytes.size() < 2 || byteAt(bytes, 1) < first.secondFirst || byteAt(bytes, 1) > first.secondLast)
        return {1, false};

    std::size_t length = 2;
    while (length < std::min<std::size_t>(first.length, bytes.size()) &&
           isContinuation(byteAt(bytes, length)))
        ++length;
    return {length, length == first.length};
}

/// The number of bytes in the leading blocks that are ASCII throughout. One test for a whole block lets the
/// compiler use vector instructions.
std::size_t asciiBlocksLength(std::string_view bytes) {
    constexpr std::size_t blockSize = 64;
    std::size_t position = 0;
    while (bytes.size() - position >= blockSize && ByteWord(bytes.data() + position).notASCII() == 0) {
        std::uint8_t seen = 0;
        for (std::size_t i = 0; i < blockSize; ++i)
            seen |= byteAt(bytes, position + i);
        if (seen >= 0x80)
            break;
        position += blockSize;
    }
    return position;
}

/// The length of the longest start of `bytes` that is well-formed.
std::size_t validPrefixLength(std::string_view bytes) {
    std::size_t position = 0;
    for (;;) {
        position += Utf8::asciiPrefixLength(bytes.substr(position));
        while (position < bytes.size() && byteAt(bytes, position) >= 0x80) {
            const Sequence sequence = firstSequence(bytes.substr(position));
            if (!sequence.isWellFormed)
                return position;
            position += sequence.length;
        }
        if (position == bytes.size())
            return position;
    }
}

} // namespace

std::size_t Utf8::asciiPrefixLength(std::string_view bytes) {
    std::size_t position = asciiBlocksLength(bytes);
    for (; bytes.size() - position >= ByteWord::size; position += ByteWord::size) {
        const ByteWord::Marks notASCII = ByteWord(bytes.data() + position).notASCII();
        if (notASCII != 0)
            return position + ByteWord::first(notASCII);
    }
    while (position < bytes.size() && byteAt(bytes, position) < 0x80)
        ++position;
    return position;
}

std::int64_t Utf8::codeUnitCount(std::string_view text) {
    std::int64_t count = 0;
    for (std::size_t start = 0; start < text.size(); start += ReadAhead::step) {
        ReadAhead::from(text, start);
        for (const char character : text.substr(start, ReadAhead::step)) {
            const auto byte = static_cast<std::uint8_t>(character);
            count +=
                static_cast<std::int64_t>(!isContinuation(byte)) + static_cast<std::int64_t>(byte >= 0xF0);
        }
    }
    return count;
}

bool Utf8::isValid(std::string_view bytes) {
    return validPrefixLength(bytes) == bytes.size();
}

std::string Utf8::repaired(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (;;) {
        const std::size_t valid = validPrefixLength(bytes);
        text += bytes.substr(0, valid);
        bytes.remove_prefix(valid);
        if (bytes.empty())
            return text;
        append(text, U'\uFFFD');
        bytes.remove_prefix(firstSequence(bytes).length);
    }
}

void Utf8::append(std::string& text, char32_t character) {
    const auto continuation = [character](unsigned shift) {
        return static_cast<char>(0x80U | (character >> shift & 0x3FU));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0U | character >> 6U);
        text += continuation(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0U | character >> 12U);
        text += continuation(6);
        text += continuation(0);
    } else {
        text += static_cast<char>(0xF0U | character >> 18U);
        text += continuation(12);
        text += continuation(6);
        text += continuation(0);
    }
}

} // namespace corvanta
