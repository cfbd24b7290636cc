#include "ApplicationTest.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/WidgetTree.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <gtkmm/icontheme.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace corvanta {
namespace {

/// Documents in their windows.
class CorvantaAppTest : public ApplicationTest {
protected:
    /// Lets go of files over a window, as the desktop does in the end. Whether the pointer can drag
    /// something there is the toolkit's affair.
    static void drop(DocumentWindow& window, const std::vector<std::filesystem::path>& files) {
        GSList* list = nullptr;
        for (const std::filesystem::path& file : files)
            list = g_slist_append(list, g_file_new_for_path(file.c_str()));
        GValue value = G_VALUE_INIT;
        g_value_init(&value, GDK_TYPE_FILE_LIST);
        g_value_take_boxed(&value, gdk_file_list_new_from_list(list));
        g_slist_free_full(list, g_object_unref);
        GListModel* controllers = gtk_widget_observe_controllers(GTK_WIDGET(window.gobj()));
        for (guint i = 0; i < g_list_model_get_n_items(controllers); ++i) {
            auto* controller = static_cast<GObject*>(g_list_model_get_item(controllers, i));
            gboolean isTaken = FALSE;
            if (GTK_IS_DROP_TARGET(controller))
                g_signal_emit_by_name(controller, "drop", &value, 5.0, 5.0, &isTaken);
            g_object_unref(controller);
        }
        g_object_unref(controllers);
        g_value_unset(&value);
    }

    /// Has `content`, which it takes over, dragged out of `widget`, as out of another program.
    void offer(Gtk::Widget& widget, GdkContentProvider* content) {
        GtkDragSource* source = gtk_drag_source_new();
        gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(source), GTK_PHASE_CAPTURE);
        gtk_drag_source_set_content(source, content);
        g_object_unref(content);
        // As file managers and browsers offer it.
        gtk_drag_source_set_actions(source, static_cast<GdkDragAction>(GDK_ACTION_COPY | GDK_ACTION_MOVE));
        dragBegan = SignalConnection(
            source, "drag-begin",
            +[](GtkDragSource*, GdkDrag* begun, gpointer self) {
                static_cast<CorvantaAppTest*>(self)->drag = begun;
            },
            this);
        dragEnded = SignalConnection(
            source, "drag-end",
            +[](GtkDragSource*, GdkDrag*, gboolean, gpointer self) {
                static_cast<CorvantaAppTest*>(self)->drag = nullptr;
            },
            this);
        gtk_widget_add_controller(widget.gobj(), GTK_EVENT_CONTROLLER(source));
    }

    static GdkContentProvider* offeredFile(const std::filesystem::path& path) {
        GFile* file = g_file_new_for_path(path.c_str());
        GdkContentProvider* content = gdk_content_provider_new_typed(G_TYPE_FILE, file);
        g_object_unref(file);
        return content;
    }

    /// What a browser offers of a link: a list of addresses, and a text.
    static GdkContentProvider* offeredLink(const std::string& url) {
        const std::string list = url + "\r\n";
        GBytes* bytes = g_bytes_new(list.data(), list.size());
        GdkContentProvider* forms[] = {gdk_content_provider_new_for_bytes("text/uri-list", bytes),
                                       gdk_content_provider_new_typed(G_TYPE_STRING, url.c_str())};
        g_bytes_unref(bytes);
        return gdk_content_provider_new_union(forms, std::size(forms));
    }

    /// Drags what `from` offers over `to` until `mayFall`, and lets it fall.
    void dragAndDrop(Gtk::Widget& from, Gtk::Widget& to, const std::function<bool()>& mayFall) {
        int way = 0;
        // A window that is only just being placed may be elsewhere when the button is pressed.
        constexpr int mostTries = 10;
        for (int tries = 0; tries < mostTries && drag == nullptr; ++tries) {
            releasePointer(from);
            movePointer(from, 100, 100);
            pressPointer(from);
            // Some way until the toolkit takes it for a drag.
            waitUntil(
                [&] {
                    movePointer(from, 100 + ++way % 50, 100);
                    return drag != nullptr;
                },
                std::chrono::seconds(3));
        }
        ASSERT_NE(drag, nullptr);
        ASSERT_TRUE(waitUntil([&] {
            movePointer(to, 60 + ++way % 50, to.get_height() / 2);
            return mayFall();
        }));
        releasePointer(from);
        EXPECT_TRUE(waitUntil([this] { return drag == nullptr; }));
    }

