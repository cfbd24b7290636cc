#pragma once

#include "EditorCore/RunList.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextChange.hpp"
#include "EditorCore/TextStorage.hpp"

#include <string>

namespace corvanta {

/// A text storage on a string that can be edited; its runs move with the text.
class EditedTextStorage final : public TextStorage {
public:
    SharedText text() const override { return text_; }
    const SharedText& liveText() const { return text_; }
    std::int64_t length() const override { return text_.end().codeUnit; }
    void beginEditing() override {}
    void setAttributes(TextRange range, const EditorFont& newFont, const DynamicColor&) override {
        font = newFont;
        runs.clear(range);
    }
    void addForeground(TextRange range, SyntaxToken token, const DynamicColor& color) override {
        runs.add({range, token});
        lastColor = color;
        ++addedRuns;
    }
    void endEditing() override { ++colourings; }

    /// Replaces the bytes from `first` to `last`, both between two characters.
    TextChange replace(std::size_t first, std::size_t last, std::string_view inserted) {
        const TextPosition from = text_.atByte(static_cast<std::int64_t>(first));
        const TextPosition to = text_.atByte(static_cast<std::int64_t>(last));
        text_.replace(from.byte, to.byte, {});
        runs.didErase({from.codeUnit, to.codeUnit - from.codeUnit});
        const std::int64_t before = length();
        text_.replace(from.byte, from.byte, inserted);
        runs.didInsert(from.codeUnit, length() - before);
        return {from.byte, static_cast<std::int64_t>(text_.size() - first - inserted.size())};
    }

    RunList runs;
    int addedRuns = 0;
    int colourings = 0;
    EditorFont font;
    DynamicColor lastColor;

private:
    SharedText text_;
};

} // namespace corvanta
