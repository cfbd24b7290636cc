#include "Preview/gtk/webkit/PageMenu.hpp"

#include "DesignSystem/t.hpp"
#include "Preview/gtk/webkit/EditingCommands.hpp"

namespace corvanta {

namespace {

/// The engine's entry for `action`; null when it does not offer that where the pointer is.
WebKitContextMenuItem* find(WebKitContextMenu* menu, WebKitContextMenuAction action) {
    for (const GList* each = webkit_context_menu_get_items(menu); each != nullptr; each = each->next) {
        auto* item = WEBKIT_CONTEXT_MENU_ITEM(each->data);
        if (webkit_context_menu_item_get_stock_action(item) == action)
            return item;
    }
    return nullptr;
}

} // namespace

PageMenu::PageMenu(WebKitWebView* view, const Perform& perform) {
    add(WEBKIT_CONTEXT_MENU_ACTION_CUT, "Ausschneiden", PreviewWebView::Command::cut, perform);
    add(WEBKIT_CONTEXT_MENU_ACTION_COPY, "Kopieren", PreviewWebView::Command::copy, perform);
    add(WEBKIT_CONTEXT_MENU_ACTION_PASTE, "Einsetzen", PreviewWebView::Command::paste, perform);
    add(WEBKIT_CONTEXT_MENU_ACTION_DELETE, "Löschen", PreviewWebView::Command::remove, perform);
    add(WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL, "Alles auswählen", PreviewWebView::Command::selectAll,
        perform);
    menuAsked_ = SignalConnection(
        view, "context-menu",
        +[](WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer self) -> gboolean {
            return static_cast<PageMenu*>(self)->replace(menu) ? TRUE : FALSE;
        },
        this);
}

void PageMenu::add(WebKitContextMenuAction offer, const char* title, PreviewWebView::Command command,
                   const Perform& perform) {
    const auto action = Gio::SimpleAction::create(std::string("page-") + editingCommand(command));
    entries_.push_back({offer, title, action,
                        Subscription(action->signal_activate().connect(
                            [perform, command](const Glib::VariantBase&) { perform(command); }))});
}

/// Leaves of `menu` only what this menu offers, too. True when that is nothing and no menu is to be shown.
bool PageMenu::replace(WebKitContextMenu* menu) const {
    std::vector<WebKitContextMenuItem*> items;
    for (const Entry& entry : entries_) {
        WebKitContextMenuItem* offer = find(menu, entry.offer);
        if (offer == nullptr)
            continue;
        entry.action->set_enabled(g_action_get_enabled(webkit_context_menu_item_get_gaction(offer)) != FALSE);
        if (entry.offer == WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL && !items.empty())
            items.push_back(webkit_context_menu_item_new_separator());
        items.push_back(webkit_context_menu_item_new_from_gaction(G_ACTION(entry.action->gobj()),
                                                                  t(entry.title).c_str(), nullptr));
    }
    webkit_context_menu_remove_all(menu);
    for (WebKitContextMenuItem* item : items)
        webkit_context_menu_append(menu, item);
    return items.empty();
}

} // namespace corvanta
