// What a screen reader is told of every window of the program, over the real bus.

#include "AccessibilityBus.hpp"
#include "ProgramTest.hpp"
#include "StartedProgram.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <glibmm/miscutils.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {
namespace {

using State = AccessibleNode::State;

class AccessibilityTest : public ProgramTest {
protected:
    void SetUp() override {
        folder.write("index.html", "<img src=fehlt.png><p>x</p>");
        Glib::setenv("GTK_A11Y", "atspi");
        program.emplace(state.path(), std::vector<std::string>{folder / "index.html"});
        Glib::setenv("GTK_A11Y", "none");
        ASSERT_TRUE(isAt("index.html – Corvanta"));
    }

    /// The window with this title once it `isReady`.
    AccessibleNode window(const std::string& title,
                          const std::function<bool(const AccessibleNode&)>& isReady) {
        std::optional<AccessibleNode> found;
        EXPECT_TRUE(waitUntil([&] {
            for (const AccessibleNode& window : bus.windowsOf(program->process()))
                if (window.name == title && isReady(window))
                    found = window;
            return found.has_value();
        })) << title;
        return found.value_or(AccessibleNode());
    }

    AccessibleNode window(const std::string& title) {
        return window(title, [](const AccessibleNode&) { return true; });
    }

    /// The document's window once a thing in it is in a state.
    AccessibleNode documentOnce(std::string_view role, std::string_view name, State wanted,
                                bool isOn = true) {
        return window("index.html – Corvanta", [&](const AccessibleNode& window) {
            const AccessibleNode* node = window.find(role, name);
            return node != nullptr && node->is(wanted) == isOn;
        });
    }

