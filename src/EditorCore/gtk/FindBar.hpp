#pragma once

#include "EditorCore/FindPanelAction.hpp"
#include "EditorCore/FindSession.hpp"
#include "EditorCore/gtk/FoundMarks.hpp"
#include "EditorCore/gtk/IndentingTextView.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/Published.hpp"
#include "Platform/Subscription.hpp"
#include "Platform/gtk/WrappingRow.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <gtkmm/togglebutton.h>

#include <string>

namespace corvanta {

/// Finding and replacing inside the code pane. Hidden until it is asked for.
class FindBar : public Gtk::Box {
public:
    /// What is searched for is shared by all windows. Everything outlives the bar.
    FindBar(IndentingTextView& textView, Published<FindRequest>& request, MainQueue& mainQueue);

    /// The tag on every match that is on screen.
    const Glib::RefPtr<Gtk::TextTag>& mark() const { return marks_.tag(); }

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

    /// What the bar says of the matches.
    std::string status() const { return status_.get_text(); }

private:
    void build();
    void followKeys();
    void perform(FindPanelAction action);
    void open(bool replaces);
    void close();
    void searchForEntry();
    void showRequest();
    void showStatus();
    std::string statusText() const;

    IndentingTextView& textView_;
    Published<FindRequest>& request_;
    FindSession session_;
    FoundMarks marks_;

    static constexpr int spacing = 6;

    Gtk::Box fieldAndStatus_{Gtk::Orientation::HORIZONTAL, spacing};
    Gtk::Entry find_;
    Gtk::Label status_;
    Gtk::Box buttons_{Gtk::Orientation::HORIZONTAL, spacing};
    Gtk::ToggleButton matchesCase_{"Aa"};
    Gtk::ToggleButton isRegularExpression_{".*"};
    Gtk::Button previous_;
    Gtk::Button next_;
    Gtk::Button close_;
    WrappingRow findRow_{fieldAndStatus_, buttons_, spacing};
    Gtk::Entry replace_;
    Gtk::Box replaceButtons_{Gtk::Orientation::HORIZONTAL, spacing};
    Gtk::Button replaceOne_;
    Gtk::Button replaceAll_;
    WrappingRow replaceRow_{replace_, replaceButtons_, spacing};

    /// True only while the bar shows what another window searches for.
    bool isShowingRequest_ = false;

    Subscription panelAction_;
    Subscription requestChanged_;
    Subscription sessionChanged_;
};

} // namespace corvanta
