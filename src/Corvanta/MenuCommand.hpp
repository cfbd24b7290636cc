#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace corvanta {

/// The menus of the menu bar, from left to right.
enum class Menu : std::uint8_t { file, edit, view, insert, window, help };

/// One item of the menu bar: what the menus, the shortcuts, the tooltips and the overview of the shortcuts
/// are made from.
struct MenuCommand {
    /// The action to activate. "win." acts on the document window in front and can be chosen only while there
    /// is one; "app." always. A template's number may follow as the target: "win.insert(0)".
    std::string_view action;
    Menu menu;
    /// Items with the same number stand together; a line divides them from the others.
    int section;
    /// A German text to be looked up. "%@" in it stands for the name of the product.
    std::string_view title;
    /// In the notation of the desktop's toolkits: "<Control><Shift>g". The first is shown in the menu.
    std::span<const std::string_view> shortcuts;
    /// Whether the shortcut acts on the widget with the focus, which knows it by itself: the code, a field of
    /// the find bar, the page.
    bool isForFocus = false;

    /// All commands in the order of the menus.
    static std::span<const MenuCommand> all();

    /// The title of a menu, a German text to be looked up.
    static std::string_view titleOf(Menu menu);
};

} // namespace corvanta
