#pragma once

#include "EditorCore/TextStorage.hpp"
#include "EditorCore/Utf8.hpp"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// A text whose attributes are a list of runs.
class RecordedTextStorage final : public TextStorage {
public:
    struct Base {
        TextRange range;
        EditorFont font;
        DynamicColor foreground;

        friend bool operator==(const Base&, const Base&) = default;
    };

    struct Run {
        TextRange range;
        SyntaxToken token{};
        DynamicColor foreground;

        friend bool operator==(const Run&, const Run&) = default;
    };

    explicit RecordedTextStorage(std::string text)
        : reportedLength(Utf8::codeUnitCount(text)), text_(std::move(text)) {}

    SharedText text() const override { return text_; }
    std::int64_t length() const override { return reportedLength; }

    void beginEditing() override {
        log += "begin ";
        ++depth_;
    }

    void setAttributes(TextRange range, const EditorFont& font, const DynamicColor& foreground) override {
        log += depth_ == 1 ? "set " : "set outside ";
        base = Base{range, font, foreground};
        runs.clear();
    }

    void addForeground(TextRange range, SyntaxToken token, const DynamicColor& foreground) override {
        log += depth_ == 1 ? "add " : "add outside ";
        runs.push_back({range, token, foreground});
    }

    void endEditing() override {
        log += "end ";
        --depth_;
    }

    /// Differs from the text's own length only when a test says so.
    std::int64_t reportedLength;
    std::optional<Base> base;
    std::vector<Run> runs;
    /// The calls, one word each.
    std::string log;

private:
    std::string text_;
    int depth_ = 0;
};

} // namespace corvanta
