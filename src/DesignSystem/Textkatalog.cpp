#include "DesignSystem/Textkatalog.hpp"

namespace corvanta {

constinit const std::array<std::string_view, Textkatalog::anzahl> Textkatalog::alle{
    "Version %@",
    "Angeregt von den handgeschriebenen Seiten des frühen Webs.\n"
    "Gestaltet und programmiert vom Corvanta-Team.",
    "Nach Update suchen",
    "Version %@ ist aktuell.",
    "Version %@ ist verfügbar.",
    "Seite öffnen",
    "Die Prüfung ist fehlgeschlagen. Besteht eine Internetverbindung?",
    "Syntax formatieren",
    "Claude-Assistent ein-/ausblenden",
    "Vorschau ein-/ausblenden",
    "Rückmeldung schreiben",
    "%@ unterstützen",
    "Dieses Programm ist kostenlos und bleibt es. Was es kann, verdankt es den Rückmeldungen seiner "
    "Nutzer: Jeder gemeldete Sonderfall, jeder Hinweis auf eine unklare Beschriftung hat es ein Stück "
    "besser gemacht.",
    "Spenden",
    "Suchen …",
    "Suchen und Ersetzen …",
    "Weitersuchen",
    "Rückwärts suchen",
    "Auswahl suchen",
    "Kommentar ein/aus",
    "Link",
    "Bild",
    "Div-Container",
    "Span",
    "Liste",
    "Tabelle",
    "Kommentar",
    "Zeilenumbruch",
    "Trennlinie",
    "Über Corvanta",
    "Nach Updates suchen …",
    "Corvanta-Hilfe",
    "Einfügen",
    "Allgemein",
    "Editor",
    "Claude",
    "Schreiben & Einrücken",
    "Tippe deinen Code im linken Bereich. Beim Drücken der Eingabetaste rückt Corvanta die neue Zeile "
    "automatisch passend zur Verschachtelung deiner Tags und Klammern ein.",
    "Der Befehl „Syntax formatieren“ im Menü „Bearbeiten“ (oder ⌃I) rückt das gesamte Dokument sauber "
    "neu ein – ideal, wenn du Code eingefügt hast oder die Struktur durcheinandergeraten ist.",
    "Live-Vorschau",
    "Mit dem Vorschau-Knopf in der Symbolleiste blendest du die Live-Vorschau rechts ein oder aus. Sie "
    "aktualisiert sich, während du schreibst. Du kannst Text auch direkt in der Vorschau bearbeiten – "
    "einfach hineinklicken und tippen, deine Änderungen fließen sofort in den Code zurück. Hinweis: Beim "
    "Bearbeiten in der Vorschau kann die Formatierung des Quelltexts geringfügig normalisiert werden.",
    "Bilder, CSS und Schriften in der Vorschau",
    "Die Vorschau zeigt nicht nur den Quelltext des geöffneten Dokuments, sondern auch die Dateien, die "
    "es einbindet: Stylesheets, Bilder, Skripte und Schriften. Dafür braucht sie einmalig Zugriff auf "
    "deinen Projektordner. Ein Hinweis oben in der Vorschau bietet die Freigabe an. Wähle dort den "
    "Ordner, der die Wurzel deiner Website ist, dann lösen auch wurzelabsolute Pfade wie /bilder/kopf.jpg "
    "genauso auf wie später auf dem Server. Die Freigabe gilt dauerhaft, Dateien außerhalb dieses Ordners "
    "liest die Vorschau nicht.",
    "Sprache",
    "In den Einstellungen (⌘,) wählst du die Sprache der Oberfläche: Systemsprache, Deutsch oder "
    "Englisch.",
    "Claude-Assistent (optional)",
    "Hinterlegst du in den Einstellungen deinen eigenen Anthropic-API-Schlüssel, kann dir Claude beim "
    "Schreiben und Prüfen von Code helfen. Ganz ohne Schlüssel funktioniert Corvanta vollständig.",
    "Corvanta",
    "Ein schlanker HTML-, CSS-, JavaScript- und PHP-Editor mit Live-Vorschau für macOS.",
    "Mitmachen",
    "Angeregt von den handgeschriebenen Seiten des frühen Webs. Gestaltet und programmiert vom "
    "Corvanta-Team.",
    "Claude-Assistent",
    "Aktiv",
    "Kein API-Key hinterlegt. Trage ihn in den Einstellungen ein, um den Assistenten zu aktivieren.",
    "Mit deinem eigenen Anthropic-API-Schlüssel kann Claude dir beim Schreiben, Erklären und Prüfen von "
    "Code helfen. Ohne Schlüssel funktioniert Corvanta vollständig – der Assistent bleibt dann "
    "ausgeblendet.",
    "API-Schlüssel",
    "Speichern",
    "Entfernen",
    "Nicht aktiviert",
    "Der Schlüssel wird ausschließlich im macOS-Schlüsselbund gespeichert – niemals im Klartext auf der "
    "Festplatte.",
    "Wähle den Ordner, der die Wurzel deiner Website ist. Die Vorschau liest daraus Bilder, Stylesheets, "
    "Skripte und Schriften. Pfade wie /bilder/kopf.jpg beziehen sich auf diesen Ordner.",
    "Freigeben",
    "Verknüpfte Bilder und Stylesheets erscheinen, sobald die Datei gesichert ist.",
    "Für verknüpfte Bilder und CSS-Dateien braucht die Vorschau Zugriff auf den Projektordner.",
    "Nicht gefunden: %@",
    "Ordner freigeben …",
    "System",
    "Ordner zeigen",
    "Neu einlesen",
    "Dort liegt _Vorlage.json mit allen Texten. Eine Kopie davon, umbenannt auf das Sprachkürzel, ergibt "
    "eine weitere Sprache. Sie erscheint nach einem Neustart in der Auswahl. Die Menüs Ablage, Bearbeiten, "
    "Fenster und Hilfe kommen von macOS und folgen ebenfalls erst nach einem Neustart.",
    "Oberfläche",
    "Beim Start nach Updates suchen",
    "Fragt beim Start einmal bei " CORVANTA_WEBSITE
    " nach der aktuellen Version. Dabei wird nichts über dich übertragen, der Server sieht nur den Abruf "
    "einer öffentlichen Datei. Im Info-Fenster kannst du jederzeit von Hand suchen.",
    "Farbschema",
    "Schriftgröße",
    "Dezent (Standard)",
    "Klassisch",
    "Kontrast"};

} // namespace corvanta
