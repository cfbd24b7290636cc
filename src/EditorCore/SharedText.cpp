#include "EditorCore/SharedText.hpp"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

/// How long a piece is made, in bytes: an edit copies about this much, and a list entry a piece.
constexpr std::size_t usualSize = 16384;
constexpr std::size_t largestSize = 2 * usualSize;

/// A piece shorter than this is joined with its neighbour when an edit comes by.
constexpr std::size_t leastSize = usualSize / 4;

constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}
constexpr bool isFourByteLead(char byte) {
    return static_cast<unsigned char>(byte) >= 0xF0U;
}

/// What `bytes`, which are whole characters, add to a position.
TextPosition extent(std::string_view bytes) {
    std::int64_t codePoints = 0;
    std::int64_t fourByteLeads = 0;
    for (const char byte : bytes) {
        codePoints += isContinuation(byte) ? 0 : 1;
        fourByteLeads += isFourByteLead(byte) ? 1 : 0;
    }
    return {static_cast<std::int64_t>(bytes.size()), codePoints, codePoints + fourByteLeads};
}

TextPosition sum(const TextPosition& a, const TextPosition& b) {
    return {a.byte + b.byte, a.codePoint + b.codePoint, a.codeUnit + b.codeUnit};
}

TextPosition difference(const TextPosition& a, const TextPosition& b) {
    return {a.byte - b.byte, a.codePoint - b.codePoint, a.codeUnit - b.codeUnit};
}

/// The start of the character that the byte at `offset` belongs to.
std::size_t characterStart(std::string_view text, std::size_t offset) {
    while (offset > 0 && offset < text.size() && isContinuation(text[offset]))
        --offset;
    return offset;
}

std::size_t index(std::int64_t offset) {
    return static_cast<std::size_t>(offset);
}

/// How many bytes two texts have in common at their start, or at their end.
std::size_t commonPrefix(std::string_view a, std::string_view b) {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}
std::size_t commonSuffix(std::string_view a, std::string_view b) {
    return static_cast<std::size_t>(std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first -
                                    a.rbegin());
}

} // namespace

SharedText::SharedText(std::string_view text) {
    if (text.empty())
        return;
    auto pieces = std::make_shared<Pieces>();
    appendCut(*pieces, text);
    pieces_ = std::move(pieces);
}

void SharedText::append(Pieces& pieces, std::shared_ptr<const std::string> bytes,
                        const TextPosition& extent) {
    const TextPosition start = pieces.empty() ? TextPosition{} : pieces.back().end;
    pieces.push_back({std::move(bytes), start, sum(start, extent)});
}

void SharedText::appendCut(Pieces& pieces, std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = text.size() <= largestSize ? text.size() : characterStart(text, usualSize);
        append(pieces, std::make_shared<const std::string>(text.substr(0, size)),
               extent(text.substr(0, size)));
        text.remove_prefix(size);
    }
}

TextPosition SharedText::end() const {
    return pieces_ ? pieces_->back().end : TextPosition{};
}

/// The piece that holds what stands at `offset`; at the end of the text the last one.
std::size_t SharedText::pieceAt(Unit unit, std::int64_t offset) const {
    const auto found = std::partition_point(pieces_->begin(), pieces_->end() - 1,
                                            [&](const Piece& piece) { return piece.end.*unit <= offset; });
    return static_cast<std::size_t>(found - pieces_->begin());
}

std::string SharedText::substring(std::int64_t first, std::int64_t last) const {
    std::string result;
    if (first >= last)
        return result;
    result.reserve(index(last - first));
    for (std::size_t i = pieceAt(&TextPosition::byte, first);
         i < pieceCount() && (*pieces_)[i].start.byte < last; ++i) {
        const Piece& piece = (*pieces_)[i];
        const std::int64_t from = std::max(first - piece.start.byte, std::int64_t{0});
        const std::int64_t to = std::min(last, piece.end.byte) - piece.start.byte;
        result.append(*piece.bytes, index(from), index(to - from));
    }
    return result;
}

bool SharedText::contains(char byte) const {
    return pieces_ && std::any_of(pieces_->begin(), pieces_->end(), [byte](const Piece& piece) {
               return piece.bytes->find(byte) != std::string::npos;
           });
}

TextPosition SharedText::at(Unit unit, std::int64_t offset) const {
    if (offset >= end().*unit)
        return end();
    if (offset <= 0)
        return {};
    const Piece& piece = (*pieces_)[pieceAt(unit, offset)];
    const std::int64_t wanted = offset - piece.start.*unit;
    const TextPosition whole = difference(piece.end, piece.start);
    if (whole.byte == whole.codePoint)
        return sum(piece.start, {wanted, wanted, wanted});

    // Blocks long enough for the compiler to count with vector instructions, then ever shorter ones.
    constexpr std::size_t blockSize = 4096;
    const std::string_view bytes = *piece.bytes;
    TextPosition position;
    for (std::size_t size = blockSize; size > 0;) {
        const std::size_t from = index(position.byte);
        const std::size_t to = characterStart(bytes, std::min(from + size, bytes.size()));
        const TextPosition further = sum(position, extent(bytes.substr(from, to - from)));
        if (to > from && further.*unit <= wanted)
            position = further;
        else
            size /= 2;
    }
    // A single character is longer than the smallest block.
    for (;;) {
        const std::size_t from = index(position.byte);
        std::size_t to = from + 1;
        while (to < bytes.size() && isContinuation(bytes[to]))
            ++to;
        const TextPosition further = sum(position, extent(bytes.substr(from, to - from)));
        if (further.*unit > wanted)
            return sum(piece.start, position);
        position = further;
    }
}

