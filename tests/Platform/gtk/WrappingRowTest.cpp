#include "Platform/gtk/WrappingRow.hpp"

#include <gtest/gtest.h>
#include <gtkmm/box.h>

namespace corvanta {
namespace {

class WrappingRowTest : public testing::Test {
protected:
    WrappingRowTest() {
        first.set_size_request(100, 30);
        second.set_size_request(60, 20);
    }

    /// The height that the row asks for when it is this wide, which it then is.
    int heightAt(int width) {
        int minimum = 0;
        int natural = 0;
        int ignored = 0;
        row.measure(Gtk::Orientation::VERTICAL, width, minimum, natural, ignored, ignored);
        row.size_allocate({0, 0, width, natural}, -1);
        return natural;
    }

    Gtk::Box first;
    Gtk::Box second;
    WrappingRow row{first, second, 6};
};

TEST_F(WrappingRowTest, PutsThemBesideEachOtherWhereThereIsRoomAndGivesTheFirstTheRest) {
    EXPECT_EQ(heightAt(200), 30);
    EXPECT_EQ(first.get_allocation().get_width(), 134);
    EXPECT_EQ(second.get_allocation().get_x(), 140);
    EXPECT_EQ(second.get_allocation().get_width(), 60);
    EXPECT_EQ(heightAt(166), 30);
}

TEST_F(WrappingRowTest, PutsTheSecondBelowTheFirstWhereThereIsNot) {
    EXPECT_EQ(heightAt(165), 30 + 6 + 20);
    EXPECT_EQ(first.get_allocation().get_width(), 165);
    EXPECT_EQ(second.get_allocation().get_x(), 0);
    EXPECT_EQ(second.get_allocation().get_y(), 36);
}

TEST_F(WrappingRowTest, NeedsNoMoreThanTheWiderOfThem) {
    int minimum = 0;
    int natural = 0;
    int ignored = 0;
    row.measure(Gtk::Orientation::HORIZONTAL, -1, minimum, natural, ignored, ignored);
    EXPECT_EQ(minimum, 100);
    EXPECT_EQ(natural, 166);
}

TEST_F(WrappingRowTest, GivesTheFirstEverythingWhenTheSecondIsHidden) {
    second.set_visible(false);
    EXPECT_EQ(heightAt(100), 30);
    EXPECT_EQ(first.get_allocation().get_width(), 100);
}

} // namespace
} // namespace corvanta