    static bool takesWhatIsDragged(Gtk::Widget& widget) {
        return (gtk_widget_get_state_flags(widget.gobj()) & GTK_STATE_FLAG_DROP_ACTIVE) != 0;
    }

    /// What is being dragged.
    GdkDrag* drag = nullptr;
    SignalConnection dragBegan;
    SignalConnection dragEnded;

    /// The labels of a menu and of its sections, one after another.
    static std::vector<std::string> labels(GMenuModel* menu) {
        std::vector<std::string> labels;
        for (int item = 0; item < g_menu_model_get_n_items(menu); ++item) {
            char* label = nullptr;
            if (g_menu_model_get_item_attribute(menu, item, G_MENU_ATTRIBUTE_LABEL, "s", &label) != FALSE) {
                labels.emplace_back(label);
                g_free(label);
            }
            if (GMenuModel* section = g_menu_model_get_item_link(menu, item, G_MENU_LINK_SECTION)) {
                std::ranges::copy(CorvantaAppTest::labels(section), std::back_inserter(labels));
                g_object_unref(section);
            }
        }
        return labels;
    }
};

TEST_F(CorvantaAppTest, OpensTheTemplateWithoutAFile) {
    DocumentWindow& window = openNothing();
    EXPECT_EQ(text(window), DocumentTemplate::newHTML);
    EXPECT_EQ(window.get_title(), "Ohne Titel – Corvanta");
}

TEST_F(CorvantaAppTest, FindsItsIconBesideItsResources) {
    EXPECT_TRUE(
        Gtk::IconTheme::get_for_display(Gdk::Display::get_default())->has_icon(CorvantaApp::identifier));
}

TEST_F(CorvantaAppTest, ShowsThePageAndItsPreview) {
    folder.write("index.html", "<link rel=stylesheet href=stil.css><p>Grüße</p>");
    folder.write("stil.css", "p { color: rgb(1, 2, 3); }");
    DocumentWindow& window = open(folder / "index.html");
    EXPECT_EQ(window.get_title(), "index.html – Corvanta");
    EXPECT_TRUE(previewShows(window, "Grüße"));
    EXPECT_TRUE(waitUntil([&] {
        return inPreview(window, "getComputedStyle(document.querySelector('p')).color") == "rgb(1, 2, 3)";
    }));
}

TEST_F(CorvantaAppTest, FollowsTheTypingInThePreviewAndSavesItByteForByte) {
    folder.write("index.html", "<p>alt</p>\r\n\r\n");
    DocumentWindow& window = open(folder / "index.html");
    ASSERT_TRUE(previewShows(window, "alt"));

    typeInto(window, "neu und ");
    EXPECT_EQ(text(window), "neu und <p>alt</p>\r\n\r\n");
    EXPECT_EQ(window.get_title(), "• index.html – Corvanta");
    EXPECT_TRUE(previewShows(window, "neu und alt"));
    EXPECT_EQ(fileContent(folder / "index.html"), "<p>alt</p>\r\n\r\n");

    keyboard.press("Control+s");
    ASSERT_TRUE(waitUntil([&] { return window.get_title() == "index.html – Corvanta"; }));
    EXPECT_EQ(fileContent(folder / "index.html"), "neu und <p>alt</p>\r\n\r\n");
}

TEST_F(CorvantaAppTest, TakesTheMarkerAwayWhenEverythingIsUndone) {
    folder.write("index.html", "<p>alt</p>");
    DocumentWindow& window = open(folder / "index.html");
    typeInto(window, "x");
    keyboard.press("Control+z");
    EXPECT_TRUE(waitUntil([&] { return window.get_title() == "index.html – Corvanta"; }));
}

