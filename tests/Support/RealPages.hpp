#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvanta {

/// The pages, style sheets, scripts and PHP files below `folder`, in the order of their paths.
inline std::vector<std::filesystem::path> pagesBelow(const std::filesystem::path& folder) {
    static const std::set<std::filesystem::path> extensions{".html", ".php", ".css", ".js"};
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && extensions.contains(entry.path().extension()))
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

/// A few small pages of our own.
inline std::vector<std::filesystem::path> ownPages() {
    return pagesBelow(CORVANTA_SOURCE_FOLDER "/tests/EditorCore/Seiten");
}

/// Pages that others wrote, from the folder that the environment variable CORVANTA_REAL_INPUT names; without
/// it says so and has none. One of `share` of them, or all when CORVANTA_LONG_TESTS is set.
inline std::vector<std::filesystem::path> realPages(std::size_t share = 1) {
    const char* folder = std::getenv("CORVANTA_REAL_INPUT");
    if (folder == nullptr) {
        std::cout << "No real input: CORVANTA_REAL_INPUT names no folder, only our own pages were checked.\n";
        return {};
    }
    const std::vector<std::filesystem::path> all = pagesBelow(folder);
    if (all.empty())
        throw std::runtime_error("no pages below CORVANTA_REAL_INPUT");
    const std::size_t step = std::getenv("CORVANTA_LONG_TESTS") == nullptr ? share : 1;
    std::vector<std::filesystem::path> chosen;
    for (std::size_t i = 0; i < all.size(); i += step)
        chosen.push_back(all[i]);
    std::cout << chosen.size() << " of " << all.size() << " real pages\n";
    return chosen;
}

/// Those of `pages` that are not style sheets or scripts.
inline std::vector<std::filesystem::path> markupAmong(std::vector<std::filesystem::path> pages) {
    std::erase_if(pages, [](const std::filesystem::path& page) {
        return page.extension() == ".css" || page.extension() == ".js";
    });
    return pages;
}

inline std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace corvanta
