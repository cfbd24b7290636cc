#include "PreviewColumnFixture.hpp"

#include <glibmm/miscutils.h>
#include <gtkmm/filechooserdialog.h>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class PreviewHintTest : public PreviewColumnFixture {
protected:
    void SetUp() override {
        PreviewColumnFixture::SetUp();
        std::filesystem::create_directories(folder / "web" / "blog");
        folder.write("web/stil.css", "p { color: rgb(1, 2, 3) }");
    }

    void showBlog() {
        column.update("<link rel=stylesheet href=/stil.css><p>x</p>", folder / "web" / "blog" / "index.html");
    }

    /// All text that the user sees in `widget`.
    static std::string visibleText(Gtk::Widget& widget) {
        if (!widget.get_child_visible() || !widget.get_visible())
            return "";
        std::string text;
        if (const auto* label = dynamic_cast<Gtk::Label*>(&widget))
            text = label->get_text() + "\n";
        for (Gtk::Widget* child = widget.get_first_child(); child != nullptr;
             child = child->get_next_sibling())
            text += visibleText(*child);
        return text;
    }

    static Gtk::FileChooserDialog* panel() {
        for (Gtk::Widget* toplevel : Gtk::Window::list_toplevels())
            if (auto* dialog = dynamic_cast<Gtk::FileChooserDialog*>(toplevel);
                dialog && dialog->get_mapped())
                return dialog;
        return nullptr;
    }
};

TEST_F(PreviewHintTest, IsAbsentWhenThePageLinksNothingLocal) {
    show("<p>x</p>");
    EXPECT_FALSE(column.hint().get_visible());
}

TEST_F(PreviewHintTest, SaysThatAnUnsavedPageHasNoFilesYet) {
    column.update("<img src=bild.png>", std::nullopt);
    EXPECT_EQ(visibleText(column.hint()),
              "Verknüpfte Bilder und Stylesheets erscheinen, sobald die Datei gesichert ist.\n");
}

TEST_F(PreviewHintTest, GrantsTheFolderThatTheUserChooses) {
    showBlog();
    EXPECT_TRUE(visibleText(column.hint())
                    .starts_with("Für verknüpfte Bilder und CSS-Dateien braucht die Vorschau Zugriff auf den "
                                 "Projektordner.\n"));
    EXPECT_TRUE(waitUntil([this] {
        return visibleText(column.hint()).find("Nicht gefunden: stil.css\n") != std::string::npos;
    }));
    gtk_widget_activate(GTK_WIDGET(column.hint().grantButton().gobj()));
    ASSERT_TRUE(waitUntil([this] { return panel() != nullptr; }));
    EXPECT_NE(visibleText(*panel()).find("Wähle den Ordner, der die Wurzel deiner Website ist."),
              std::string::npos);
    panel()->set_file(Gio::File::create_for_path((folder / "web").string()));
    ASSERT_TRUE(waitUntil([this] {
        const auto file = panel()->get_file();
        return file && file->get_path() == (folder / "web").string();
    }));
    panel()->response(GTK_RESPONSE_ACCEPT);
    EXPECT_EQ(*folderAccess.releasedFolders, PreviewFolderAccess::Folders{folder / "web"});
    EXPECT_FALSE(column.hint().get_visible());
    EXPECT_TRUE(becomes("location.href", "vmpreview://dokument/blog/index.html"));
    EXPECT_TRUE(becomes("getComputedStyle(document.querySelector('p')).color", "rgb(1, 2, 3)"));
}

TEST_F(PreviewHintTest, ListsTheGrantsAndEndsThem) {
    defaults.set("previewFolderBookmarks", std::vector<std::string>{bookmarks.make(folder / "web").value()});
    PreviewFolderAccess grants(defaults, bookmarks, fileManager, log);
    GrantedFolders button(grants);
    EXPECT_TRUE(button.get_visible());
    auto* row = button.get_popover()->get_child()->get_first_child();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(visibleText(*row), (folder / "web").string() + "\n");
    auto* end = dynamic_cast<Gtk::Button*>(row->get_last_child());
    ASSERT_NE(end, nullptr);
    g_signal_emit_by_name(end->gobj(), "clicked");
    EXPECT_TRUE(waitUntil([&] { return grants.releasedFolders->empty(); }));
    EXPECT_FALSE(button.get_visible());
}

/// What is said in place of a preview for which `engine` has nothing.
std::string refusalOf(PreviewEngine& engine) {
    const PosixFileManager fileManager;
    const SharedMimeInfo typeRegistry{fileManager, {}};
    GLibMainQueue queue;
    RecordedLog log;
    InMemoryUserDefaults defaults;
    const PosixFolderBookmarks bookmarks;
    PreviewFolderAccess folderAccess{defaults, bookmarks, fileManager, log};
    PreviewColumn column(
        {engine, folderAccess, fileManager, typeRegistry, queue, log, [](const std::string&) {}},
        [](const std::string&) {});
    TestWindow window(column);
    column.update("<p>x</p>", std::nullopt);
    column.start();
    EXPECT_TRUE(waitUntil([&] { return column.refusal().get_mapped(); }));
    EXPECT_EQ(column.webView(), nullptr);
    return column.refusal().get_text();
}

TEST(PreviewWithoutHelpersTest, SaysWhyThereIsNoPreview) {
    const std::string path = Glib::getenv("PATH");
    const TemporaryFolder nothing;
    for (const char* helper : {"bwrap", "xdg-dbus-proxy", "beide fehlen"}) {
        const TemporaryFolder failing;
        if (std::string(helper) == "beide fehlen") {
            Glib::setenv("PATH", nothing.path().string());
        } else {
            failing.write(helper, "#!/bin/sh\nexit 1\n");
            std::filesystem::permissions(failing / helper, std::filesystem::perms::owner_all);
            Glib::setenv("PATH", failing.path().string() + ":" + path);
        }
        PreviewEngine engine;
        EXPECT_EQ(refusalOf(engine),
                  "Die Vorschau kann hier nicht starten: Die Hilfsprogramme bubblewrap und xdg-dbus-proxy "
                  "fehlen oder dürfen nicht arbeiten.")
            << helper;
        Glib::setenv("PATH", path);
    }
}

TEST(PreviewWithoutItsEngineTest, SaysThatAPartOfTheProgramIsMissing) {
    PreviewEngine engine("/gibt/es/nicht.so");
    EXPECT_EQ(
        refusalOf(engine),
        "Die Vorschau kann nicht starten: Ein Teil von Corvanta fehlt oder passt nicht zu diesem System.");
}

} // namespace
} // namespace corvanta
