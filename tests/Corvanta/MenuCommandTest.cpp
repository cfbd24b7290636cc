#include "Corvanta/MenuCommand.hpp"

#include "Corvanta/InsertTemplate.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvanta {
namespace {

std::vector<std::string_view> titlesIn(Menu menu) {
    std::vector<std::string_view> titles;
    for (const MenuCommand& command : MenuCommand::all()) {
        if (command.menu == menu)
            titles.push_back(command.title);
    }
    return titles;
}

const MenuCommand& command(std::string_view title) {
    return *std::ranges::find(MenuCommand::all(), title, &MenuCommand::title);
}

TEST(MenuCommand, GivesNoShortcutToTwoCommands) {
    std::vector<std::string_view> shortcuts;
    for (const MenuCommand& each : MenuCommand::all())
        shortcuts.insert(shortcuts.end(), each.shortcuts.begin(), each.shortcuts.end());
    std::ranges::sort(shortcuts);
    EXPECT_EQ(std::ranges::adjacent_find(shortcuts), shortcuts.end());
}

TEST(MenuCommand, GivesNoActionToTwoCommands) {
    std::vector<std::string_view> actions;
    for (const MenuCommand& each : MenuCommand::all())
        actions.push_back(each.action);
    std::ranges::sort(actions);
    EXPECT_EQ(std::ranges::adjacent_find(actions), actions.end());
}

TEST(MenuCommand, NeedsADocumentWindowForWhatActsOnADocument) {
    for (const std::string_view title :
         {"Suchen …", "Suchen und Ersetzen …", "Weitersuchen", "Rückwärts suchen", "Auswahl suchen",
          "Syntax formatieren", "Kommentar ein/aus", "Vorschau ein-/ausblenden",
          "Claude-Assistent ein-/ausblenden", "Link", "Trennlinie"})
        EXPECT_TRUE(command(title).action.starts_with("win.")) << title;
}

TEST(MenuCommand, OffersHelpWithoutADocumentWindow) {
    for (const std::string_view title : {"Corvanta-Hilfe", "Nach Updates suchen …", "Rückmeldung schreiben",
                                         "%@ unterstützen", "Über Corvanta", "Neu", "Öffnen …"})
        EXPECT_TRUE(command(title).action.starts_with("app.")) << title;
}

TEST(MenuCommand, HasTheTemplatesInTheirOrder) {
    std::vector<std::string_view> templates;
    for (const InsertTemplate& fragment : InsertTemplate::all)
        templates.push_back(fragment.title);
    EXPECT_EQ(titlesIn(Menu::insert), templates);
}

TEST(MenuCommand, NamesEachTemplateByItsNumber) {
    int number = 0;
    for (const MenuCommand& each : MenuCommand::all()) {
        if (each.menu != Menu::insert)
            continue;
        EXPECT_EQ(each.action, "win.insert(" + std::to_string(number++) + ")");
    }
}

TEST(MenuCommand, KeepsMenusAndSectionsTogether) {
    EXPECT_TRUE(std::ranges::is_sorted(
        MenuCommand::all(), {}, [](const MenuCommand& each) { return std::pair(each.menu, each.section); }));
}

TEST(MenuCommand, PutsTheEditingCommandsBehindTheClipboard) {
    using ::testing::ElementsAre;
    const auto titles = titlesIn(Menu::edit);
    const auto first = std::ranges::find(titles, "Suchen …");
    EXPECT_THAT(std::vector(first, titles.end()),
                ElementsAre("Suchen …", "Suchen und Ersetzen …", "Weitersuchen", "Rückwärts suchen",
                            "Auswahl suchen", "Syntax formatieren", "Kommentar ein/aus", "Einstellungen …"));
    EXPECT_LT(std::ranges::find(titles, "Einsetzen"), first);
}

TEST(MenuCommand, LeavesTheClipboardsShortcutsToTheWidgetWithTheFocus) {
    for (const std::string_view title :
         {"Widerrufen", "Wiederholen", "Ausschneiden", "Kopieren", "Einsetzen", "Alles auswählen"})
        EXPECT_TRUE(command(title).isForFocus) << title;
    EXPECT_FALSE(command("Suchen …").isForFocus);
}

TEST(MenuCommand, HasATitleForEveryMenu) {
    for (const MenuCommand& each : MenuCommand::all())
        EXPECT_FALSE(MenuCommand::titleOf(each.menu).empty());
}

} // namespace
} // namespace corvanta
