#pragma once

#include "EditorCore/HTMLFormatterSpace.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvanta {

/// The formatted text while it grows, line by line. Of deep lines most tabs are put in at the very end: in
/// blocks nested thousands of levels deep they are nearly all of the text, and only the end tells whether it
/// is one that anybody wants.
class HTMLFormatterLines {
public:
    /// `expectedSize` is a guess, in bytes.
    explicit HTMLFormatterLines(std::size_t expectedSize) { text_.reserve(expectedSize); }

    /// Starts a line that is `depth` tabs deep.
    void start(std::size_t depth) {
        if (hasLines_)
            text_.append(1 + emptyLines_, '\n');
        hasLines_ = true;
        emptyLines_ = 0;
        text_.append(std::min(depth, shallow), '\t');
        if (depth > shallow) {
            missing_.push_back({text_.size(), depth - shallow});
            missingTabs_ += depth - shallow;
        }
    }

    /// Leaves `count` lines empty before the next one; none at the start of the text or at its end.
    void leaveEmpty(std::size_t count) { emptyLines_ = count; }

    void append(std::string_view text) { text_.append(text); }

    /// The number of bytes so far, without the tabs that are still missing.
    std::size_t size() const { return text_.size(); }

    /// Removes `characters` from the end, but none of the first `from` bytes.
    void trimEnd(std::string_view characters, std::size_t from) {
        std::size_t end = text_.size();
        while (end > from && characters.find(text_[end - 1]) != std::string_view::npos)
            --end;
        text_.resize(end);
    }

    /// The number of bytes so far, with all tabs.
    std::size_t finalSize() const { return text_.size() + missingTabs_; }

    std::string take() && {
        if (missing_.empty())
            return std::move(text_);
        std::string lines;
        lines.reserve(finalSize());
        std::size_t copied = 0;
        for (const MissingTabs& missing : missing_) {
            lines.append(text_, copied, missing.offset - copied);
            lines.append(missing.count, '\t');
            copied = missing.offset;
        }
        return lines.append(text_, copied);
    }

private:
    /// Lines up to this depth are written at once; those of ordinary pages are.
    static constexpr std::size_t shallow = 16;

    struct MissingTabs {
        std::size_t offset = 0;
        std::size_t count = 0;
    };

    std::string text_;
    bool hasLines_ = false;
    std::size_t emptyLines_ = 0;
    std::vector<MissingTabs> missing_;
    std::size_t missingTabs_ = 0;
};

} // namespace corvanta
