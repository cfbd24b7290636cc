#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvanta {

/// Lets a table with strings as keys be asked for a part of another string without a copy.
struct Texthash {
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const noexcept {
        return std::hash<std::string_view>()(text);
    }
};

/// Translations under the German texts that they stand for.
using Texttabelle = std::unordered_map<std::string, std::string, Texthash, std::equal_to<>>;

} // namespace corvanta
