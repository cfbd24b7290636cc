#pragma once

#include "EditorCore/FindSession.hpp"
#include "EditorCore/gtk/IndentingTextView.hpp"
#include "Platform/Subscription.hpp"

#include <gtkmm/adjustment.h>
#include <gtkmm/texttag.h>

namespace corvanta {

/// Marks every match that is on screen. What nobody sees has no mark: a tag on each of a hundred thousand
/// matches would make every key slow.
class FoundMarks {
public:
    /// Both outlive the marks.
    FoundMarks(IndentingTextView& textView, FindSession& session);

    const Glib::RefPtr<Gtk::TextTag>& tag() const { return tag_; }

    /// Marks what is on screen now.
    void mark();

private:
    void watchScrolling();

    IndentingTextView& textView_;
    FindSession& session_;
    Glib::RefPtr<Gtk::TextTag> tag_;
    bool hasMarks_ = false;

    Subscription sessionChanged_;
    Subscription adjustmentReplaced_;
    Subscription scrolled_;
    Subscription resized_;
};

} // namespace corvanta
