#include "DesignSystem/gtk/StyleSheet.hpp"

#include "EditorCore/EditorViewModel.hpp"
#include "EditorCore/gtk/CodeEditorView.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/TestWindow.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>

#include <optional>

namespace corvanta {
namespace {

using Brightness = StyleSheet::Brightness;

/// The size in pixels and the weight of the font that a widget writes in.
std::pair<double, int> font(Gtk::Widget& widget) {
    const Pango::FontDescription description = widget.get_pango_context()->get_font_description();
    return {description.get_size() / static_cast<double>(Pango::SCALE),
            static_cast<int>(description.get_weight())};
}

class StyleSheetTest : public testing::Test {
protected:
    StyleSheetTest() {
        title.add_css_class("schrift-titel");
        number.add_css_class("schrift-zahl");
        for (Gtk::Widget* child : std::initializer_list<Gtk::Widget*>{&plain, &title, &number, &code})
            box.append(*child);
        sheet.emplace(defaults, Gdk::Display::get_default());
        window.emplace(box);
    }
    ~StyleSheetTest() override { window.reset(); }

    InMemoryUserDefaults defaults;
    EditorViewModel viewModel{"<p>"};
    Gtk::Label plain{"Text"};
    Gtk::Label title{"Titel"};
    Gtk::Label number{"7"};
    GLibMainQueue mainQueue;
    Published<FindRequest> findRequest;
    CodeEditorView code{viewModel, {mainQueue, findRequest}, "dezent", 13};
    Gtk::Box box{Gtk::Orientation::VERTICAL};
    std::optional<StyleSheet> sheet;
    std::optional<TestWindow> window;
};

TEST_F(StyleSheetTest, GivesTheInterfaceItsFonts) {
    EXPECT_EQ(font(plain), std::pair(14.0, 400));
    EXPECT_EQ(font(title), std::pair(17.0, 600));
    EXPECT_EQ(font(number), std::pair(20.0, 500));
}

TEST_F(StyleSheetTest, GivesMenusAndOtherPopupsTheChosenSizeToo) {
    defaults.set(Schrift::schluessel, 20.0);
    Gtk::Label item("Neu");
    Gtk::Popover popover;
    popover.set_child(item);
    popover.set_parent(box);
    popover.popup();
    EXPECT_TRUE(waitUntil([&] { return item.get_mapped(); }));
    EXPECT_EQ(font(item).first, 20.0);
    popover.unparent();
}

TEST_F(StyleSheetTest, FollowsTheSettingAtOnce) {
    defaults.set(Schrift::schluessel, 20.0);
    EXPECT_TRUE(waitUntil([&] { return font(plain).first == 20 && font(title).first == 23; }))
        << font(plain).first;
    defaults.remove(Schrift::schluessel);
    EXPECT_TRUE(waitUntil([&] { return font(plain).first == 14 && font(title).first == 17; }))
        << font(plain).first;
}

TEST_F(StyleSheetTest, LeavesTheCodeItsOwnSize) {
    EXPECT_EQ(font(code.textView()).first, 13);
    defaults.set(Schrift::schluessel, 20.0);
    ASSERT_TRUE(waitUntil([&] { return font(plain).first == 20; }));
    EXPECT_EQ(font(code.textView()).first, 13);
}

TEST_F(StyleSheetTest, EndsWithItsObject) {
    sheet.reset();
    EXPECT_TRUE(waitUntil([&] { return font(title).second == 400; }));
    defaults.set(Schrift::schluessel, 20.0);
    letPass(std::chrono::milliseconds(50));
    EXPECT_NE(font(plain).first, 20);
}

TEST_F(StyleSheetTest, NamesTheColours) {
    GdkRGBA color{};
    ASSERT_TRUE(gtk_style_context_lookup_color(gtk_widget_get_style_context(GTK_WIDGET(plain.gobj())),
                                               "accentGreen", &color));
    EXPECT_FLOAT_EQ(color.red, 132 / 255.0F);
    EXPECT_FLOAT_EQ(color.green, 189 / 255.0F);
    EXPECT_FLOAT_EQ(color.blue, 0);
    EXPECT_FLOAT_EQ(color.alpha, 1);
}

TEST_F(StyleSheetTest, MakesTheGreenTheAccentInLightAndDark) {
    const auto accent = [&] {
        GdkRGBA color{};
        gtk_style_context_lookup_color(gtk_widget_get_style_context(GTK_WIDGET(plain.gobj())), "accent_color",
                                       &color);
        return color.green;
    };
    AdwStyleManager* manager = adw_style_manager_get_default();
    adw_style_manager_set_color_scheme(manager, ADW_COLOR_SCHEME_FORCE_DARK);
    EXPECT_TRUE(waitUntil([&] { return std::abs(accent() - 189 / 255.0F) < 0.01F; })) << accent();
    adw_style_manager_set_color_scheme(manager, ADW_COLOR_SCHEME_FORCE_LIGHT);
    EXPECT_TRUE(waitUntil([&] { return accent() < 0.5F; })) << accent();
    adw_style_manager_set_color_scheme(manager, ADW_COLOR_SCHEME_DEFAULT);
}

TEST_F(StyleSheetTest, IsUnderstoodByTheToolkit) {
    for (const Brightness brightness : {Brightness::light, Brightness::dark}) {
        const auto provider = Gtk::CssProvider::create();
        std::vector<Glib::ustring> errors;
        provider->signal_parsing_error().connect(
            [&](const Glib::RefPtr<const Gtk::CssSection>&, const Glib::Error& error) {
                errors.push_back(error.what());
            });
        provider->load_from_data(StyleSheet::css(Schrift(defaults), brightness));
        EXPECT_THAT(errors, testing::IsEmpty());
    }
}

TEST_F(StyleSheetTest, RoundsCorners) {
    const std::string css = StyleSheet::css(Schrift(defaults), Brightness::light);
    EXPECT_THAT(css, testing::HasSubstr(".ecke { border-radius: 10px; }"));
    EXPECT_THAT(css, testing::HasSubstr(".ecke-klein { border-radius: 7px; }"));
}

} // namespace
} // namespace corvanta
