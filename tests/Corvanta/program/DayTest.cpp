// A day's work with the program as its user has it: by keys and mouse, judged by what is on the screen and on
// the disk. What the windows looked like is kept as pictures.

#include "ProgramTest.hpp"
#include "StartedProgram.hpp"
#include "Support/gtk/ActiveWindow.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "WindowInFront.hpp"

#include <glibmm/miscutils.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {
namespace {

// The colours of the page that is being written, which the program itself does not have.
constexpr std::uint32_t lime = 0x00ff00;
constexpr std::uint32_t aqua = 0x00ffff;
constexpr std::uint32_t fuchsia = 0xff00ff;

/// A match that was found, marked and selected.
constexpr std::uint32_t foundMark = 0xe5cf87;

/// In the settings; it shows that they are drawn.
constexpr std::uint32_t sliderGreen = 0x84bd00;

constexpr const char* firstPage = "index.html – Corvanta";
constexpr const char* secondPage = "zweite.html – Corvanta";

/// How far below the upper edge of the settings the picker of the language is, in pixels.
constexpr int languagePicker = 100;

/// As typed, laid out anew, coloured otherwise and with a word more, by turns.
std::string page(const std::string& color, const std::string& headline) {
    return "<!DOCTYPE html>\n"
           "<html>\n"
           "\t<head>\n"
           "\t\t<meta charset=\"utf-8\">\n"
           "\t\t<title>Neues Dokument</title>\n"
           "\t</head>\n"
           "\t<body>\n"
           "\t\t<h1 style=\"background: " +
           color + "\">" + headline +
           "</h1>\n"
           "\t\t<ul>\n"
           "\t\t\t<li>eins</li>\n"
           "\t\t</ul>\n"
           "\t\t<table>\n"
           "\t\t\t<tr>\n"
           "\t\t\t\t<th>Kopf</th>\n"
           "\t\t\t\t<th></th>\n"
           "\t\t\t</tr>\n"
           "\t\t\t<tr>\n"
           "\t\t\t\t<td></td>\n"
           "\t\t\t\t<td></td>\n"
           "\t\t\t</tr>\n"
           "\t\t</table>\n"
           "\t\t<a href=\"zweite.html\">Weiter</a>\n"
           "\t\t<img src=\"bild.svg\" alt=\"\">\n"
           "\t\t<!-- Notiz -->\n"
           "\t</body>\n"
           "</html>\n";
}

class DayTest : public ProgramTest {
public:
    // The steps of the day.
    void writesANewPage();
    void savesThePageUnderAName();
    void replacesAColor();
    void editsThePageInThePreview();
    void opensASecondFile();
    void opensTheFirstFileAgain();
    void readsTheInterfaceInBothLanguages();
    void losesNothingWhenKilled();
    void quits();

protected:
    DayTest() {
        std::filesystem::create_directories(pictures);
        // The toolkit's file dialog begins where the program was started.
        std::filesystem::current_path(folder.path());
    }

    ~DayTest() override {
        std::filesystem::current_path(folderBefore);
        // Other tests see the language of the system again.
        std::filesystem::remove_all(std::filesystem::path(Glib::get_user_config_dir()) / "Corvanta");
    }

    void start(const std::vector<std::string>& files = {}) { program.emplace(state.path(), files); }

    void press(std::string_view keys, int times = 1) {
        for (int time = 0; time < times; ++time)
            keyboard.press(keys);
    }

    /// Waits until the program has dealt with all keys that were pressed before.
    void letKeysArrive() {
        press("F1");
        ASSERT_TRUE(isAt("Corvanta-Hilfe"));
        press("Escape");
        ASSERT_TRUE(waitForTitle([](const auto& title) { return title && title->ends_with(" – Corvanta"); }));
    }

    /// Inserts the item of the menu "Einfügen" that stands this far below its first. A menu takes no key
    /// before it is on the screen.
    void insertByMenu(int item) {
        letKeysArrive();
        std::vector<std::string_view> way{"F10", "Right", "Right", "Right"};
        way.insert(way.end(), static_cast<std::size_t>(item), "Down");
        for (const std::string_view key : way)
            ASSERT_TRUE(changes(WindowInFront::Part::text, [&] { press(key); })) << key;
        press("Return");
    }

    /// Waits until a part of the window looks otherwise after `act` than before.
    testing::AssertionResult changes(WindowInFront::Part part, const std::function<void()>& act) {
        window.lookAt(part);
        act();
        return waitUntil([this] { return window.looksOtherwise(); }) ? testing::AssertionSuccess()
                                                                     : testing::AssertionFailure();
    }

