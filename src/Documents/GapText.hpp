#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// A text for many edits in a row. It keeps a gap where the last one was, so that edits close to each other
/// move little.
class GapText {
public:
    explicit GapText(std::string_view text) : bytes_(text), gapStart_(text.size()), gapEnd_(text.size()) {}

    /// In bytes.
    std::size_t size() const { return bytes_.size() - (gapEnd_ - gapStart_); }

    /// Removes `removed` bytes at `offset`, which the text has, and inserts `inserted` there.
    void replace(std::size_t offset, std::size_t removed, std::string_view inserted);

    std::string text() const;

private:
    void moveGapTo(std::size_t offset);
    void widenGapTo(std::size_t size);

    std::string bytes_;
    std::size_t gapStart_;
    std::size_t gapEnd_;
};

} // namespace corvanta
