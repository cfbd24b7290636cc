#include "RandomWalk.hpp"

#include "EditorCore/CodeEditorCoordinator.hpp"
#include "StringTextView.hpp"
#include "Support/ManualMainQueue.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace corvanta {
namespace {

TEST(RandomWalk, KeepsModelViewAndColoursTogetherOnAString) {
    ManualMainQueue queue;
    EditorViewModel model{SharedText("<p>ä</p>\n")};
    std::shared_ptr<StringTextView> view;
    std::optional<CodeEditorCoordinator> coordinator;
    const auto rebuild = [&] {
        coordinator.reset();
        view = std::make_shared<StringTextView>(*model.text, model.undoHistory);
        coordinator.emplace(CodeEditorCoordinator::Parts{model, view, view->storage, queue}, "klassisch", 13);
        queue.runPending();
    };
    rebuild();
    RandomWalk walk({model, [&]() -> TextView& { return *view; }, [&] { view->undo(); },
                     [&] { view->redo(); }, rebuild,
                     [&](const std::string& themeID, double size) { coordinator->update(themeID, size); },
                     [&] {
                         return view->storage.runs.overlapping({0, view->storage.length()});
                     }},
                    RandomWalk::nextSeed());
    walk.walk(RandomWalk::operations(2000));
}

} // namespace
} // namespace corvanta
