#pragma once

#include <gtkmm/widget.h>

namespace corvanta {

/// Two widgets beside each other, or one below the other where there is no room: the row is never wider than
/// the wider of them has to be.
class WrappingRow : public Gtk::Widget {
public:
    /// `first` gets all the width that `second` leaves. Both outlive the row. `spacing` is in points.
    WrappingRow(Gtk::Widget& first, Gtk::Widget& second, int spacing);
    ~WrappingRow() override;

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    struct Size {
        int minimum = 0;
        int natural = 0;
    };
    static Size widthOf(const Gtk::Widget& widget);
    static Size heightOf(const Gtk::Widget& widget, int width);

    bool fitsBesideEachOther(int width) const;
    int widthForSecond(int width) const;

    Gtk::Widget& first_;
    Gtk::Widget& second_;
    int spacing_;
};

} // namespace corvanta
