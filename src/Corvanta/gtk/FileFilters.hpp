#pragma once

#include "Corvanta/ContentType.hpp"

#include <gtkmm/filechooser.h>

#include <span>

namespace corvanta {

/// Offers `types` in a file dialog.
void addFilters(Gtk::FileChooser& chooser, std::span<const ContentType> types);

} // namespace corvanta
