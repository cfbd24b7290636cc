// Measures the code pane from inside, in a window of its own without a preview, on pages as bench/make-page
// makes them. Run it through scripts/with-virtual-display.
//
//   code-pane PAGE
//
// Prints a Markdown table: keys count from the press to the end of the frame that shows what they did, frames
// are those in which a line that is seen lacks its colours, memory is what the allocator has handed out.

#include "EditorCore/gtk/CodeEditorView.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Samples.hpp"

#include <adwaita.h>
#include <fmt/format.h>
#include <glibmm/main.h>
#include <gtkmm/init.h>
#include <gtkmm/window.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

// Xlib's words get in the way of the toolkit's headers.
#include "Support/screen/ObservedScreen.hpp"

#include <X11/keysym.h>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

void runUntil(const std::function<bool()>& condition) {
    const auto end = Clock::now() + 60s;
    while (!condition()) {
        if (Clock::now() > end)
            throw std::runtime_error("something did not happen within a minute");
        g_main_context_iteration(nullptr, FALSE);
    }
}

void letPass(std::chrono::milliseconds duration) {
    const auto end = Clock::now() + duration;
    while (Clock::now() < end)
        g_main_context_iteration(nullptr, FALSE);
}

class Pane {
public:
    explicit Pane(const std::string& text) : model_(SharedText(text)) {
        view_ = std::make_unique<CodeEditorView>(model_, CodeEditorView::Services{queue_, findRequest_},
                                                 "dezent", 13);
        window_.set_default_size(700, 900);
        window_.set_child(*view_);
        window_.present();
        runUntil([this] { return window_.is_active(); });
        view_->textView().grab_focus();
        painted_ = SignalConnection(
            gtk_widget_get_frame_clock(GTK_WIDGET(window_.gobj())), "after-paint",
            +[](GdkFrameClock*, gpointer self) { ++static_cast<Pane*>(self)->frames_; }, this);
        // The widget lays the whole text out in the background.
        letPass(3s);
    }

    ~Pane() { window_.unset_child(); }

    EditorViewModel& model() { return model_; }
    IndentingTextView& textView() { return view_->textView(); }

    void putCaret(std::int64_t codeUnit) {
        textView().setSelectedRange({codeUnit, 0});
        textView().revealSelection();
        letPass(300ms);
    }

    /// Milliseconds from the press to the changed text, and to the end of the frame that shows it.
    struct Press {
        double toText;
        double toFrame;
    };

    Press press(KeySym key) {
        const SharedText before = *model_.text;
        const auto start = Clock::now();
        const auto passed = [start] {
            return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        };
        screen_.pressKey(key);
        runUntil([&] { return *model_.text != before; });
        Press result{passed(), 0};
        const int frames = frames_;
        runUntil([&] { return frames_ > frames; });
        result.toFrame = passed();
        screen_.releaseKey(key);
        letPass(30ms);
        return result;
    }

    /// Has every match of `text` searched for from now on, and anew after each pause in the typing.
    void search(const std::string& text) {
        textView().performFindPanelAction(FindPanelAction::showFindPanel);
        findRequest_ = FindRequest{text};
        textView().grab_focus();
        runUntil([this] { return textView().has_focus(); });
    }

    bool isSearching() const { return view_->findBar().status().ends_with("…"); }

    /// Scrolls a page with every frame, from the top to the end. The most frames one after another in which a
    /// line was seen without its colours.
    int scrollThrough() {
        const auto adjustment = textView().get_vadjustment();
        adjustment->set_value(0);
        letPass(300ms);
        int longest = 0;
        int uncoloured = 0;
        double last = -1;
        while (adjustment->get_value() > last || uncoloured > 0) {
            if (uncoloured == 0) {
                last = adjustment->get_value();
                adjustment->set_value(last + adjustment->get_page_size() * 0.9);
            }
            const int frames = frames_;
            textView().queue_draw();
            runUntil([&] { return frames_ > frames; });
            uncoloured = showsItsColours() ? 0 : uncoloured + 1;
            longest = std::max(longest, uncoloured);
        }
        return longest;
    }

private:
    bool showsItsColours() {
        GtkTextStorage& storage = textView().textStorage();
        Gdk::Rectangle visible;
        textView().get_visible_rect(visible);
        Gtk::TextBuffer::iterator first;
        Gtk::TextBuffer::iterator last;
        int top = 0;
        textView().get_line_at_y(first, visible.get_y(), top);
        textView().get_line_at_y(last, visible.get_y() + visible.get_height() - 1, top);
        last.forward_line();
        const std::int64_t from = storage.position(first).codeUnit;
        const auto runs = storage.runs({from, storage.position(last).codeUnit - from});
        return std::all_of(runs.begin(), runs.end(), [&](const SyntaxSpan& run) {
            const auto place =
                storage.iterator(textView().text().atCodeUnit(std::max(run.range.location, from)));
            const auto tags = place.get_tags();
            return std::any_of(tags.begin(), tags.end(),
                               [](const auto& tag) { return tag->property_foreground_set().get_value(); });
        });
    }

