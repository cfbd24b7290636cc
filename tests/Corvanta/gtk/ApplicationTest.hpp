#pragma once

#include "Corvanta/gtk/CorvantaApp.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/gtk/Keyboard.hpp"

#include <gtest/gtest.h>
#include <gtkmm/messagedialog.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace corvanta {

/// The whole program with its windows, driven by keys. Whatever a test does, it waits for what comes of it: a
/// key that is sent before a window has the keyboard is lost.
class ApplicationTest : public testing::Test {
protected:
    // One program for all tests: a process registers its application with the desktop only once.
    static void SetUpTestSuite();

    void TearDown() override;

    /// Opens a file, or turns to its window; its text has the keyboard then.
    static DocumentWindow& open(const std::filesystem::path& path);

    /// Starts the program without a file; the text of the new document has the keyboard then.
    static DocumentWindow& openNothing();

    /// The document window that has the keyboard, as soon as there is one.
    static DocumentWindow& activeWindow();

    /// The window with this title, or null.
    static DocumentWindow* windowTitled(const std::string& title);

    /// Waits until the window has the keyboard.
    static bool isAt(DocumentWindow& window);

    /// Types one letter after another into the text of a window until they are all there.
    void typeInto(DocumentWindow& window, std::string_view letters);

    /// Waits until the program has dealt with all keys that were pressed before, for what they must not do.
    void letKeysArrive(Gtk::Window& window);

    /// The dialog on the screen; nothing when there is none.
    static Gtk::MessageDialog* dialog();

    /// Waits for a dialog and answers it.
    static void answer(Gtk::ResponseType response);

    /// Waits for a dialog and presses Escape.
    void dismissDialog();

    static std::string text(DocumentWindow& window) { return window.document().document.text; }
    static IndentingTextView& textView(DocumentWindow& window) {
        return window.contentView().codeEditor().textView();
    }

    /// What an expression gives in the page; empty when there is no preview.
    static std::string inPreview(DocumentWindow& window, const std::string& expression);
    static testing::AssertionResult previewShows(DocumentWindow& window, const std::string& content);

    /// How many journals hold something.
    static std::size_t journalCount();

    static std::string fileContent(const std::filesystem::path& path);

    TemporaryFolder folder;
    Keyboard keyboard;
    static inline CorvantaApp* app = nullptr;
};

} // namespace corvanta
