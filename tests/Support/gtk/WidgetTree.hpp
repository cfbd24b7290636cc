#pragma once

#include <gtkmm/widget.h>

#include <string>
#include <vector>

namespace corvanta {

/// All texts that a user can read in `widget` and what is in it: labels and tooltips. Whether `widget` itself
/// is on the screen does not matter.
std::vector<std::string> shownTexts(Gtk::Widget& widget);

/// The first widget of `type` in `widget`, or null.
GtkWidget* descendant(GtkWidget* widget, GType type);

/// The button in `widget` that says `name`, or null.
GtkWidget* buttonNamed(GtkWidget* widget, const std::string& name);

/// The first widget in `widget` that is explained by `tooltip`, or null.
GtkWidget* withTooltip(GtkWidget* widget, const std::string& tooltip);

/// What an item of an open menu says; empty for whatever else and for null.
std::string menuItemName(GtkWidget* widget);

/// The items in `menu`, one after another.
std::vector<GtkWidget*> menuItems(GtkWidget* menu);

} // namespace corvanta
