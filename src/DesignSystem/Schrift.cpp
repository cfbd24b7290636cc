#include "DesignSystem/Schrift.hpp"

#include "DesignSystem/Theme.hpp"

namespace corvanta {

using Gewicht = Schriftart::Gewicht;

double Schrift::grund() const {
    const double gespeichert = einstellungen_.get<double>(schluessel).value_or(0);
    const bool zulaessig = gespeichert >= kleinstes && gespeichert <= groesstes;
    return zulaessig ? gespeichert : vorgabe;
}

Schriftart Schrift::titel() const {
    return Theme::Typography::ui(grund() + 3, Gewicht::semibold);
}

Schriftart Schrift::text() const {
    return Theme::Typography::ui(grund(), Gewicht::regular);
}

Schriftart Schrift::klein() const {
    return Theme::Typography::ui(grund() - 2, Gewicht::regular);
}

Schriftart Schrift::zahl() const {
    return Theme::Typography::ui(grund() + 6, Gewicht::medium);
}

Schriftart Schrift::leer() const {
    return Theme::Typography::ui(grund() + 20, Gewicht::light);
}

} // namespace corvanta
