#include "ApplicationTest.hpp"
#include "Documents/Fingerprint.hpp"
#include "Documents/Journal.hpp"
#include "Documents/WorkerThread.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <glibmm/miscutils.h>
#include <glibmm/spawn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using Restoration = DocumentWindows::Restoration;

/// What is kept when the program ends, and comes back when it starts.
class SessionInTheAppTest : public ApplicationTest {
protected:
    /// Leaves an edit behind as a process does that dies: "verloren" instead of the text of `file`, which
    /// may be absent. Returns the journal's name.
    std::string leaveJournalBehind(const std::optional<std::filesystem::path>& file) {
        const std::string content = file ? fileContent(*file) : "";
        PosixFileOperations operations;
        WorkerThread worker;
        Journal journal(operations, worker, CorvantaApp::journalFolder(),
                        {file, file ? Fingerprint::of(content) : Fingerprint(), content});
        EXPECT_FALSE(journal.append({}, "verloren"));
        return journal.name().value_or("");
    }
};

TEST_F(SessionInTheAppTest, KeepsEachEditInAJournalUntilItIsSaved) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    EXPECT_EQ(journalCount(), 0U);
    typeInto(window, "a");
    EXPECT_EQ(journalCount(), 1U);
    keyboard.press("Control+s");
    ASSERT_TRUE(waitUntil([&] { return !window.document().isEdited(); }));
    EXPECT_EQ(journalCount(), 0U);
}

TEST_F(SessionInTheAppTest, ForgetsWhatTheUserDoesNotWantToSave) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    typeInto(window, "a");
    keyboard.press("Control+w");
    answer(Gtk::ResponseType::NO);
    EXPECT_TRUE(waitUntil([] { return app->get_windows().empty(); }));
    EXPECT_EQ(journalCount(), 0U);
    EXPECT_EQ(fileContent(folder / "index.html"), "x");
}

TEST_F(SessionInTheAppTest, BringsBackTheUnsavedTextOfAFileAndSaysSo) {
    folder.write("index.html", "x");
    leaveJournalBehind(folder / "index.html");
    app->documentWindows().restore({}, Restoration::everything);
    answer(Gtk::ResponseType::OK);
    DocumentWindow& window = activeWindow();
    EXPECT_EQ(window.get_title(), "• index.html – Corvanta");
    EXPECT_EQ(text(window), "verloren");
    EXPECT_EQ(fileContent(folder / "index.html"), "x");
    keyboard.press("Control+s");
    EXPECT_TRUE(waitUntil([&] { return fileContent(folder / "index.html") == "verloren"; }));
    EXPECT_EQ(journalCount(), 0U);
}

TEST_F(SessionInTheAppTest, BringsBackInItsOwnWindowATextOfWhichTheSessionDoesNotKnowYet) {
    folder.write("index.html", "x");
    leaveJournalBehind(folder / "index.html");
    Session session;
    session.windows.emplace_back().file = folder / "index.html";
    app->documentWindows().restore(session, Restoration::everything);
    answer(Gtk::ResponseType::OK);
    EXPECT_EQ(text(activeWindow()), "verloren");
    EXPECT_EQ(activeWindow().get_title(), "• index.html – Corvanta");
    EXPECT_EQ(app->get_windows().size(), 1U);
}

TEST_F(SessionInTheAppTest, BringsBackATextThatWasNeverInAFile) {
    leaveJournalBehind(std::nullopt);
    app->documentWindows().restore({}, Restoration::everything);
    answer(Gtk::ResponseType::OK);
    EXPECT_EQ(text(activeWindow()), "verloren");
    EXPECT_EQ(activeWindow().get_title(), "• Ohne Titel – Corvanta");
}