    /// Chooses the language in the settings to which these keys lead.
    void chooseLanguage(const std::vector<std::string_view>& keys) {
        ASSERT_TRUE(sees(sliderGreen));
        ASSERT_TRUE(changes(WindowInFront::Part::page, [this] { window.clickBelowTop(languagePicker); }));
        for (const std::string_view key : keys)
            ASSERT_TRUE(changes(WindowInFront::Part::page, [&] { press(key); })) << key;
        press("Return");
    }

    testing::AssertionResult sees(std::uint32_t color) {
        return waitUntil([&] { return window.shows(color); }) ? testing::AssertionSuccess()
                                                              : testing::AssertionFailure();
    }

    /// Saves until a file holds `expected`: what is typed into the page comes into the text a moment later.
    testing::AssertionResult savesAs(const std::string& name, const std::string& expected) {
        bool isSaved = false;
        const bool isAsExpected = waitUntil([&] {
            const std::optional<std::string> title = activeWindowTitle();
            const bool isEdited = title && title->starts_with("•");
            if (isEdited && !isSaved)
                press("Control+s");
            isSaved = isEdited;
            return !isEdited && content(name) == expected;
        });
        return (isAsExpected ? testing::AssertionSuccess() : testing::AssertionFailure())
               << name << " holds " << content(name);
    }

    void keepPicture(const std::string& name) { window.keepPicture(pictures / ("day-" + name + ".png")); }

