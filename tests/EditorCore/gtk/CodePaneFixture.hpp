#pragma once

#include "EditorCore/gtk/CodeEditorView.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Support/gtk/Keyboard.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/TestWindow.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace corvanta {

/// A code pane in a window, worked in with real keys and a real pointer.
class CodePaneFixture : public testing::Test {
protected:
    void open(const std::string& text) {
        model = std::make_unique<EditorViewModel>(SharedText(text));
        build();
        recording = model->text.subscribe(
            [this](const SharedText& changed) { published.push_back(changed.string()); });
    }

    void build() {
        window.reset();
        view.reset();
        view = std::make_unique<CodeEditorView>(*model, CodeEditorView::Services{queue, findRequest},
                                                "klassisch", 13);
        window = std::make_unique<TestWindow>(*view);
        view->textView().grab_focus();
        letPass(std::chrono::milliseconds(100));
    }

    void TearDown() override {
        window.reset();
        view.reset();
    }

    testing::AssertionResult becomes(const std::string& text) {
        if (waitUntil([&] { return *model->text == text; }, std::chrono::seconds(5)))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the text is: " << model->text->string();
    }

    testing::AssertionResult selects(TextRange range) {
        if (waitUntil([&] { return view->textView().selectedRange() == range; }, std::chrono::seconds(5)))
            return testing::AssertionSuccess();
        const TextRange selected = view->textView().selectedRange();
        return testing::AssertionFailure() << "selected: " << selected.location << ", " << selected.length;
    }

    /// Drags what is selected, taken at one character, to the place before another one.
    void drag(int fromCodePoint, int toCodePoint) {
        Gtk::TextView& text = view->textView();
        pointAt(fromCodePoint, 1);
        pressPointer(text);
        // Some of the way, as a hand would: what is dragged is told of at each motion.
        for (int beside = 0; beside < 40; beside += 4) {
            pointAt(fromCodePoint, beside);
            letPass(std::chrono::milliseconds(20));
        }
        pointAt(toCodePoint, 0);
        letPass(std::chrono::milliseconds(100));
        releasePointer(text);
    }

    /// Moves the pointer so many pixels to the right of the start of a character.
    void pointAt(int codePoint, int beside) {
        Gtk::TextView& text = view->textView();
        Gdk::Rectangle area;
        text.get_iter_location(text.get_buffer()->get_iter_at_offset(codePoint), area);
        int x = 0;
        int y = 0;
        text.buffer_to_window_coords(Gtk::TextWindowType::WIDGET, area.get_x(),
                                     area.get_y() + area.get_height() / 2, x, y);
        movePointer(text, x + beside, y);
    }

    Keyboard keyboard;
    GLibMainQueue queue;
    Published<FindRequest> findRequest;
    std::unique_ptr<EditorViewModel> model;
    std::unique_ptr<CodeEditorView> view;
    std::unique_ptr<TestWindow> window;
    std::vector<std::string> published;
    Subscription recording;
};

} // namespace corvanta
