#pragma once

#include "EditorCore/TextChange.hpp"

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>

namespace corvanta {

/// A text into which somebody types at random. The same seed types the same.
class TypedText {
public:
    explicit TypedText(std::string text, unsigned seed = 1) : text_(std::move(text)), random_(seed) {}

    const std::string& text() const { return text_; }

    /// One edit: mostly a letter, sometimes a removal, a replacement or a jump of the caret.
    TextChange type() {
        if (random_() % 12 == 0)
            caret_ = random_() % (text_.size() + 1);
        caret_ = std::min(caret_, text_.size());
        const auto kind = random_() % 10;
        if (kind == 0)
            return replace(std::min<std::size_t>(random_() % 30, text_.size() - caret_), "<p>neu</p>");
        if (kind == 1)
            return replace(std::min<std::size_t>(random_() % 9, text_.size() - caret_), "");
        return replace(0, std::string(1, static_cast<char>('a' + random_() % 26)));
    }

private:
    TextChange replace(std::size_t removed, const std::string& inserted) {
        const TextChange change{static_cast<std::int64_t>(caret_),
                                static_cast<std::int64_t>(text_.size() - caret_ - removed)};
        text_.replace(caret_, removed, inserted);
        caret_ += inserted.size();
        return change;
    }

    std::string text_;
    std::size_t caret_ = 0;
    std::mt19937 random_;
};

} // namespace corvanta