    AccessibilityBus bus;
    std::optional<StartedProgram> program;
};

/// The toolkit calls things that nobody named by the name of their type.
bool isNamed(const AccessibleNode& node) {
    constexpr std::string_view typePrefixes[] = {"gtkmm__", "Gtk", "Adw", "WebKit"};
    return !node.name.empty() && std::ranges::none_of(typePrefixes, [&](std::string_view prefix) {
        return std::string_view(node.name).starts_with(prefix);
    });
}

bool isControl(const AccessibleNode& node) {
    constexpr std::string_view roles[] = {"button",   "toggle button", "menu bar", "menu item",
                                          "text box", "combo box",     "slider",   "switch",
                                          "tab",      "document",      "check box"};
    return std::ranges::find(roles, node.role) != std::ranges::end(roles);
}

bool holdsWhatTakesTheKeyboard(const AccessibleNode& node) {
    return std::ranges::any_of(node.children, [](const AccessibleNode& child) {
        return child.is(State::focusable) || holdsWhatTakesTheKeyboard(child);
    });
}

/// What nobody gets to, although the bus calls it visible: the list of a picker that is not open, and the
/// search in the toolkit's settings, which is switched off.
bool isOutOfReach(const AccessibleNode& node) {
    return node.role == "search box" || node.name == "No Results Found" ||
           (node.role == "list" && node.name == "GtkListView");
}

/// What has no name, as lines to be read.
void collectNameless(const AccessibleNode& node, const std::string& place,
                     std::vector<std::string>& nameless) {
    const std::string here = place + " / " + node.role + " '" + node.name + "'";
    const bool isStop = node.is(State::focusable) && !holdsWhatTakesTheKeyboard(node) && node.role != "list";
    if ((isControl(node) || isStop) && (!isNamed(node) || node.role == "widget"))
        nameless.push_back(here);
    for (const AccessibleNode& child : node.children)
        if (!isOutOfReach(child))
            collectNameless(child, here, nameless);
}

std::vector<std::string> namelessIn(const AccessibleNode& window) {
    std::vector<std::string> nameless;
    collectNameless(window, "", nameless);
    return nameless;
}

/// Every control that a window must tell of, by role and name.
struct Control {
    std::string_view role;
    std::string_view name;
};

void expectControls(const AccessibleNode& window, std::initializer_list<Control> controls) {
    for (const Control& control : controls)
        EXPECT_NE(window.find(control.role, control.name), nullptr) << control.role << " " << control.name;
}

const std::vector<std::string> none;

TEST_F(AccessibilityTest, NamesEverythingInTheDocumentWindow) {
    keyboard.press("Control+Alt+f");
    keyboard.press("Control+Alt+c");
    const AccessibleNode document = window("index.html – Corvanta", [](const AccessibleNode& window) {
        return window.find("document", "Vorschau") != nullptr &&
               window.find("label", "Claude-Assistent") != nullptr;
    });
    EXPECT_EQ(namelessIn(document), none);
    expectControls(document, {{"menu bar", "Menü"},
                              {"menu item", "Ablage"},
                              {"menu item", "Bearbeiten"},
                              {"menu item", "Darstellung"},
                              {"menu item", "Einfügen"},
                              {"menu item", "Fenster"},
                              {"menu item", "Hilfe"},
                              {"text box", "Quelltext"},
                              {"text box", "Suchen"},
                              {"text box", "Ersetzen durch"},
                              {"button", "Groß- und Kleinschreibung beachten"},
                              {"button", "Regulärer Ausdruck"},
                              {"button", "Vorheriger Treffer"},
                              {"button", "Nächster Treffer"},
                              {"button", "Suche schließen"},
                              {"button", "Ersetzen"},
                              {"button", "Alle ersetzen"},
                              {"button", "Ordner freigeben …"},
                              {"button", "Syntax formatieren"},
                              {"button", "Claude-Assistent ein-/ausblenden"},
                              {"button", "Vorschau ein-/ausblenden"}});
}

TEST_F(AccessibilityTest, TellsTheTextAndWhereTheKeyboardIs) {
    const AccessibleNode document = documentOnce("text box", "Quelltext", State::focused);
    const AccessibleNode& code = *document.find("text box", "Quelltext");
    EXPECT_EQ(bus.textOf(code), "<img src=fehlt.png><p>x</p>");
    EXPECT_TRUE(code.is(State::multiLine));
    keyboard.press("Control+f");
    documentOnce("text box", "Suchen", State::focused);
}

TEST_F(AccessibilityTest, NamesTheTextInTheLanguageThatIsChosenInTheSettingsFile) {
    documentOnce("text box", "Quelltext", State::focused);
    const auto settings =
        std::filesystem::path(Glib::get_user_config_dir()) / "Corvanta" / "Einstellungen.json";
    std::filesystem::create_directories(settings.parent_path());
    std::ofstream(settings) << R"({"sprache": "en"})";
    documentOnce("text box", "Source text", State::focused);
    std::filesystem::remove(settings);
    documentOnce("text box", "Quelltext", State::focused);
}

TEST_F(AccessibilityTest, TellsWhichPanelsAreShownAndWhatCannotBePressed) {
    documentOnce("button", "Vorschau ein-/ausblenden", State::pressed);
    documentOnce("button", "Claude-Assistent ein-/ausblenden", State::pressed, false);
    keyboard.press("Control+Alt+c");
    documentOnce("button", "Claude-Assistent ein-/ausblenden", State::pressed);
    keyboard.press("Control+Alt+p");
    documentOnce("button", "Vorschau ein-/ausblenden", State::pressed, false);
    keyboard.press("Control+Alt+f");
    documentOnce("button", "Alle ersetzen", State::sensitive, false);
    keyboard.type("x");
    documentOnce("button", "Alle ersetzen", State::sensitive);
}

TEST_F(AccessibilityTest, NamesEverythingInAnOpenMenu) {
    documentOnce("text box", "Quelltext", State::focused);
    keyboard.press("F10");
    const AccessibleNode document = window("index.html – Corvanta", [](const AccessibleNode& window) {
        return window.find("menu item", "Sichern unter …") != nullptr;
    });
    EXPECT_EQ(namelessIn(document), none);
    const AccessibleNode* revert = document.find("menu item", "Zurück zur gesicherten Fassung");
    ASSERT_NE(revert, nullptr);
    EXPECT_FALSE(revert->is(State::sensitive));
}

TEST_F(AccessibilityTest, NamesEverythingInTheSettings) {
    keyboard.press("Control+comma");
    ASSERT_TRUE(isAt("Einstellungen"));
    const AccessibleNode settings = window("Einstellungen");
    EXPECT_EQ(namelessIn(settings), none);
    expectControls(settings, {{"tab", "Allgemein"},
                              {"tab", "Editor"},
                              {"tab", "Claude"},
                              {"combo box", "Sprache"},
                              {"button", "Ordner zeigen"},
                              {"button", "Neu einlesen"},
                              {"slider", "Oberfläche"},
                              {"switch", "Beim Start nach Updates suchen"},
                              {"combo box", "Farbschema"},
                              {"slider", "Schriftgröße"},
                              {"text box", "API-Schlüssel"},
                              {"button", "Speichern"},
                              {"button", "Entfernen"}});
}

TEST_F(AccessibilityTest, TellsWhetherASwitchIsOn) {
    keyboard.press("Control+comma");
    ASSERT_TRUE(isAt("Einstellungen"));
    const auto isOn = [this] {
        const AccessibleNode settings = window("Einstellungen");
        const AccessibleNode* node = settings.find("switch", "Beim Start nach Updates suchen");
        return node != nullptr && node->is(State::checked);
    };
    const bool before = isOn();
    const AccessibleNode settings = window("Einstellungen");
    const AccessibleNode* node = settings.find("switch", "Beim Start nach Updates suchen");
    ASSERT_NE(node, nullptr);
    bus.press(*node);
    EXPECT_TRUE(waitUntil([&] { return isOn() != before; }));
}

TEST_F(AccessibilityTest, NamesEverythingInHelpAndShortcuts) {
    keyboard.press("F1");
    ASSERT_TRUE(isAt("Corvanta-Hilfe"));
    EXPECT_EQ(namelessIn(window("Corvanta-Hilfe")), none);
    keyboard.press("Control+F1");
    ASSERT_TRUE(isAt("Tastenkürzel"));
    const AccessibleNode shortcuts = window("Tastenkürzel");
    EXPECT_EQ(namelessIn(shortcuts), none);
    expectControls(shortcuts, {{"label", "Ctrl+N"}, {"label", "F1"}});
}

TEST_F(AccessibilityTest, NamesEverythingInTheAboutWindow) {
    documentOnce("text box", "Quelltext", State::focused);
    // The last item of the last menu.
    keyboard.press("F10");
    keyboard.press("Left");
    keyboard.press("Up");
    keyboard.press("Return");
    ASSERT_TRUE(isAt("Über Corvanta"));
    const AccessibleNode about = window("Über Corvanta");
    EXPECT_EQ(namelessIn(about), none);
    expectControls(about, {{"button", "Nach Update suchen"}, {"button", "Spenden"}});
}

} // namespace
} // namespace corvanta
