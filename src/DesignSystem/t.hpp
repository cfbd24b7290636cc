#pragma once

#include "DesignSystem/Platzhalter.hpp"
#include "DesignSystem/Textwert.hpp"

#include <array>
#include <string>
#include <string_view>

namespace corvanta {

/// The text of the interface whose German form is `schluessel`, in the language in use: what the shared
/// catalogue has for it. Without a shared catalogue the German form.
std::string t(std::string_view schluessel);

/// The same with `werte` in place of the placeholders.
template <typename... Werte>
requires(sizeof...(Werte) > 0) std::string t(std::string_view schluessel, const Werte&... werte) {
    return Platzhalter::fuellen(t(schluessel), std::array{Textwert(werte)...});
}

} // namespace corvanta
