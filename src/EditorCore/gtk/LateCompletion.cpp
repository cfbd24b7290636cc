#include "EditorCore/gtk/LateCompletion.hpp"

#include <fmt/format.h>
#include <gdkmm/display.h>
#include <gdkmm/frameclock.h>
#include <gtksourceview/gtksource.h>

#include <cstdint>
#include <string>

namespace corvanta {

namespace {

/// The column of line numbers, if the view has one.
GtkWidget* lineNumbers(Gtk::TextView& view) {
    auto* gutter = GTK_WIDGET(gtk_source_view_get_gutter(GTK_SOURCE_VIEW(view.gobj()), GTK_TEXT_WINDOW_LEFT));
    GtkWidget* child = gtk_widget_get_first_child(gutter);
    while (child != nullptr && GTK_SOURCE_IS_GUTTER_RENDERER_TEXT(child) == FALSE)
        child = gtk_widget_get_next_sibling(child);
    return child;
}

/// The width of a line's number, which is bold in the line with the caret.
int widthOfNumber(GtkWidget* numbers, std::int64_t number) {
    int width = 0;
    const std::string markup = fmt::format("<b>{}</b>", number);
    gtk_source_gutter_renderer_text_measure_markup(GTK_SOURCE_GUTTER_RENDERER_TEXT(numbers), markup.c_str(),
                                                   &width, nullptr);
    return width;
}

/// Makes the column as wide as it will be with so many lines, so that the text does not jump when they come.
void makeRoomForLineNumbers(Gtk::TextView& view, std::int64_t lines) {
    GtkWidget* numbers = lineNumbers(view);
    if (numbers == nullptr)
        return;
    int width = 0;
    gtk_widget_measure(numbers, GTK_ORIENTATION_HORIZONTAL, -1, &width, nullptr, nullptr, nullptr);
    width += widthOfNumber(numbers, lines) - widthOfNumber(numbers, view.get_buffer()->get_line_count());
    gtk_widget_set_size_request(numbers, width, -1);
}

void leaveRoomToLineNumbers(Gtk::TextView& view) {
    if (GtkWidget* numbers = lineNumbers(view))
        gtk_widget_set_size_request(numbers, -1, -1);
}

} // namespace

LateCompletion::LateCompletion(Gtk::TextView& view, GtkTextStorage& storage)
    : view_(view), storage_(storage) {
    if (storage_.isComplete())
        return;
    mapped_ = Subscription(view_.signal_map().connect([this] { followPictures(); }));
    // The clock of the pictures goes with the window.
    unmapped_ = Subscription(view_.signal_unmap().connect([this] { painted_ = SignalConnection(); }));
}

void LateCompletion::followPictures() {
    if (storage_.isComplete())
        return;
    // The colours come with the second one.
    picturesToCome_ = 2;
    makeRoomForLineNumbers(view_, storage_.lineCount());
    painted_ = SignalConnection(
        view_.get_frame_clock()->gobj(), "after-paint",
        +[](GdkFrameClock*, gpointer self) { static_cast<LateCompletion*>(self)->didPaint(); }, this);
}

void LateCompletion::didPaint() {
    if (--picturesToCome_ > 0) {
        view_.queue_draw();
        return;
    }
    // The picture is still to be sent, and the rest takes a while.
    view_.get_display()->flush();
    storage_.complete();
    leaveRoomToLineNumbers(view_);
    painted_ = SignalConnection();
}

} // namespace corvanta