TEST_F(CorvantaAppTest, FormatsThePageAsOneStepThatCanBeUndone) {
    folder.write("index.html", "<ul><li>eins</li><li>zwei</li></ul>\n");
    DocumentWindow& window = open(folder / "index.html");
    keyboard.press("Control+i");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "<ul>\n\t<li>eins</li>\n\t<li>zwei</li>\n</ul>\n"; }));
    EXPECT_TRUE(window.document().isEdited());
    keyboard.press("Control+z");
    EXPECT_TRUE(waitUntil([&] { return !window.document().isEdited(); })) << text(window);
}

TEST_F(CorvantaAppTest, IsNotEditedByFormattingAFormattedPage) {
    folder.write("index.html", "<p>x</p>\n");
    DocumentWindow& window = open(folder / "index.html");
    keyboard.press("Control+i");
    letKeysArrive(window);
    EXPECT_FALSE(window.document().isEdited());
}

TEST_F(CorvantaAppTest, WritesALegacyFileBackAsUtf8) {
    folder.write("alt.html", "<p>Gr\xFC\xDF"
                             "e</p>");
    DocumentWindow& window = open(folder / "alt.html");
    EXPECT_EQ(text(window), "<p>Grüße</p>");
    typeInto(window, "x");
    keyboard.press("Control+s");
    ASSERT_TRUE(waitUntil([&] { return !window.document().isEdited(); }));
    EXPECT_EQ(fileContent(folder / "alt.html"), "x<p>Grüße</p>");
}

TEST_F(CorvantaAppTest, DoesNotTouchAFileThatWasNotEdited) {
    folder.write("index.html", "\xEF\xBB\xBF<p>alt</p>");
    std::filesystem::last_write_time(folder / "index.html",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    const auto before = std::filesystem::last_write_time(folder / "index.html");
    DocumentWindow& window = open(folder / "index.html");
    ASSERT_TRUE(previewShows(window, "alt"));
    keyboard.press("Control+s");
    letKeysArrive(window);
    EXPECT_EQ(std::filesystem::last_write_time(folder / "index.html"), before);
    EXPECT_EQ(fileContent(folder / "index.html"), "\xEF\xBB\xBF<p>alt</p>");
}

TEST_F(CorvantaAppTest, OpensAFileInOneWindowOnlyWhateverItsName) {
    folder.write("index.html", "x");
    std::filesystem::create_symlink(folder / "index.html", folder / "link.html");
    std::filesystem::create_hard_link(folder / "index.html", folder / "zweitname.html");
    DocumentWindow& window = open(folder / "index.html");
    open(folder / "link.html");
    open(folder / "zweitname.html");
    EXPECT_EQ(app->get_windows().size(), 1U);
    EXPECT_EQ(&activeWindow(), &window);
}

TEST_F(CorvantaAppTest, ClosesTheUntouchedTemplateWhenAFileIsOpened) {
    folder.write("index.html", "x");
    openNothing();
    app->open(Gio::File::create_for_path((folder / "index.html").string()));
    EXPECT_TRUE(waitUntil([&] {
        return app->get_windows().size() == 1 &&
               app->get_windows().front()->get_title() == "index.html – Corvanta";
    }));
}

TEST_F(CorvantaAppTest, SaysSoInADialogWhenWhatIsOpenedIsNoFile) {
    ASSERT_EQ(::mkfifo((folder / "rohr.html").c_str(), 0600), 0);
    const std::filesystem::path missing = folder / "fehlt.html";
    for (const std::filesystem::path& path : {folder.path(), folder / "rohr.html", missing}) {
        app->open(Gio::File::create_for_path(path.string()));
        dismissDialog();
        activeWindow();
    }
}

TEST_F(CorvantaAppTest, AsksBeforeItOpensAHugeFile) {
    folder.write("riesig.html", "");
    std::filesystem::resize_file(folder / "riesig.html", 1024ULL * 1024 * 1024);
    app->open(Gio::File::create_for_path((folder / "riesig.html").string()));
    dismissDialog();
    EXPECT_EQ(text(activeWindow()), DocumentTemplate::newHTML);
}

TEST_F(CorvantaAppTest, AsksBeforeItClosesAnEditedDocument) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    typeInto(window, "a");
    keyboard.press("Control+w");
    dismissDialog();
    EXPECT_EQ(text(activeWindow()), "ax");
    EXPECT_EQ(fileContent(folder / "index.html"), "x");
}

