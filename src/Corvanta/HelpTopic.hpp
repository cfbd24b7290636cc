#pragma once

#include <array>
#include <string_view>

namespace corvanta {

/// A chapter of the help. Both texts are German and to be looked up.
struct HelpTopic {
    std::string_view titleKey;
    std::string_view bodyKey;

    /// In the order in which they are shown.
    static const std::array<HelpTopic, 6> topics;
};

inline constexpr std::array<HelpTopic, 6> HelpTopic::topics{{
    {"Schreiben & Einrücken",
     "Tippe deinen Code im linken Bereich. Beim Drücken der Eingabetaste rückt Corvanta die neue Zeile "
     "automatisch passend zur Verschachtelung deiner Tags und Klammern ein."},
    {"Syntax formatieren",
     "Der Befehl „Syntax formatieren“ im Menü „Bearbeiten“ (oder ⌃I) rückt das gesamte Dokument sauber neu "
     "ein "
     "– ideal, wenn du Code eingefügt hast oder die Struktur durcheinandergeraten ist."},
    {"Live-Vorschau",
     "Mit dem Vorschau-Knopf in der Symbolleiste blendest du die Live-Vorschau rechts ein oder aus. Sie "
     "aktualisiert sich, während du schreibst. Du kannst Text auch direkt in der Vorschau bearbeiten – "
     "einfach "
     "hineinklicken und tippen, deine Änderungen fließen sofort in den Code zurück. Hinweis: Beim Bearbeiten "
     "in der Vorschau kann die Formatierung des Quelltexts geringfügig normalisiert werden."},
    {"Bilder, CSS und Schriften in der Vorschau",
     "Die Vorschau zeigt nicht nur den Quelltext des geöffneten Dokuments, sondern auch die Dateien, die es "
     "einbindet: Stylesheets, Bilder, Skripte und Schriften. Dafür braucht sie einmalig Zugriff auf deinen "
     "Projektordner. Ein Hinweis oben in der Vorschau bietet die Freigabe an. Wähle dort den Ordner, der die "
     "Wurzel deiner Website ist, dann lösen auch wurzelabsolute Pfade wie /bilder/kopf.jpg genauso auf wie "
     "später auf dem Server. Die Freigabe gilt dauerhaft, Dateien außerhalb dieses Ordners liest die "
     "Vorschau "
     "nicht."},
    {"Sprache",
     "In den Einstellungen (⌘,) wählst du die Sprache der Oberfläche: Systemsprache, Deutsch oder Englisch."},
    {"Claude-Assistent (optional)",
     "Hinterlegst du in den Einstellungen deinen eigenen Anthropic-API-Schlüssel, kann dir Claude beim "
     "Schreiben und Prüfen von Code helfen. Ganz ohne Schlüssel funktioniert Corvanta vollständig."},
}};

} // namespace corvanta
