#pragma once

#include <span>
#include <string_view>

namespace corvanta {

/// The texts of what other systems bring along and this program makes itself: the usual menus, the questions
/// before closing, the recovery, the find bar, the reasons why a file cannot be read or written. In German,
/// which is what they are looked up under. Whoever shows a new one adds it here and to the language files.
struct Plattformtexte {
    Plattformtexte() = delete;

    static const std::span<const std::string_view> alle;
};

} // namespace corvanta
