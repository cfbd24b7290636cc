#include "RealPageSelection.hpp"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

struct Package {
    std::filesystem::path folder;
    std::vector<std::filesystem::path> files;
};

Package packageIn(const std::filesystem::path& folder) {
    Package package{folder, {}};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().extension() == ".html")
            package.files.push_back(entry.path());
    }
    std::ranges::sort(package.files);
    return package;
}

/// Those with the fewest pages first, so that what they cannot give is known when the others are asked.
std::vector<Package> packagesIn(const std::filesystem::path& input) {
    std::vector<Package> packages;
    for (const auto& entry : std::filesystem::directory_iterator(input)) {
        if (entry.is_directory())
            packages.push_back(packageIn(entry.path()));
    }
    std::ranges::sort(packages, [](const Package& a, const Package& b) {
        return std::pair(a.files.size(), a.folder) < std::pair(b.files.size(), b.folder);
    });
    return packages;
}

} // namespace

std::vector<RealPageSelection::Page> RealPageSelection::pages(const std::filesystem::path& input,
                                                              std::size_t count) {
    const std::vector<Package> packages = packagesIn(input);
    std::vector<Page> pages;
    for (std::size_t index = 0; index < packages.size(); ++index) {
        const Package& package = packages[index];
        const std::size_t share = (count - pages.size()) / (packages.size() - index);
        const std::size_t taken = std::min(share, package.files.size());
        for (std::size_t page = 0; page < taken; ++page)
            pages.push_back({package.folder, package.files[page * package.files.size() / taken]});
    }
    return pages;
}

} // namespace corvanta