TEST_F(SessionInTheAppTest, ShowsBothTextsWhenTheFileWasChangedSinceItsTextWasLeftBehind) {
    folder.write("index.html", "x");
    leaveJournalBehind(folder / "index.html");
    folder.write("index.html", "anders");
    app->documentWindows().restore({}, Restoration::everything);
    answer(Gtk::ResponseType::OK);
    ASSERT_NE(windowTitled("index.html – Corvanta"), nullptr);
    ASSERT_NE(windowTitled("• Ohne Titel – Corvanta"), nullptr);
    EXPECT_EQ(text(*windowTitled("index.html – Corvanta")), "anders");
    EXPECT_EQ(text(*windowTitled("• Ohne Titel – Corvanta")), "verloren");
}

TEST_F(SessionInTheAppTest, BringsTheWindowsBackAsTheyWere) {
    std::string manyLines(300, '\n');
    folder.write("lang.html", manyLines.append("Ende"));
    folder.write("kurz.html", "Grüße");
    DocumentWindow& longer = open(folder / "lang.html");
    IndentingTextView& longerText = textView(longer);
    longerText.setSelectedRange({250, 3});
    longerText.scrollToLine(40);
    ASSERT_TRUE(waitUntil([&] { return longerText.firstVisibleLine() == 40; }))
        << longerText.firstVisibleLine();
    longer.activate_action("win.show-preview");
    DocumentWindow& shorter = open(folder / "kurz.html");
    ASSERT_TRUE(isAt(shorter));
    const Session session = app->documentWindows().session();
    ASSERT_EQ(session.windows.size(), 2U);
    EXPECT_FALSE(session.windows[0].showsPreview);
    longer.closeForGood();
    shorter.closeForGood();
    ASSERT_TRUE(waitUntil([] { return app->get_windows().empty(); }));

    app->documentWindows().restore(session, Restoration::everything);
    DocumentWindow* back = windowTitled("lang.html – Corvanta");
    ASSERT_NE(back, nullptr);
    ASSERT_NE(windowTitled("kurz.html – Corvanta"), nullptr);
    EXPECT_TRUE(isAt(*windowTitled("kurz.html – Corvanta")));
    const IndentingTextView& view = back->contentView().codeEditor().textView();
    EXPECT_EQ(view.selectedRange(), (TextRange{250, 3}));
    EXPECT_TRUE(waitUntil([&] { return view.firstVisibleLine() == 40; })) << view.firstVisibleLine();
    EXPECT_FALSE(back->contentView().preview().get_visible());
    EXPECT_EQ(app->documentWindows().session(), session);
}

TEST_F(SessionInTheAppTest, BringsBackHowTheWindowIsDivided) {
    folder.write("kurz.html", "Grüße");
    DocumentWindow& window = open(folder / "kurz.html");
    ASSERT_TRUE(isAt(window));
    window.contentView().setCodeWidth(420);
    const Session session = app->documentWindows().session();
    window.closeForGood();
    ASSERT_TRUE(waitUntil([] { return app->get_windows().empty(); }));

    app->documentWindows().restore(session, Restoration::everything);
    DocumentWindow* back = windowTitled("kurz.html – Corvanta");
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(isAt(*back));
    EXPECT_TRUE(waitUntil([&] { return back->contentView().codeEditor().get_width() == 420; }));
    EXPECT_EQ(app->documentWindows().session(), session);
}

TEST_F(SessionInTheAppTest, BringsBackAWindowThatFilledTheScreenAndWhatItGoesBackTo) {
    folder.write("kurz.html", "Grüße");
    DocumentWindow& window = open(folder / "kurz.html");
    ASSERT_TRUE(isAt(window));
    ASSERT_TRUE(waitUntil([&] { return window.get_width() > 0; }));
    const int width = window.get_width();
    window.maximize();
    ASSERT_TRUE(waitUntil([&] { return window.is_maximized() && window.get_width() > width; }));
    const Session session = app->documentWindows().session();
    EXPECT_TRUE(session.windows.front().isMaximized);
    window.closeForGood();
    ASSERT_TRUE(waitUntil([] { return app->get_windows().empty(); }));

    app->documentWindows().restore(session, Restoration::everything);
    DocumentWindow* back = windowTitled("kurz.html – Corvanta");
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(waitUntil([&] { return back->is_maximized() && back->get_width() > width; }));
    back->unmaximize();
    EXPECT_TRUE(waitUntil([&] { return back->get_width() == width; })) << back->get_width();
}

