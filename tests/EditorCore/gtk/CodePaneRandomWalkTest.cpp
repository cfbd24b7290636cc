#include "../RandomWalk.hpp"
#include "EditorCore/gtk/CodeEditorView.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/TestWindow.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace corvanta {
namespace {

TEST(CodePaneRandomWalk, KeepsModelViewAndColoursTogetherInTheRealView) {
    GLibMainQueue queue;
    Published<FindRequest> findRequest;
    EditorViewModel model{SharedText("<p>ä</p>\n")};
    std::unique_ptr<CodeEditorView> view;
    std::unique_ptr<TestWindow> window;
    const auto rebuild = [&] {
        window.reset();
        view = std::make_unique<CodeEditorView>(model, CodeEditorView::Services{queue, findRequest},
                                                "klassisch", 13);
        window = std::make_unique<TestWindow>(*view);
    };
    rebuild();
    int operations = 0;
    RandomWalk walk({model, [&]() -> TextView& { return view->textView(); }, [&] { view->textView().undo(); },
                     [&] { view->textView().redo(); },
                     [&] {
                         // A window takes its time to become active.
                         if (++operations % 20 == 0)
                             rebuild();
                     },
                     [&](const std::string& themeID, double size) {
                         view->setThemeID(themeID);
                         view->setFontSize(size);
                         letPass(std::chrono::milliseconds(1));
                     },
                     [&] {
                         return view->textStorage().runs({0, view->textStorage().length()});
                     }},
                    RandomWalk::nextSeed());
    walk.walk(RandomWalk::operations(1500));
    EXPECT_EQ(view->textView().get_buffer()->get_text().raw(), model.text->string());
    window.reset();
}

} // namespace
} // namespace corvanta
