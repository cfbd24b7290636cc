#include "Corvanta/gtk/FileFilters.hpp"

#include "DesignSystem/t.hpp"

#include <gtkmm/filefilter.h>

#include <string>

namespace corvanta {

void addFilters(Gtk::FileChooser& chooser, std::span<const ContentType> types) {
    for (const ContentType& type : types) {
        const auto filter = Gtk::FileFilter::create();
        filter->set_name(t(type.name));
        for (const std::string_view mimeType : type.mimeTypes)
            filter->add_mime_type(std::string(mimeType));
        for (const std::string_view suffix : type.suffixes)
            filter->add_suffix(std::string(suffix));
        chooser.add_filter(filter);
    }
}

} // namespace corvanta
