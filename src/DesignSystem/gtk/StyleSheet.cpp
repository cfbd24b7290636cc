#include "DesignSystem/gtk/StyleSheet.hpp"

#include "DesignSystem/Mass.hpp"
#include "DesignSystem/Theme.hpp"

#include <fmt/format.h>
#include <gtkmm/stylecontext.h>

#include <string_view>

namespace corvanta {

namespace {

/// A point of the design is a pixel on a screen with 96 dots an inch, while one of a style sheet is the 72nd
/// part of an inch. Sizes in pixels would ignore the large text that people set for the whole desktop.
constexpr double styleSheetPoints(double points) {
    return points * 72 / 96;
}

std::string named(std::string_view name, Color color) {
    return fmt::format("@define-color {} #{:02x}{:02x}{:02x};\n", name, color.red, color.green, color.blue);
}

std::string fontRule(std::string_view selector, const Schriftart& font) {
    return fmt::format("{} {{ font-size: {}pt; font-weight: {}; }}\n", selector,
                       styleSheetPoints(font.groesse), static_cast<int>(font.gewicht));
}

std::string cornerRule(std::string_view selector, int radius) {
    return fmt::format("{} {{ border-radius: {}px; }}\n", selector, radius);
}

/// The green as the toolkit's accent. It is too bright for white letters on it, and for letters of it on
/// white.
std::string_view accent(StyleSheet::Brightness brightness) {
    return brightness == StyleSheet::Brightness::dark
               ? "@define-color accent_bg_color @accentGreen;\n"
                 "@define-color accent_fg_color @anthracite;\n"
                 "@define-color accent_color @accentGreen;\n"
               : "@define-color accent_bg_color @accentGreen;\n"
                 "@define-color accent_fg_color @anthracite;\n"
                 "@define-color accent_color shade(@accentGreen, 0.6);\n";
}

} // namespace

StyleSheet::StyleSheet(UserDefaults& userDefaults, const Glib::RefPtr<Gdk::Display>& display)
    : fonts_(userDefaults),
      display_(display),
      styleManager_(adw_style_manager_get_for_display(display->gobj())),
      textSizeChanged_(userDefaults.observe(Schrift::schluessel, [this] { update(); })),
      brightnessChanged_(
          styleManager_, "notify::dark",
          +[](AdwStyleManager*, GParamSpec*, gpointer self) { static_cast<StyleSheet*>(self)->update(); },
          this) {
    update();
    Gtk::StyleContext::add_provider_for_display(display_, provider_, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

StyleSheet::~StyleSheet() {
    Gtk::StyleContext::remove_provider_for_display(display_, provider_);
}

std::string StyleSheet::css(const Schrift& fonts, Brightness brightness) {
    std::string text = named("anthracite", Theme::anthracite) + named("silver", Theme::silver) +
                       named("accentGreen", Theme::accentGreen);
    text += accent(brightness);
    // Everything in a window inherits its size, but for what has one of its own, such as the code.
    text += fmt::format("window, popover, tooltip {{ font-size: {}pt; }}\n", styleSheetPoints(fonts.grund()));
    // The toolkit sets the labels below the icons of tabs in a size of its own.
    text += fontRule("viewswitcher .narrow", fonts.klein());
    text += fontRule(".schrift-titel", fonts.titel());
    text += fontRule(".schrift-text", fonts.text());
    text += fontRule(".schrift-klein", fonts.klein());
    text += fontRule(".schrift-zahl", fonts.zahl());
    text += fontRule(".schrift-leer", fonts.leer());
    text += cornerRule(".ecke", Mass::ecke);
    text += cornerRule(".ecke-klein", Mass::eckeKlein);
    return text;
}

void StyleSheet::update() {
    const bool isDark = adw_style_manager_get_dark(styleManager_) != FALSE;
    provider_->load_from_data(css(fonts_, isDark ? Brightness::dark : Brightness::light));
}

} // namespace corvanta
