#include "Corvanta/MenuCommand.hpp"

#include <array>

namespace corvanta {

namespace {

template <std::size_t count>
using Keys = std::array<std::string_view, count>;

constexpr Keys<1> newKeys{"<Control>n"};
constexpr Keys<1> openKeys{"<Control>o"};
constexpr Keys<1> closeKeys{"<Control>w"};
constexpr Keys<1> saveKeys{"<Control>s"};
constexpr Keys<1> saveAsKeys{"<Control><Shift>s"};
constexpr Keys<1> quitKeys{"<Control>q"};

constexpr Keys<1> undoKeys{"<Control>z"};
constexpr Keys<2> redoKeys{"<Control><Shift>z", "<Control>y"};
constexpr Keys<1> cutKeys{"<Control>x"};
constexpr Keys<1> copyKeys{"<Control>c"};
constexpr Keys<1> pasteKeys{"<Control>v"};
constexpr Keys<1> selectAllKeys{"<Control>a"};
constexpr Keys<1> findKeys{"<Control>f"};
constexpr Keys<2> replaceKeys{"<Control><Alt>f", "<Control>h"};
constexpr Keys<2> findNextKeys{"<Control>g", "F3"};
constexpr Keys<2> findPreviousKeys{"<Control><Shift>g", "<Shift>F3"};
constexpr Keys<1> findSelectionKeys{"<Control>e"};
constexpr Keys<1> formatKeys{"<Control>i"};
// The slash is on the 7 of a German keyboard.
constexpr Keys<2> commentKeys{"<Control>slash", "<Control><Shift>7"};
constexpr Keys<1> settingsKeys{"<Control>comma"};

constexpr Keys<1> previewKeys{"<Control><Alt>p"};
constexpr Keys<1> assistantKeys{"<Control><Alt>c"};
constexpr Keys<3> zoomInKeys{"<Control>plus", "<Control>equal", "<Control>KP_Add"};
constexpr Keys<2> zoomOutKeys{"<Control>minus", "<Control>KP_Subtract"};
constexpr Keys<2> zoomResetKeys{"<Control>0", "<Control>KP_0"};
constexpr Keys<1> fullScreenKeys{"F11"};

// Many desktops lock the screen with the first.
constexpr Keys<2> linkKeys{"<Control><Alt>l", "<Control>k"};

constexpr Keys<1> minimiseKeys{"<Control>m"};
constexpr Keys<1> nextWindowKeys{"<Control>Page_Down"};
constexpr Keys<1> previousWindowKeys{"<Control>Page_Up"};

constexpr Keys<2> helpKeys{"<Control>question", "F1"};
constexpr Keys<1> shortcutsKeys{"<Control>F1"};

constexpr std::array commands{
    MenuCommand{"app.new", Menu::file, 0, "Neu", newKeys},
    MenuCommand{"app.open", Menu::file, 0, "Öffnen …", openKeys},
    MenuCommand{"win.close-document", Menu::file, 1, "Schließen", closeKeys},
    MenuCommand{"win.save", Menu::file, 1, "Sichern", saveKeys},
    MenuCommand{"win.save-as", Menu::file, 1, "Sichern unter …", saveAsKeys},
    MenuCommand{"win.duplicate", Menu::file, 1, "Duplizieren", {}},
    MenuCommand{"win.revert", Menu::file, 1, "Zurück zur gesicherten Fassung", {}},
    MenuCommand{"app.quit", Menu::file, 2, "Corvanta beenden", quitKeys},

    MenuCommand{"win.undo", Menu::edit, 0, "Widerrufen", undoKeys, true},
    MenuCommand{"win.redo", Menu::edit, 0, "Wiederholen", redoKeys, true},
    MenuCommand{"win.cut", Menu::edit, 1, "Ausschneiden", cutKeys, true},
    MenuCommand{"win.copy", Menu::edit, 1, "Kopieren", copyKeys, true},
    MenuCommand{"win.paste", Menu::edit, 1, "Einsetzen", pasteKeys, true},
    MenuCommand{"win.delete", Menu::edit, 1, "Löschen", {}},
    MenuCommand{"win.select-all", Menu::edit, 1, "Alles auswählen", selectAllKeys, true},
    MenuCommand{"win.find", Menu::edit, 2, "Suchen …", findKeys},
    MenuCommand{"win.replace", Menu::edit, 2, "Suchen und Ersetzen …", replaceKeys},
    MenuCommand{"win.find-next", Menu::edit, 2, "Weitersuchen", findNextKeys},
    MenuCommand{"win.find-previous", Menu::edit, 2, "Rückwärts suchen", findPreviousKeys},
    MenuCommand{"win.find-selection", Menu::edit, 2, "Auswahl suchen", findSelectionKeys},
    MenuCommand{"win.format", Menu::edit, 3, "Syntax formatieren", formatKeys},
    MenuCommand{"win.comment", Menu::edit, 3, "Kommentar ein/aus", commentKeys},
    MenuCommand{"app.settings", Menu::edit, 4, "Einstellungen …", settingsKeys},

    MenuCommand{"win.show-preview", Menu::view, 0, "Vorschau ein-/ausblenden", previewKeys},
    MenuCommand{"win.show-assistant", Menu::view, 0, "Claude-Assistent ein-/ausblenden", assistantKeys},
    MenuCommand{"app.zoom-in", Menu::view, 1, "Vergrößern", zoomInKeys},
    MenuCommand{"app.zoom-out", Menu::view, 1, "Verkleinern", zoomOutKeys},
    MenuCommand{"app.zoom-reset", Menu::view, 1, "Originalgröße", zoomResetKeys},
    MenuCommand{"win.full-screen", Menu::view, 2, "Vollbild", fullScreenKeys},

    MenuCommand{"win.insert(0)", Menu::insert, 0, "Link", linkKeys},
    MenuCommand{"win.insert(1)", Menu::insert, 0, "Bild", {}},
    MenuCommand{"win.insert(2)", Menu::insert, 0, "Div-Container", {}},
    MenuCommand{"win.insert(3)", Menu::insert, 0, "Span", {}},
    MenuCommand{"win.insert(4)", Menu::insert, 1, "Liste", {}},
    MenuCommand{"win.insert(5)", Menu::insert, 1, "Tabelle", {}},
    MenuCommand{"win.insert(6)", Menu::insert, 2, "Kommentar", {}},
    MenuCommand{"win.insert(7)", Menu::insert, 2, "Zeilenumbruch", {}},
    MenuCommand{"win.insert(8)", Menu::insert, 2, "Trennlinie", {}},

    MenuCommand{"win.minimise", Menu::window, 0, "Minimieren", minimiseKeys},
    MenuCommand{"win.next-window", Menu::window, 1, "Nächstes Fenster", nextWindowKeys},
    MenuCommand{"win.previous-window", Menu::window, 1, "Vorheriges Fenster", previousWindowKeys},

    MenuCommand{"app.help", Menu::help, 0, "Corvanta-Hilfe", helpKeys},
    MenuCommand{"app.check-for-updates", Menu::help, 0, "Nach Updates suchen …", {}},
    MenuCommand{"app.feedback", Menu::help, 1, "Rückmeldung schreiben", {}},
    MenuCommand{"app.donate", Menu::help, 1, "%@ unterstützen", {}},
    MenuCommand{"app.shortcuts", Menu::help, 2, "Tastenkürzel", shortcutsKeys},
    MenuCommand{"app.about", Menu::help, 2, "Über Corvanta", {}},
};

} // namespace

std::span<const MenuCommand> MenuCommand::all() {
    return commands;
}

std::string_view MenuCommand::titleOf(Menu menu) {
    switch (menu) {
    case Menu::file:
        return "Ablage";
    case Menu::edit:
        return "Bearbeiten";
    case Menu::view:
        return "Darstellung";
    case Menu::insert:
        return "Einfügen";
    case Menu::window:
        return "Fenster";
    case Menu::help:
        return "Hilfe";
    }
    return {};
}

} // namespace corvanta
