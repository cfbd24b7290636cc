#include "Corvanta/gtk/EditorMenus.hpp"

#include "Corvanta/MenuCommand.hpp"
#include "DesignSystem/t.hpp"

#include <giomm/menuitem.h>

#include <string>
#include <vector>

namespace corvanta {

namespace {

constexpr const char* productName = "Corvanta";

/// Where the file menu leads on to the files that were open before.
constexpr std::string_view commandBeforeRecentFiles = "app.open";

Glib::RefPtr<Gio::MenuItem> itemOf(const MenuCommand& command) {
    auto item =
        Gio::MenuItem::create(EditorMenus::label(t(command.title, productName)), std::string(command.action));
    // The toolkit shows the shortcuts that it handles; this one only the focused widget does.
    if (command.isForFocus)
        item->set_attribute_value(
            "accel", Glib::Variant<Glib::ustring>::create(std::string(command.shortcuts.front())));
    return item;
}

class MenuBarBuilder {
public:
    MenuBarBuilder(Glib::RefPtr<Gio::Menu> recentFiles, Glib::RefPtr<Gio::Menu> openWindows)
        : recentFiles_(std::move(recentFiles)), openWindows_(std::move(openWindows)) {}

    Glib::RefPtr<Gio::Menu> build() {
        for (const MenuCommand& command : MenuCommand::all()) {
            if (!menu_ || command.menu != current_.menu)
                beginMenu(command);
            else if (command.section != current_.section)
                beginSection();
            current_ = command;
            section_->append_item(itemOf(command));
            if (command.action == commandBeforeRecentFiles)
                section_->append_submenu(EditorMenus::label(t("Benutzte Dokumente")), recentFiles_);
        }
        endMenu();
        return bar_;
    }

private:
    void beginMenu(const MenuCommand& first) {
        endMenu();
        menu_ = Gio::Menu::create();
        bar_->append_submenu(EditorMenus::label(t(MenuCommand::titleOf(first.menu))), menu_);
        beginSection();
    }

    void beginSection() {
        section_ = Gio::Menu::create();
        menu_->append_section(section_);
    }

    void endMenu() {
        if (menu_ && current_.menu == Menu::window)
            menu_->append_section(openWindows_);
    }

    Glib::RefPtr<Gio::Menu> recentFiles_;
    Glib::RefPtr<Gio::Menu> openWindows_;
    Glib::RefPtr<Gio::Menu> bar_ = Gio::Menu::create();
    Glib::RefPtr<Gio::Menu> menu_;
    Glib::RefPtr<Gio::Menu> section_;
    MenuCommand current_{};
};

} // namespace

Glib::RefPtr<Gio::Menu> EditorMenus::menuBar(const Glib::RefPtr<Gio::Menu>& recentFiles,
                                             const Glib::RefPtr<Gio::Menu>& openWindows) {
    return MenuBarBuilder(recentFiles, openWindows).build();
}

void EditorMenus::setShortcuts(Gtk::Application& application) {
    for (const MenuCommand& command : MenuCommand::all()) {
        if (command.isForFocus)
            continue;
        std::vector<Glib::ustring> shortcuts;
        for (const std::string_view shortcut : command.shortcuts)
            shortcuts.emplace_back(std::string(shortcut));
        application.set_accels_for_action(std::string(command.action), shortcuts);
    }
}

std::string EditorMenus::label(std::string_view text) {
    std::string label;
    for (const char byte : text) {
        label += byte;
        if (byte == '_')
            label += byte;
    }
    return label;
}

} // namespace corvanta