TEST_F(CorvantaAppTest, ReportsWhyAFileCannotBeSavedAndKeepsTheText) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    typeInto(window, "a");
    std::filesystem::remove(folder / "index.html");
    std::filesystem::create_directory(folder / "index.html");
    keyboard.press("Control+s");
    dismissDialog();
    EXPECT_EQ(text(activeWindow()), "ax");
    EXPECT_TRUE(window.document().isEdited());
}

TEST_F(CorvantaAppTest, OpensAFileAgainRightAfterItsWindowClosed) {
    folder.write("index.html", "x");
    open(folder / "index.html").closeForGood();
    DocumentWindow& window = open(folder / "index.html");
    EXPECT_EQ(text(window), "x");
    EXPECT_EQ(app->get_windows().size(), 1U);
}

TEST_F(CorvantaAppTest, FollowsAFileThatWasChangedOutsideAsOneStepThatCanBeUndone) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    folder.write("index.html", "anders");
    ASSERT_TRUE(waitUntil([&] { return text(window) == "anders"; }));
    EXPECT_EQ(window.get_title(), "index.html – Corvanta");
    keyboard.press("Control+z");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "x"; }));
    EXPECT_TRUE(window.document().isEdited());
}

TEST_F(CorvantaAppTest, FindsAChangeThatNothingTellsOfWhenTheUserTurnsToTheWindow) {
    std::filesystem::create_directory(folder / "anderswo");
    folder.write("index.html", "x");
    folder.write("andere.html", "y");
    std::filesystem::create_hard_link(folder / "index.html", folder / "anderswo/index.html");
    DocumentWindow& window = open(folder / "index.html");
    open(folder / "andere.html");
    ASSERT_TRUE(waitUntil([&] { return !window.is_active(); }));
    // The system tells only of changes by the name that is watched.
    folder.write("anderswo/index.html", "anders");
    window.present();
    EXPECT_TRUE(waitUntil([&] { return text(window) == "anders"; }));
}

TEST_F(CorvantaAppTest, KeepsWatchUnderTheNewNameAfterSavingAs) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    window.saveAs(folder / "neu.html");
    EXPECT_EQ(window.get_title(), "neu.html – Corvanta");
    folder.write("neu.html", "anders");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "anders"; }));
}

TEST_F(CorvantaAppTest, OpensFilesThatAreDroppedOnAWindow) {
    folder.write("eins.html", "1");
    folder.write("zwei_ä.html", "2");
    folder.write("drei.html", "3");
    DocumentWindow& window = open(folder / "eins.html");
    drop(window, {folder / "zwei_ä.html", folder / "drei.html"});
    EXPECT_TRUE(waitUntil([] { return windowTitled("zwei_ä.html – Corvanta") != nullptr; }));
    EXPECT_NE(windowTitled("drei.html – Corvanta"), nullptr);
    EXPECT_EQ(text(window), "1");
}

