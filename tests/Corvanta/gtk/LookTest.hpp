#pragma once

#include "ApplicationTest.hpp"
#include "DesignSystem/gtk/StyleSheet.hpp"
#include "Support/InMemoryUserDefaults.hpp"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <functional>
#include <string>
#include <vector>

namespace corvanta {

/// How a user may have the texts.
struct Look {
    const char* name;
    const char* language;
    /// In points, by the program's setting.
    double size;
    /// How much larger the desktop shows all texts.
    double scale;
};

/// The program in each look of which the texts are the shortest or the longest.
class LookTest : public ApplicationTest, public testing::WithParamInterface<Look> {
public:
    static const std::vector<Look> looks;
    static std::string nameOf(const testing::TestParamInfo<Look>& look) { return look.param.name; }

protected:
    LookTest();
    ~LookTest() override;

    /// Waits until all texts can be read whole in what `find` finds: a window or a menu, or null as long as
    /// it is not there. It is asked again and again, because a change of the language, which the program
    /// hears of somewhat later, makes windows and menus anew.
    static testing::AssertionResult showsAllTextsWhole(const std::function<GtkWidget*()>& find);
    static testing::AssertionResult showsAllTextsWhole(Gtk::Window& window);

private:
    int resolutionBefore_ = 0;
    InMemoryUserDefaults userDefaults_;
    StyleSheet styleSheet_{userDefaults_, Gdk::Display::get_default()};
};

} // namespace corvanta