    ObservedScreen screen_;
    GLibMainQueue queue_;
    Published<FindRequest> findRequest_;
    EditorViewModel model_;
    std::unique_ptr<CodeEditorView> view_;
    Gtk::Window window_;
    SignalConnection painted_;
    int frames_ = 0;
};

void printRow(const std::string& what, const Samples& samples) {
    fmt::print("| {} | {:.1f} ms | {:.1f} ms | {:.1f} ms |\n", what, samples.median(),
               samples.percentile(0.95), samples.maximum());
}

void measureKeys(const std::string& page) {
    Pane pane(page);
    Samples comment;
    for (int i = 0; i < 5; ++i) {
        pane.textView().insertText("<!-", {0, 0});
        pane.putCaret(3);
        comment.add(pane.press(XK_minus).toFrame);
        pane.textView().insertText("", {0, 4});
        letPass(200ms);
    }
    printRow("the key that makes a comment of all below it", comment);

    Samples newline;
    Samples shownNewline;
    pane.putCaret(pane.textView().text().end().codeUnit);
    for (int i = 0; i < 30; ++i) {
        const auto [toText, toFrame] = pane.press(XK_Return);
        newline.add(toText);
        shownNewline.add(toFrame);
    }
    printRow("Return at the end, until the text has changed", newline);
    printRow("Return at the end, until the next frame shows it", shownNewline);

    fmt::print("| scrolling through | {} frames without colours | | |\n", pane.scrollThrough());
}

void measureSearching(const std::string& page) {
    std::string text;
    while (text.size() < 10'000'000)
        text += page;
    Pane pane(text);
    Samples calm;
    Samples searching;
    pane.putCaret(0);
    for (int i = 0; i < 30; ++i)
        calm.add(pane.press(XK_x).toFrame);
    pane.search("e");
    for (int i = 0; i < 30; ++i) {
        runUntil([&] { return pane.isSearching(); });
        // In the midst of it.
        letPass(10ms);
        searching.add(pane.press(XK_x).toFrame);
    }
    printRow("a letter in 10 MB", calm);
    printRow("a letter in 10 MB that are being searched", searching);
}

void measureLongLine() {
    std::string line;
    while (line.size() < 100'000)
        line += "<b class=\"x\">Wort</b> ";
    Pane pane(line);
    Samples letters;
    pane.putCaret(50'005);
    for (int i = 0; i < 40; ++i)
        letters.add(pane.press(XK_x).toFrame);
    printRow("a letter in a line of 100 KB", letters);
}

/// The bytes that the allocator has handed out.
double usedMemory() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

void measureReformatting(const std::string& page) {
    constexpr int times = 100;
    Pane pane(page);
    pane.model().reformatIndentation();
    letPass(2s);
    const auto grown = [&](const std::function<void()>& step) {
        const double before = usedMemory();
        for (int i = 0; i < times; ++i) {
            step();
            letPass(2ms);
        }
        letPass(1s);
        return (usedMemory() - before) / 1e6;
    };
    const double same = grown([&] { pane.model().reformatIndentation(); });
    fmt::print("| memory, {} reformats that change nothing | {:+.2f} MB | | |\n", times, same);
    const double other = grown([&] {
        pane.textView().insertText("\n \n \n", {pane.textView().text().end().codeUnit, 0});
        pane.model().reformatIndentation();
    });
    fmt::print("| memory, {} reformats of a change at the end | {:+.2f} MB | | |\n", times, other);
}

std::string contentOf(const char* file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error(fmt::format("{} cannot be read", file));
    return {std::istreambuf_iterator<char>(stream), {}};
}

void measure(const std::string& page) {
    fmt::print("| {:.1f} MB | median | 95th percentile | longest |\n|---|--:|--:|--:|\n",
               static_cast<double>(page.size()) / 1e6);
    measureKeys(page);
    measureSearching(page);
    measureLongLine();
    measureReformatting(page);
}

} // namespace
} // namespace corvanta

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: code-pane PAGE\n";
        return 2;
    }
    if (gtk_init_check() == FALSE) {
        std::cerr << "code-pane needs a display; run it through scripts/with-virtual-display\n";
        return 2;
    }
    // Each row as it comes: all of it takes a minute.
    setvbuf(stdout, nullptr, _IOLBF, 0);
    Gtk::init_gtkmm_internals();
    adw_init();
    try {
        corvanta::measure(corvanta::contentOf(argv[1]));
    } catch (const std::exception& error) {
        std::cerr << "code-pane: " << error.what() << '\n';
        return 1;
    }
}