TEST_F(CorvantaAppTest, OpensAFileThatIsDroppedOnThePage) {
    folder.write("eins.html", "<p>eins</p>");
    folder.write("zwei.html", "<p>zwei</p>");
    DocumentWindow& window = open(folder / "eins.html");
    ASSERT_TRUE(previewShows(window, "eins"));
    offer(textView(window), offeredFile(folder / "zwei.html"));
    ASSERT_EQ(inPreview(window, "addEventListener('dragenter', () => { window.isOver = true; }, true); 1"),
              "1");
    // The engine is asked, too, and would complain of a drag that is over before it has answered.
    dragAndDrop(textView(window), window.contentView().preview(),
                [&] { return inPreview(window, "window.isOver") == "true"; });
    EXPECT_TRUE(waitUntil([] { return windowTitled("zwei.html – Corvanta") != nullptr; }));
    EXPECT_EQ(inPreview(window, "location.href + document.body.textContent"),
              "vmpreview://dokument/eins.htmleins");
    EXPECT_EQ(text(window), "<p>eins</p>");
}

TEST_F(CorvantaAppTest, OpensAFileThatIsDroppedBesideTheTextAndThePage) {
    folder.write("eins.html", "1");
    folder.write("zwei.html", "2");
    DocumentWindow& window = open(folder / "eins.html");
    offer(textView(window), offeredFile(folder / "zwei.html"));
    dragAndDrop(textView(window), *Glib::wrap(gtk_window_get_titlebar(GTK_WINDOW(window.gobj()))),
                [&] { return takesWhatIsDragged(window); });
    EXPECT_TRUE(waitUntil([] { return windowTitled("zwei.html – Corvanta") != nullptr; }));
    EXPECT_EQ(text(window), "1");
}

TEST_F(CorvantaAppTest, LeavesALinkToTheTextThatItIsDroppedOn) {
    folder.write("index.html", "<p>x</p>");
    DocumentWindow& window = open(folder / "index.html");
    ASSERT_TRUE(previewShows(window, "x"));
    Gtk::Widget& source = window.contentView().preview();
    offer(source, offeredLink("https://example.org/seite"));
    dragAndDrop(source, textView(window),
                [&] { return takesWhatIsDragged(textView(window)) && !takesWhatIsDragged(window); });
    EXPECT_TRUE(waitUntil([&] {
        return text(window).find("https://example.org/seite") != std::string::npos;
    })) << text(window);
}

TEST_F(CorvantaAppTest, AsksWhichTextToKeepWhenAFileWithEditsWasChangedOutside) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    typeInto(window, "a");
    folder.write("index.html", "anders");
    ASSERT_TRUE(waitUntil([] { return dialog() != nullptr; }));
    EXPECT_EQ(text(window), "ax");
    dialog()->response(Gtk::ResponseType::YES);
    EXPECT_TRUE(waitUntil([&] { return text(window) == "anders"; }));
    EXPECT_FALSE(window.document().isEdited());
}

TEST_F(CorvantaAppTest, DoesNotOverwriteWhatAnotherProgramWroteWithoutAQuestion) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    typeInto(window, "a");
    folder.write("index.html", "anders");
    keyboard.press("Control+s");
    ASSERT_TRUE(waitUntil([] { return dialog() != nullptr; }));
    EXPECT_EQ(fileContent(folder / "index.html"), "anders");
    dialog()->response(Gtk::ResponseType::NO);
    EXPECT_TRUE(waitUntil([&] { return fileContent(folder / "index.html") == "ax"; }));
}

TEST_F(CorvantaAppTest, GoesBackToTheSavedTextAfterAQuestion) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    EXPECT_FALSE(window.lookup_action("revert")->get_enabled());
    typeInto(window, "a");
    window.activate_action("win.revert");
    answer(Gtk::ResponseType::YES);
    EXPECT_TRUE(waitUntil([&] { return text(window) == "x"; }));
    EXPECT_EQ(window.get_title(), "index.html – Corvanta");
}

TEST_F(CorvantaAppTest, DuplicatesADocumentIntoANewOneThatIsNotSaved) {
    folder.write("index.html", "x");
    open(folder / "index.html").activate_action("win.duplicate");
    ASSERT_TRUE(waitUntil([] { return app->get_windows().size() == 2; }));
    DocumentWindow* copy = windowTitled("• Ohne Titel – Corvanta");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(text(*copy), "x");
}

