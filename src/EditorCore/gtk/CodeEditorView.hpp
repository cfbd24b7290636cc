#pragma once

#include "EditorCore/CodeEditorCoordinator.hpp"
#include "EditorCore/EditorViewModel.hpp"
#include "EditorCore/FindRequest.hpp"
#include "EditorCore/gtk/FindBar.hpp"
#include "EditorCore/gtk/GtkTextStorage.hpp"
#include "EditorCore/gtk/IndentingTextView.hpp"
#include "EditorCore/gtk/VisiblePainter.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/Published.hpp"
#include "Platform/gtk/SignalConnection.hpp"

#include <gtkmm/box.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>
#include <string>

namespace corvanta {

/// The code pane: a scrolled text view that is kept the same as the editor's state, with a find bar above it.
class CodeEditorView : public Gtk::Box {
public:
    /// What the pane takes from the program; all of it outlives the pane.
    struct Services {
        MainQueue& mainQueue;
        /// What is searched for, in every window.
        Published<FindRequest>& findRequest;
    };

    /// `viewModel` outlives the view. `themeID` is an editor theme's id, `fontSize` is in points.
    CodeEditorView(EditorViewModel& viewModel, const Services& services, const std::string& themeID,
                   double fontSize);

    void setThemeID(const std::string& themeID);
    void setFontSize(double fontSize);

    /// Emitted when the user asks for another font size, with that size; the view keeps its own until it is
    /// given the new one.
    sigc::signal<void(double)>& signalFontSizeRequested() { return fontSizeRequested_; }

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

    IndentingTextView& textView() { return *textView_; }
    const IndentingTextView& textView() const { return *textView_; }
    const FindBar& findBar() const { return findBar_; }
    const GtkTextStorage& textStorage() const { return textView_->textStorage(); }

private:
    void followAppearance();
    void followZoomKeys();

    std::shared_ptr<IndentingTextView> textView_;
    Gtk::ScrolledWindow scrollView_;
    VisiblePainter painter_;
    FindBar findBar_;
    CodeEditorCoordinator coordinator_;

    sigc::signal<void(double)> fontSizeRequested_;
    SignalConnection appearanceChanged_;
};

} // namespace corvanta
