#include "Documents/GapText.hpp"

#include <algorithm>

namespace corvanta {

void GapText::replace(std::size_t offset, std::size_t removed, std::string_view inserted) {
    moveGapTo(offset);
    gapEnd_ += removed;
    widenGapTo(inserted.size());
    std::ranges::copy(inserted, bytes_.data() + gapStart_);
    gapStart_ += inserted.size();
}

std::string GapText::text() const {
    return bytes_.substr(0, gapStart_) + bytes_.substr(gapEnd_);
}

void GapText::moveGapTo(std::size_t offset) {
    char* bytes = bytes_.data();
    if (offset < gapStart_) {
        std::copy_backward(bytes + offset, bytes + gapStart_, bytes + gapEnd_);
        gapEnd_ -= gapStart_ - offset;
    } else {
        const std::size_t moved = offset - gapStart_;
        std::copy(bytes + gapEnd_, bytes + gapEnd_ + moved, bytes + gapStart_);
        gapEnd_ += moved;
    }
    gapStart_ = offset;
}

void GapText::widenGapTo(std::size_t size) {
    if (gapEnd_ - gapStart_ >= size)
        return;
    // In proportion to the text, so that a text typed letter by letter is moved seldom.
    const std::size_t added = size + bytes_.size() / 4 + 1'024;
    bytes_.insert(gapEnd_, added, '\0');
    gapEnd_ += added;
}

} // namespace corvanta
