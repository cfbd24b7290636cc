#pragma once

#include "DesignSystem/Textwert.hpp"

#include <span>
#include <string>
#include <string_view>

namespace corvanta {

/// The placeholders in texts: "%@" (a text), "%ld" and "%lld" (a whole number), "%.0f" (a number with so many
/// decimal places) and "%%" (a percent sign). A translation that needs another order numbers them from 1 on:
/// "%2$@". They come out of files that anybody may write, so no C function ever sees them.
struct Platzhalter {
    Platzhalter() = delete;

    /// `vorlage` with `werte` in place of its placeholders, in order. Each takes whatever kind of value its
    /// turn is. A placeholder without a value and everything that is no placeholder stay as they are; values
    /// without a placeholder are left out.
    static std::string fuellen(std::string_view vorlage, std::span<const Textwert> werte);
};

} // namespace corvanta
