#pragma once

#include "Platform/UserDefaults.hpp"

#include <filesystem>
#include <string_view>
#include <vector>

namespace corvanta {

/// The files that were opened or saved last, kept in the user defaults.
class RecentDocuments {
public:
    static constexpr std::string_view key = "recentDocuments";
    static constexpr std::size_t longest = 10;

    /// `defaults` outlives this.
    explicit RecentDocuments(UserDefaults& defaults) : defaults_(defaults) {}

    /// The last one first. Some may not exist any more.
    std::vector<std::filesystem::path> files() const;

    /// Puts `file` first. A file whose name is no UTF-8 cannot be kept.
    void add(const std::filesystem::path& file);

    void remove(const std::filesystem::path& file);
    void clear() { defaults_.remove(key); }

private:
    UserDefaults& defaults_;
};

} // namespace corvanta