void SharedText::replace(std::int64_t first, std::int64_t last, std::string_view replacement) {
    if (first == last && replacement.empty())
        return;
    if (!pieces_) {
        *this = SharedText(replacement);
        return;
    }
    std::size_t from = pieceAt(&TextPosition::byte, first);
    std::size_t to = pieceAt(&TextPosition::byte, last);
    std::string bytes = (*pieces_)[from].bytes->substr(0, index(first - (*pieces_)[from].start.byte));
    bytes += replacement;
    bytes.append(*(*pieces_)[to].bytes, index(last - (*pieces_)[to].start.byte));
    if (bytes.size() < leastSize && to + 1 < pieceCount()) {
        ++to;
        bytes += *(*pieces_)[to].bytes;
    } else if (bytes.size() < leastSize && from > 0) {
        --from;
        bytes.insert(0, *(*pieces_)[from].bytes);
    }

    auto pieces = std::make_shared<Pieces>();
    pieces->reserve(pieceCount() + 1 + bytes.size() / usualSize);
    pieces->assign(pieces_->begin(), pieces_->begin() + static_cast<std::ptrdiff_t>(from));
    appendCut(*pieces, bytes);
    for (std::size_t i = to + 1; i < pieceCount(); ++i)
        append(*pieces, (*pieces_)[i].bytes, difference((*pieces_)[i].end, (*pieces_)[i].start));
    if (pieces->empty())
        pieces_.reset();
    else
        pieces_ = std::move(pieces);
}

std::int64_t SharedText::commonStart(const SharedText& a, const SharedText& b) {
    std::int64_t common = 0;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.pieceCount() && j < b.pieceCount()) {
        const Piece& ours = (*a.pieces_)[i];
        const Piece& theirs = (*b.pieces_)[j];
        const std::int64_t end = std::min(ours.end.byte, theirs.end.byte);
        if (ours.bytes != theirs.bytes || ours.start.byte != theirs.start.byte) {
            const std::size_t length = index(end - common);
            const std::size_t same = commonPrefix(
                std::string_view(*ours.bytes).substr(index(common - ours.start.byte), length),
                std::string_view(*theirs.bytes).substr(index(common - theirs.start.byte), length));
            if (same < length)
                return common + static_cast<std::int64_t>(same);
        }
        common = end;
        i += ours.end.byte == end ? 1U : 0U;
        j += theirs.end.byte == end ? 1U : 0U;
    }
    return common;
}

/// At most `most` bytes.
std::int64_t SharedText::commonEnd(const SharedText& a, const SharedText& b, std::int64_t most) {
    std::int64_t common = 0;
    std::size_t i = a.pieceCount();
    std::size_t j = b.pieceCount();
    while (i > 0 && j > 0 && common < most) {
        const Piece& ours = (*a.pieces_)[i - 1];
        const Piece& theirs = (*b.pieces_)[j - 1];
        const std::int64_t oursFromEnd = a.end().byte - ours.start.byte;
        const std::int64_t theirsFromEnd = b.end().byte - theirs.start.byte;
        const std::int64_t start = std::min(oursFromEnd, theirsFromEnd);
        const bool isShared = ours.bytes == theirs.bytes && oursFromEnd == theirsFromEnd;
        if (!isShared) {
            const std::size_t length = index(start - common);
            const std::string_view left = *ours.bytes;
            const std::string_view right = *theirs.bytes;
            const std::size_t same = commonSuffix(left.substr(index(oursFromEnd - start), length),
                                                  right.substr(index(theirsFromEnd - start), length));
            if (same < length)
                return std::min(common + static_cast<std::int64_t>(same), most);
        }
        common = start;
        i -= oursFromEnd == start ? 1U : 0U;
        j -= theirsFromEnd == start ? 1U : 0U;
    }
    return std::min(common, most);
}

bool SharedText::isCharacterStart(std::int64_t byte) const {
    if (byte >= end().byte)
        return true;
    const Piece& piece = (*pieces_)[pieceAt(&TextPosition::byte, byte)];
    return !isContinuation((*piece.bytes)[index(byte - piece.start.byte)]);
}

TextChange SharedText::change(const SharedText& before, const SharedText& after) {
    if (before.pieces_ == after.pieces_)
        return {before.end().byte, 0};
    TextChange change;
    change.unchangedBefore = commonStart(before, after);
    while (!before.isCharacterStart(change.unchangedBefore) ||
           !after.isCharacterStart(change.unchangedBefore))
        --change.unchangedBefore;
    const std::int64_t shorter = std::min(before.end().byte, after.end().byte);
    change.unchangedAfter = commonEnd(before, after, shorter - change.unchangedBefore);
    while (!after.isCharacterStart(after.end().byte - change.unchangedAfter))
        --change.unchangedAfter;
    return change;
}

bool operator==(const SharedText& a, const SharedText& b) {
    return a.pieces_ == b.pieces_ || (a.size() == b.size() && SharedText::commonStart(a, b) == a.end().byte);
}

bool SharedText::equals(std::string_view other) const {
    bool same = size() == other.size();
    forEachPiece([&](std::string_view piece) {
        same = same && other.starts_with(piece);
        other.remove_prefix(std::min(piece.size(), other.size()));
    });
    return same;
}

} // namespace corvanta
