#include "DesignSystem/Textwert.hpp"

#include <fmt/format.h>

#include <cmath>

namespace corvanta {

std::string Textwert::text() const {
    return std::visit([](const auto& wert) { return fmt::format("{}", wert); }, wert_);
}

std::string Textwert::ganzzahl() const {
    const auto* zahl = std::get_if<double>(&wert_);
    return zahl == nullptr ? text() : fmt::format("{:.0f}", std::trunc(*zahl));
}

std::string Textwert::kommazahl(int stellen) const {
    if (const auto* ganze = std::get_if<std::int64_t>(&wert_))
        return fmt::format("{:.{}f}", static_cast<double>(*ganze), stellen);
    const auto* zahl = std::get_if<double>(&wert_);
    return zahl == nullptr ? text() : fmt::format("{:.{}f}", *zahl, stellen);
}

} // namespace corvanta
