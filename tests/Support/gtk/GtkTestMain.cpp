#include <adwaita.h>
#include <glibmm/init.h>
#include <gtest/gtest.h>
#include <gtkmm/init.h>

/// Tests with real widgets: a missing display is a failure, never a reason to skip.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (gtk_init_check() == FALSE) {
        std::cerr << "These tests need a display; run them through scripts/with-virtual-display.\n";
        return EXIT_FAILURE;
    }
    Gtk::init_gtkmm_internals();
    adw_init();
    return RUN_ALL_TESTS();
}