    const std::filesystem::path folderBefore = std::filesystem::current_path();
    const char* wishedFolder = std::getenv("CORVANTA_PICTURES");
    const std::filesystem::path pictures = wishedFolder != nullptr ? wishedFolder : CORVANTA_PICTURES_FOLDER;
    WindowInFront window;
    std::optional<StartedProgram> program;
};

void DayTest::writesANewPage() {
    start();
    ASSERT_TRUE(isAt("Ohne Titel – Corvanta"));
    press("Control+Home");
    press("Down", 7);
    press("Tab", 2);
    keyboard.type("<h1 style=\"background: lime\">Hallo Welt</h1>\n"
                  "<ul>\n"
                  "<li>eins</li>\n");
    // A line begins as deep as the one before, and that is one too deep for the end of the list.
    press("BackSpace");
    keyboard.type("</ul>\n");
    constexpr int table = 5;
    insertByMenu(table);
    press("End");
    press("Left", 5);
    keyboard.type("Kopf");
    press("Down", 7);
    press("End");
    press("Return");
    press("Control+k");
    keyboard.type("zweite.html");
    press("Right", 2);
    keyboard.type("Weiter");
    press("End");
    press("Return");
    constexpr int image = 1;
    insertByMenu(image);
    keyboard.type("bild.svg");
    press("End");
    press("Return");
    keyboard.type("Notiz");
    press("Shift+Home");
    press("Control+slash");
    press("Control+i");
    ASSERT_TRUE(sees(lime));
    keepPicture("1-written");
}

void DayTest::savesThePageUnderAName() {
    press("Control+Shift+s");
    ASSERT_TRUE(isAt("Sichern unter"));
    keepPicture("2-save-as");
    press("Control+a");
    keyboard.type("index.html\n");
    ASSERT_TRUE(isAt(firstPage));
    EXPECT_EQ(content("index.html"), page("lime", "Hallo Welt"));
    // The page now lies beside its picture.
    ASSERT_TRUE(sees(fuchsia));
    keepPicture("3-saved");
}

void DayTest::replacesAColor() {
    press("Control+h");
    keyboard.type("lime");
    press("Tab", 6);
    keyboard.type("aqua");
    // Not before the match is found, for a button that cannot be pressed is passed over.
    ASSERT_TRUE(sees(foundMark));
    keepPicture("4-found");
    press("Tab", 2);
    press("space");
    press("Escape");
    ASSERT_TRUE(sees(aqua));
    EXPECT_TRUE(savesAs("index.html", page("aqua", "Hallo Welt")));
}

void DayTest::editsThePageInThePreview() {
    // The caret first appears at the page's start, where keys are not meant for.
    ASSERT_TRUE(changes(WindowInFront::Part::page, [this] { window.clickInto(aqua); }));
    keyboard.type(" und Mond");
    ASSERT_TRUE(isAt("• index.html – Corvanta"));
    EXPECT_TRUE(savesAs("index.html", page("aqua", "Hallo Welt und Mond")));
    keepPicture("5-page-edited");
}

void DayTest::opensASecondFile() {
    StartedProgram second(state.path(), {"zweite.html"});
    EXPECT_EQ(second.wait(), 0);
    ASSERT_TRUE(isAt(secondPage));
    press("Control+End");
    keyboard.type("<p>Ende</p>");
    ASSERT_TRUE(isAt("• zweite.html – Corvanta"));
    EXPECT_TRUE(savesAs("zweite.html", "<p>Grüße</p>\n<p>Ende</p>"));
    keepPicture("6-second-file");
}

void DayTest::opensTheFirstFileAgain() {
    press("Control+Page_Up");
    ASSERT_TRUE(isAt(firstPage));
    press("Control+w");
    ASSERT_TRUE(isAt(secondPage));
    press("Control+o");
    ASSERT_TRUE(isAt("Öffnen"));
    press("Control+l");
    keyboard.type((folder / "index.html").string());
    // The dialog takes the answer as soon as it has found the file.
    ASSERT_TRUE(waitForTitle([this](const auto& title) {
        if (title == "Öffnen")
            press("Return");
        return title == firstPage;
    }));
    ASSERT_TRUE(sees(aqua));
    EXPECT_EQ(content("index.html"), page("aqua", "Hallo Welt und Mond"));
}

void DayTest::readsTheInterfaceInBothLanguages() {
    press("Control+comma");
    ASSERT_TRUE(isAt("Einstellungen"));
    // The system's language, German, English.
    chooseLanguage({"Down", "Down"});
    ASSERT_TRUE(isAt("Settings"));
    ASSERT_TRUE(sees(sliderGreen));
    keepPicture("7-settings-english");
    press("Escape");
    ASSERT_TRUE(isAt(firstPage));
    keepPicture("8-document-english");
    press("Control+comma");
    ASSERT_TRUE(isAt("Settings"));
    chooseLanguage({"Up"});
    ASSERT_TRUE(isAt("Einstellungen"));
    press("Escape");
    ASSERT_TRUE(isAt(firstPage));
}

void DayTest::losesNothingWhenKilled() {
    press("Control+Home");
    keyboard.type("<!--a-->");
    // Behind the keys, so that all of them have arrived.
    press("F1");
    ASSERT_TRUE(isAt("Corvanta-Hilfe"));
    EXPECT_EQ(program->end(SIGKILL), 128 + SIGKILL);
    EXPECT_EQ(content("index.html"), page("aqua", "Hallo Welt und Mond"));
    start();
    ASSERT_TRUE(isAtADialog());
    keepPicture("9-recovered");
    press("Escape");
    ASSERT_TRUE(isAt("• index.html – Corvanta"));
    EXPECT_TRUE(savesAs("index.html", "<!--a-->" + page("aqua", "Hallo Welt und Mond")));
    press("Control+Page_Down");
    EXPECT_TRUE(isAt(secondPage));
}

void DayTest::quits() {
    press("Control+q");
    EXPECT_EQ(program->wait(), 0);
    EXPECT_TRUE(std::filesystem::is_empty(state / "Corvanta" / "Journale"));
}

TEST_F(DayTest, PutsIntoTheFilesWhatItsUserWroteAndLosesNothing) {
    folder.write("bild.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='40'>"
                             "<path fill='#f0f' d='M0 0h40v40H0z'/></svg>");
    folder.write("zweite.html", "<p>Gr\xFC\xDF"
                                "e</p>\n");
    const struct {
        const char* name;
        void (DayTest::*step)();
    } steps[] = {{"a new page", &DayTest::writesANewPage},
                 {"save as", &DayTest::savesThePageUnderAName},
                 {"find and replace", &DayTest::replacesAColor},
                 {"an edit in the page", &DayTest::editsThePageInThePreview},
                 {"a second file", &DayTest::opensASecondFile},
                 {"opened again", &DayTest::opensTheFirstFileAgain},
                 {"two languages", &DayTest::readsTheInterfaceInBothLanguages},
                 {"a kill", &DayTest::losesNothingWhenKilled},
                 {"the end", &DayTest::quits}};
    for (const auto& [name, step] : steps) {
        SCOPED_TRACE(name);
        (this->*step)();
        if (HasFailure())
            return;
    }
}

} // namespace
} // namespace corvanta
