#include "DesignSystem/Plattformtexte.hpp"

#include <array>

namespace corvanta {

namespace {

constexpr auto texte = std::to_array<std::string_view>({
    // Menus
    "Menü",
    "Ablage",
    "Neu",
    "Öffnen …",
    "Benutzte Dokumente",
    "Liste leeren",
    "Schließen",
    "Sichern",
    "Sichern unter …",
    "Duplizieren",
    "Zurück zur gesicherten Fassung",
    "Einstellungen …",
    "Corvanta beenden",
    "Bearbeiten",
    "Widerrufen",
    "Wiederholen",
    "Ausschneiden",
    "Kopieren",
    "Einsetzen",
    "Löschen",
    "Alles auswählen",
    "Darstellung",
    "Vergrößern",
    "Verkleinern",
    "Originalgröße",
    "Vollbild",
    "Fenster",
    "Minimieren",
    "Nächstes Fenster",
    "Vorheriges Fenster",
    "Fenster schließen",
    "Hilfe",
    "Tastenkürzel",

    // Windows and what a screen reader calls their parts
    "Einstellungen",
    "Quelltext",
    "Vorschau",
    "Ohne Titel",
    "Kopie von %@",

    // Choosing files
    "Öffnen",
    "Sichern unter",
    "Abbrechen",
    "OK",
    "Reiner Text",
    "Text",

    // Questions
    "Möchtest du die Änderungen an „%@“ sichern?",
    "Ungesicherte Änderungen gehen sonst verloren.",
    "Nicht sichern",
    "„%@“ ist %lld MB groß. Trotzdem öffnen?",
    "Das Öffnen kann lange dauern und braucht ein Vielfaches davon an Arbeitsspeicher.",
    "Möchtest du zur gesicherten Fassung von „%@“ zurückkehren?",
    "Alles, was du seitdem geschrieben hast, geht verloren.",
    "Zurückkehren",

    // What a file may refuse
    "„%@“ konnte nicht geöffnet werden.",
    "„%@“ konnte nicht gesichert werden.",
    "Das ist keine lesbare Datei.",
    "Auf dem Datenträger ist kein Platz mehr.",
    "Dafür fehlt die Berechtigung.",
    "Der Datenträger ist schreibgeschützt.",
    "Den Ordner gibt es nicht mehr.",
    "Der Name ist zu lang.",
    "Unter diesem Namen liegt keine gewöhnliche Datei.",
    "Ein anderes Programm hat die Datei inzwischen geändert.",
    "Die Datei ist schon in einem anderen Fenster geöffnet.",
    "Die Datei ist für diesen Datenträger zu groß.",
    "Die Verweise auf die Datei drehen sich im Kreis.",
    "Ein anderes Programm benutzt die Datei gerade.",
    "Der Datenträger meldet einen Fehler.",
    "Der Datenträger ist nicht mehr da.",

    // Changes from outside and recovery
    "„%@“ wurde von einem anderen Programm geändert.",
    "Möchtest du die geänderte Datei laden oder deine Fassung behalten?",
    "Datei laden",
    "Meine Fassung behalten",
    "Der ungesicherte Text von „%@“ wurde wiederhergestellt.",
    "Die Datei wurde inzwischen geändert. Beide Fassungen sind geöffnet.",
    "Ein Teil davon war beschädigt und fehlt.",
    "Die Datei „%@“ gibt es nicht mehr.",
    "Der Text ist noch hier und wird beim Sichern neu geschrieben.",
    "Der ungesicherte Text von „%@“ kann nicht aufbewahrt werden.",
    "Wiederherstellen",
    "Verwerfen",
    "Corvanta wurde zweimal kurz nach dem Start unerwartet beendet. Vorschau und Wiederherstellung sind "
    "diesmal ausgeschaltet.",
    "Ungesicherte Texte sind aufbewahrt und kommen beim nächsten Start wieder.",

    // On the command line
    "Aufruf: corvanta [Option] [Datei[:Zeile] …]",
    "Öffnet jede Datei in einem Fenster und springt zur angegebenen Zeile.",
    "macht aus der Standardeingabe ein neues Dokument",
    "beendet die Optionen: alles Weitere sind Dateien",
    "zeigt diese Hilfe",
    "zeigt die Version",
    "Die Option %@ gibt es nicht. corvanta --help nennt alle.",
    "Die Standardeingabe ist zu groß.",

    // Find bar
    "Suchen",
    "Ersetzen durch",
    "Ersetzen",
    "Alle ersetzen",
    "Vorheriger Treffer",
    "Nächster Treffer",
    "Groß- und Kleinschreibung beachten",
    "Regulärer Ausdruck",
    "Suche läuft …",
    "%lld Treffer …",
    "%lld Treffer",
    "%lld von %lld",
    "Keine Treffer",
    "Ungültiger Ausdruck",
    "Ausdruck zu aufwendig",
    "Suche schließen",

    // Preview
    "Freigegebene Ordner",
    "Freigabe beenden",
    "Die Vorschau kann hier nicht starten: Die Hilfsprogramme bubblewrap und xdg-dbus-proxy fehlen oder "
    "dürfen nicht arbeiten.",
    "Die Vorschau kann nicht starten: Ein Teil von Corvanta fehlt oder passt nicht zu diesem System.",
});

} // namespace

constinit const std::span<const std::string_view> Plattformtexte::alle = texte;

} // namespace corvanta
