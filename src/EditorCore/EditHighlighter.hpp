#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/EditorFont.hpp"
#include "EditorCore/EditorTheme.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/SyntaxCheckpoint.hpp"
#include "EditorCore/SyntaxPainting.hpp"
#include "EditorCore/TextChange.hpp"
#include "EditorCore/TextStorage.hpp"

#include <cstdint>
#include <vector>

namespace corvanta {

/// Keeps a text coloured while it is edited. After every edit the attributes are the ones that colouring the
/// whole text would give; but the text is read only from a little before the edit to where the old spans go
/// on unchanged, which makes a key cost the same in a text of any length.
class EditHighlighter {
public:
    /// `textStorage` outlives the highlighter.
    explicit EditHighlighter(TextStorage& textStorage) : textStorage_(textStorage) {}

    /// Colours the text anew after `change`, which is everything that happened to it since the last
    /// colouring. The first time, all of the text is new.
    void highlightChange(const TextChange& change, const EditorTheme& theme, const EditorFont& font,
                         const DynamicColor& baseColor);

private:
    using Checkpoints = std::vector<SyntaxCheckpoint>;

    /// How far the colouring after an edit has come.
    struct Progress {
        /// Up to here the text is coloured.
        SyntaxCheckpoint place;
        /// The checkpoints on the way.
        Checkpoints found;
        /// The first of the old checkpoints that may hold again.
        Checkpoints::iterator old;
        /// Whether that one does: then the text behind it has its colours.
        bool met = false;
    };

    void readOn(const SharedText& text, std::int64_t lastByte, Progress& progress, SyntaxPainting& painting);

    TextStorage& textStorage_;

    /// Places at which tokenizing can be taken up, a few kilobytes apart, in ascending order.
    Checkpoints checkpoints_;

    /// The length of the text at the last colouring.
    std::int64_t bytes_ = 0;
    std::int64_t codeUnits_ = 0;
};

} // namespace corvanta
