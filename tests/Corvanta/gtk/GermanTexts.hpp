#pragma once

#include "DesignSystem/Plattformtexte.hpp"
#include "DesignSystem/Textkatalog.hpp"
#include "DesignSystem/t.hpp"

#include <set>
#include <span>
#include <string>
#include <string_view>

namespace corvanta {

/// Texts that only German has: every key of the catalogue whose translation is another text.
inline std::set<std::string> germanTexts() {
    std::set<std::string> german;
    for (const auto& list : {std::span<const std::string_view>(Textkatalog::alle), Plattformtexte::alle}) {
        for (const std::string_view key : list) {
            if (t(key) != key)
                german.emplace(key);
        }
    }
    return german;
}

} // namespace corvanta
