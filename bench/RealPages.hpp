#pragma once

#include "Support/RealPages.hpp"

#include <cstddef>
#include <cstdlib>
#include <string>

namespace corvanta {

/// Pages to measure with: from the folder that the environment variable CORVANTA_REAL_INPUT names, or else
/// the few small ones of our own.
class RealPages {
public:
    /// The pages one after another, again and again, cut to `size` bytes.
    static std::string text(std::size_t size) {
        static const std::string pages = allPages();
        std::string text;
        text.reserve(size);
        while (text.size() < size)
            text.append(pages, 0, size - text.size());
        return text;
    }

private:
    /// More than the processor's guesses can learn by heart, and little enough to load at once.
    static constexpr std::size_t enough = 12'000'000;

    static std::string allPages() {
        const char* folder = std::getenv("CORVANTA_REAL_INPUT");
        std::string pages;
        for (const auto& page : folder == nullptr ? ownPages() : pagesBelow(folder)) {
            if (page.extension() == ".html" && pages.size() < enough)
                pages += bytesOf(page);
        }
        return pages;
    }
};

} // namespace corvanta
