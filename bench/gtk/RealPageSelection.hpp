#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace corvanta {

/// Picks pages from folders of real input, the same ones in every run.
struct RealPageSelection {
    RealPageSelection() = delete;

    struct Page {
        /// The folder of `input` that the page comes from: where its style sheets and images lie, too.
        std::filesystem::path package;
        std::filesystem::path file;
    };

    /// About `count` pages below `input`. Every folder in it gives as many; those of a folder that has fewer
    /// are shared out among the others, and lie evenly spread over all pages of their folder.
    static std::vector<Page> pages(const std::filesystem::path& input, std::size_t count);
};

} // namespace corvanta