TEST_F(CorvantaAppTest, ListsTheFilesThatWereOpenedLast) {
    folder.write("eins_a.html", "1");
    folder.write("zwei.html", "2");
    open(folder / "eins_a.html").closeForGood();
    DocumentWindow& window = open(folder / "zwei.html");
    const auto recent = [&] { return labels(G_MENU_MODEL(window.recentFiles()->gobj())); };
    ASSERT_GE(recent().size(), 3U);
    EXPECT_EQ(recent()[0], "zwei.html");
    EXPECT_EQ(recent()[1], "eins__a.html");
    EXPECT_EQ(recent().back(), "Liste leeren");

    app->activate_action("open-recent", Glib::Variant<int>::create(1));
    EXPECT_TRUE(waitUntil([&] { return windowTitled("eins_a.html – Corvanta") != nullptr; }));
    app->activate_action("clear-recent");
    EXPECT_EQ(recent(), std::vector<std::string>{"Liste leeren"});
}

TEST_F(CorvantaAppTest, HidesAndShowsThePreviewByItsShortcut) {
    folder.write("index.html", "<p>da</p>");
    DocumentWindow& window = open(folder / "index.html");
    ASSERT_TRUE(previewShows(window, "da"));
    keyboard.press("Control+Alt+p");
    EXPECT_TRUE(waitUntil([&] { return !window.contentView().preview().get_visible(); }));
    keyboard.press("Control+Alt+p");
    EXPECT_TRUE(waitUntil([&] { return window.contentView().preview().get_visible(); }));
    EXPECT_TRUE(previewShows(window, "da"));
}

TEST_F(CorvantaAppTest, InsertsATemplateAndPutsTheCaretIntoIt) {
    folder.write("index.html", "");
    DocumentWindow& window = open(folder / "index.html");
    gtk_widget_activate_action(GTK_WIDGET(window.gobj()), "win.insert", "i", 0);
    ASSERT_TRUE(waitUntil([&] { return text(window) == "<a href=\"\"></a>"; }));
    keyboard.type("x");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "<a href=\"x\"></a>"; })) << text(window);
}

TEST_F(CorvantaAppTest, TogglesACommentByItsShortcut) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    keyboard.press("Control+a");
    keyboard.press("Control+slash");
    ASSERT_TRUE(waitUntil([&] { return text(window) == "<!-- x -->"; })) << text(window);
    keyboard.press("Control+a");
    keyboard.press("Control+slash");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "x"; })) << text(window);
}

TEST_F(CorvantaAppTest, ShowsTheAssistantByItsShortcut) {
    DocumentWindow& window = openNothing();
    keyboard.press("Control+Alt+c");
    EXPECT_TRUE(waitUntil([&] {
        const auto texts = shownTexts(window);
        return std::ranges::find(texts, "Claude-Assistent") != texts.end();
    }));
}

TEST_F(CorvantaAppTest, ClosesHelpShortcutsAndAboutByEscapeAndByTheKeysForADocument) {
    DocumentWindow& document = openNothing();
    for (const char* action : {"help", "shortcuts", "about"}) {
        for (const char* keys : {"Escape", "Control+w"}) {
            app->activate_action(action);
            ASSERT_TRUE(waitUntil([&] { return app->get_windows().size() == 2 && !document.is_active(); }));
            ASSERT_TRUE(waitUntil([&] { return app->get_active_window()->is_active(); }));
            keyboard.press(keys);
            EXPECT_TRUE(waitUntil([] { return app->get_windows().size() == 1; })) << action << " " << keys;
            ASSERT_TRUE(isAt(document));
        }
    }
}

TEST_F(CorvantaAppTest, OpensHelpShortcutsAndAboutOnceEach) {
    openNothing();
    for (const char* action : {"help", "shortcuts", "about", "help", "shortcuts", "about"})
        app->activate_action(action);
    EXPECT_EQ(app->get_windows().size(), 4U);
}

} // namespace
} // namespace corvanta