TEST_F(SessionInTheAppTest, BringsBackOnlyWhatIsUnsavedWhenTheUserOpensAFile) {
    folder.write("eins.html", "1");
    folder.write("zwei.html", "2");
    leaveJournalBehind(folder / "zwei.html");
    Session session;
    session.windows.emplace_back().file = folder / "eins.html";
    session.windows.emplace_back().file = folder / "zwei.html";
    app->documentWindows().restore(session, Restoration::unsavedOnly);
    answer(Gtk::ResponseType::OK);
    EXPECT_EQ(app->get_windows().size(), 1U);
    EXPECT_EQ(text(activeWindow()), "verloren");
}

TEST_F(SessionInTheAppTest, SaysNothingWhenEverythingComesBackAsItWasLeft) {
    const std::string journal = leaveJournalBehind(std::nullopt);
    Session session;
    session.hasEndedWell = true;
    session.windows.emplace_back().journal = journal;
    session.windows.back().caret = 3;
    session.windows.emplace_back().file = folder / "gibt es nicht mehr.html";
    session.windows.emplace_back().journal = "gibt es auch nicht";
    app->documentWindows().restore(session, Restoration::everything);
    ASSERT_EQ(app->get_windows().size(), 1U);
    DocumentWindow& window = activeWindow();
    typeInto(window, "x");
    EXPECT_EQ(text(window), "verxloren");
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(SessionInTheAppTest, TakesNoHarmFromASessionThatNoLongerFits) {
    folder.write("index.html", "kurz");
    Session session;
    Session::Window& window = session.windows.emplace_back();
    window.file = folder / "index.html";
    window.caret = -5;
    window.selectionLength = 1'000;
    window.firstLine = 1'000'000'000'000;
    window.width = -1;
    app->documentWindows().restore(session, Restoration::everything);
    EXPECT_EQ(textView(activeWindow()).selectedRange(), (TextRange{0, 4}));
}

TEST_F(SessionInTheAppTest, KeepsAllWindowsWhenTheUserDoesNotWantToQuitAfterAll) {
    folder.write("eins.html", "1");
    folder.write("zwei.html", "2");
    DocumentWindow& one = open(folder / "eins.html");
    typeInto(one, "a");
    open(folder / "zwei.html");
    bool quits = false;
    app->documentWindows().quit([&] { quits = true; });
    answer(Gtk::ResponseType::CANCEL);
    EXPECT_FALSE(quits);
    EXPECT_EQ(app->get_windows().size(), 2U);
}

TEST_F(SessionInTheAppTest, AsksWindowByWindowBeforeItQuits) {
    folder.write("eins.html", "1");
    folder.write("zwei.html", "2");
    for (const char* name : {"eins.html", "zwei.html"}) {
        DocumentWindow& window = open(folder / name);
        ASSERT_TRUE(isAt(window));
        typeInto(window, "a");
    }
    Session session;
    app->documentWindows().quit([&] { session = app->documentWindows().session(); });
    answer(Gtk::ResponseType::YES);
    EXPECT_EQ(app->get_windows().size(), 2U);
    answer(Gtk::ResponseType::NO);
    EXPECT_TRUE(waitUntil([] { return app->get_windows().empty(); }));
    EXPECT_EQ(session.windows.size(), 2U);
    EXPECT_EQ(fileContent(folder / "eins.html"), "1");
    EXPECT_EQ(fileContent(folder / "zwei.html"), "a2");
    EXPECT_EQ(journalCount(), 0U);
}

TEST_F(SessionInTheAppTest, RestoresAfterTwoDeathsOnlyWhenTheUserWantsIt) {
    bool isWanted = false;
    app->documentWindows().sayThatTheLastStartsDied([&] { isWanted = true; });
    answer(Gtk::ResponseType::YES);
    EXPECT_TRUE(isWanted);
    EXPECT_EQ(text(activeWindow()), DocumentTemplate::newHTML);
}

/// The program started once more, while this one runs.
class SecondStartTest : public ApplicationTest {
protected:
    /// Runs a line of shell, in which $corvanta is the program and $folder the test's folder.
    void run(const std::string& line) {
        Glib::setenv("corvanta", CORVANTA_PROGRAM);
        Glib::setenv("folder", folder.path().string());
        Glib::spawn_async("", std::vector<std::string>{"sh", "-c", line}, Glib::SpawnFlags::SEARCH_PATH);
    }

    /// Waits for the window of a document that another process opens.
    static DocumentWindow* windowOf(const std::string& name) {
        DocumentWindow* found = nullptr;
        EXPECT_TRUE(waitUntil([&] {
            found = windowTitled(name + " – Corvanta");
            return found != nullptr;
        })) << name;
        return found;
    }

    /// The number of the line with the caret, the first being 1.
    static int caretLine(DocumentWindow& window) {
        const auto buffer = textView(window).get_buffer();
        return buffer->get_insert()->get_iter().get_line() + 1;
    }
};

TEST_F(SecondStartTest, OpensSeveralFilesEachAtItsLine) {
    folder.write("eins.html", "a\nb\r\nc\n");
    folder.write("zwei.css", "a\nb");
    folder.write("drei.js:2", "a\nb");
    folder.write("drei.js", "a\nb");
    run("cd \"$folder\" && \"$corvanta\" eins.html:3 zwei.css:99 drei.js:2");
    DocumentWindow* one = windowOf("eins.html");
    DocumentWindow* two = windowOf("zwei.css");
    DocumentWindow* three = windowOf("drei.js:2");
    ASSERT_TRUE(one != nullptr && two != nullptr && three != nullptr);
    EXPECT_TRUE(waitUntil([&] { return caretLine(*one) == 3; })) << caretLine(*one);
    EXPECT_TRUE(waitUntil([&] { return caretLine(*two) == 2; })) << caretLine(*two);
    EXPECT_EQ(caretLine(*three), 1);
}

TEST_F(SecondStartTest, JumpsToTheLineInAFileThatIsOpen) {
    folder.write("lang.html", std::string(500, '\n'));
    DocumentWindow& window = open(folder / "lang.html");
    run("\"$corvanta\" \"$folder/lang.html:400\"");
    EXPECT_TRUE(waitUntil([&] { return caretLine(window) == 400; })) << caretLine(window);
    auto& view = textView(window);
    EXPECT_TRUE(waitUntil([&] {
        Gdk::Rectangle visible;
        Gdk::Rectangle caret;
        view.get_visible_rect(visible);
        view.get_iter_location(view.get_buffer()->get_insert()->get_iter(), caret);
        return caret.get_y() > visible.get_y() &&
               caret.get_y() + caret.get_height() < visible.get_y() + visible.get_height();
    }));
    EXPECT_EQ(app->get_windows().size(), 1U);
}

TEST_F(SecondStartTest, MakesTheStandardInputANewDocumentThatIsNotSaved) {
    run("printf '<p>Gr\\374\\337e\\000</p>' | \"$corvanta\" -");
    DocumentWindow* window = windowOf("• Ohne Titel");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(text(*window), std::string("<p>Grüße\0</p>", 15));
    EXPECT_EQ(window->document().fileLocation(), std::nullopt);
    EXPECT_EQ(caretLine(*window), 1);
}

} // namespace
} // namespace corvanta
