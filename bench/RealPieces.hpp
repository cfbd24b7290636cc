#pragma once

#include "RealPages.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace corvanta {

/// Pieces of real pages, all of one size and another one each time: a processor learns a small page by heart
/// when it is read a thousand times over, and would then be faster than with any page that somebody opens.
class RealPieces {
public:
    explicit RealPieces(std::size_t size) : pages_(RealPages::text(std::max(size, enough))), size_(size) {}

    std::string_view next() {
        if (pages_.size() - position_ < size_)
            position_ = 0;
        const std::string_view piece = std::string_view(pages_).substr(position_, size_);
        position_ += size_;
        return piece;
    }

private:
    static constexpr std::size_t enough = 10'000'000;

    std::string pages_;
    std::size_t size_;
    std::size_t position_ = 0;
};

} // namespace corvanta
