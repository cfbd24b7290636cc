#pragma once

#include "EditorCore/TextEdit.hpp"
#include "EditorCore/TextRange.hpp"

#include <optional>
#include <vector>

namespace corvanta {

/// What the user did to a text, step by step, with what was selected before and after. It belongs to the text
/// and not to a view, so that nothing is forgotten when the view is built anew. Letters typed one after the
/// other are one step up to the end of a word, as are characters deleted one after the other.
class UndoHistory {
public:
    /// Something to apply to the text: the edits in this order, then the selection.
    struct Step {
        std::vector<TextEdit> edits;
        TextRange selection;
    };

    /// Starts a step, before the text changes. Ranges count UTF-16 code units.
    void beginStep(TextRange selection);

    /// Tells of a change; outside a step it is not recorded.
    void didEdit(TextEdit edit);

    /// Ends the step; one without changes is none.
    void endStep(TextRange selection);

    bool canUndo() const { return !done_.empty(); }
    bool canRedo() const { return !undone_.empty(); }

    /// What takes the last step back, or makes it again. Nothing when there is none.
    std::optional<Step> undo();
    std::optional<Step> redo();

    /// Forgets everything, because the text was changed by somebody else.
    void clear();

private:
    struct Recorded {
        std::vector<TextEdit> edits;
        TextRange selectionBefore;
        TextRange selectionAfter;
        /// Whether a key might go on with it.
        bool isOpen = false;
    };

    static bool continues(const Recorded& last, const Recorded& next);

    std::vector<Recorded> done_;
    std::vector<Recorded> undone_;
    std::optional<Recorded> current_;
};

} // namespace corvanta
