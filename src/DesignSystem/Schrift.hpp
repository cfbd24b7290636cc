#pragma once

#include "DesignSystem/Schriftart.hpp"
#include "Platform/UserDefaults.hpp"

#include <string_view>

namespace corvanta {

/// The fonts of the interface. Their size follows the setting; each call reads it anew.
class Schrift {
public:
    /// Sizes of the interface's text, in points.
    static constexpr double vorgabe = 14;
    static constexpr double kleinstes = 12;
    static constexpr double groesstes = 20;

    /// Where the setting is stored.
    static constexpr std::string_view schluessel = "schriftgroesse";

    /// `einstellungen` outlives this object.
    explicit Schrift(const UserDefaults& einstellungen) : einstellungen_(einstellungen) {}

    /// The size in points that the others build on: the stored one, or `vorgabe` when it is not within the
    /// limits.
    double grund() const;

    Schriftart titel() const;
    Schriftart text() const;
    Schriftart klein() const;
    Schriftart zahl() const;

    /// For the large text of a view with nothing in it.
    Schriftart leer() const;

private:
    const UserDefaults& einstellungen_;
};

} // namespace corvanta
