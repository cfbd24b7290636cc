#pragma once

#include "DesignSystem/Schrift.hpp"
#include "Platform/Subscription.hpp"
#include "Platform/UserDefaults.hpp"
#include "Platform/gtk/SignalConnection.hpp"

#include <adwaita.h>
#include <gdkmm/display.h>
#include <gtkmm/cssprovider.h>

#include <cstdint>
#include <string>

namespace corvanta {

/// The look of all windows on a display: one style sheet made of the colours, lengths and fonts, which
/// follows the setting for the text size and the light or dark appearance at once.
///
/// Widgets take their part by style class: "schrift-titel", "schrift-text", "schrift-klein",
/// "schrift-zahl" and "schrift-leer" are the fonts, "ecke"
/// and "ecke-klein" the rounded corners. The colours have their names ("@accentGreen"). Distances between
/// widgets are properties of the widgets and come from `Mass`.
class StyleSheet {
public:
    enum class Brightness : std::uint8_t { light, dark };

    /// Applies to `display` as long as this object lives. `userDefaults` outlives it.
    StyleSheet(UserDefaults& userDefaults, const Glib::RefPtr<Gdk::Display>& display);
    StyleSheet(const StyleSheet&) = delete;
    StyleSheet& operator=(const StyleSheet&) = delete;
    ~StyleSheet();

    /// The style sheet's text.
    static std::string css(const Schrift& fonts, Brightness brightness);

private:
    void update();

    Schrift fonts_;
    Glib::RefPtr<Gdk::Display> display_;
    Glib::RefPtr<Gtk::CssProvider> provider_ = Gtk::CssProvider::create();
    AdwStyleManager* styleManager_;
    Subscription textSizeChanged_;
    SignalConnection brightnessChanged_;
};

} // namespace corvanta
