#pragma once

#include "EditorCore/TextChange.hpp"
#include "EditorCore/TextPosition.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// A text made of immutable pieces that its copies share. The text of an editor is handed on at every key: to
/// the document, the preview, the history. Here a copy costs nothing, an edit costs the same in a text of any
/// length, and two versions of one text are compared by what they do not share.
///
/// Valid UTF-8 goes in and stays, as long as edits lie between two characters.
class SharedText {
public:
    SharedText() = default;
    SharedText(std::string_view text);
    SharedText(const std::string& text) : SharedText(std::string_view(text)) {}
    SharedText(const char* text) : SharedText(std::string_view(text)) {}

    /// In bytes.
    std::size_t size() const { return static_cast<std::size_t>(end().byte); }
    bool empty() const { return size() == 0; }

    /// The end of the text.
    TextPosition end() const;

    std::string string() const { return substring(0, end().byte); }
    operator std::string() const { return string(); }

    /// The bytes from `first` to `last`, both within the text.
    std::string substring(std::int64_t first, std::int64_t last) const;

    bool contains(char byte) const;

    /// The place that is `offset` bytes, code points or UTF-16 code units into the text; an offset past the
    /// end gives the end, one inside a character the character's start.
    TextPosition atByte(std::int64_t offset) const { return at(&TextPosition::byte, offset); }
    TextPosition atCodePoint(std::int64_t offset) const { return at(&TextPosition::codePoint, offset); }
    TextPosition atCodeUnit(std::int64_t offset) const { return at(&TextPosition::codeUnit, offset); }

    /// Replaces the bytes from `first` to `last`, both between two characters.
    void replace(std::int64_t first, std::int64_t last, std::string_view replacement);

    /// What `after` has left of `before`: the longest common start, and of the rest the longest common end.
    /// Both end between two characters.
    static TextChange change(const SharedText& before, const SharedText& after);

    friend bool operator==(const SharedText& a, const SharedText& b);

    /// For text that is at hand as a string; nothing is copied.
    friend bool operator==(const SharedText& a, std::string_view b) { return a.equals(b); }
    friend bool operator==(const SharedText& a, const std::string& b) { return a.equals(b); }
    friend bool operator==(const SharedText& a, const char* b) { return a.equals(b); }

    /// Calls `visit` with one stretch of the text after another.
    template <typename Visit>
    void forEachPiece(Visit&& visit) const {
        if (pieces_) {
            for (const Piece& piece : *pieces_)
                visit(std::string_view(*piece.bytes));
        }
    }

private:
    /// A stretch of the text; it starts at `start`, and the end of the whole text is that of the last one.
    struct Piece {
        std::shared_ptr<const std::string> bytes;
        TextPosition start;
        TextPosition end;
    };
    using Pieces = std::vector<Piece>;
    using Unit = std::int64_t TextPosition::*;

    static void append(Pieces& pieces, std::shared_ptr<const std::string> bytes, const TextPosition& extent);
    static void appendCut(Pieces& pieces, std::string_view text);
    static std::int64_t commonStart(const SharedText& a, const SharedText& b);
    static std::int64_t commonEnd(const SharedText& a, const SharedText& b, std::int64_t most);

    TextPosition at(Unit unit, std::int64_t offset) const;
    std::size_t pieceAt(Unit unit, std::int64_t offset) const;
    std::size_t pieceCount() const { return pieces_ ? pieces_->size() : 0; }
    bool equals(std::string_view other) const;
    bool isCharacterStart(std::int64_t byte) const;

    /// None for an empty text.
    std::shared_ptr<const Pieces> pieces_;
};

} // namespace corvanta
