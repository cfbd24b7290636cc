#pragma once

#include "EditorCore/FindMatch.hpp"
#include "EditorCore/FindRequest.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextSearch.hpp"
#include "EditorCore/TextView.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/Published.hpp"
#include "Platform/Subscription.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Searching in one text view, while its find bar is open: all matches, kept right while the text is edited,
/// and going from one to the next. A long text is searched in slices between which keys are answered.
class FindSession {
public:
    /// What is searched for is shared by all windows. Everything outlives the session.
    FindSession(TextView& textView, Published<FindRequest>& request, MainQueue& mainQueue);

    /// Starts to search and to follow the text, or stops it.
    void setActive(bool isActive);
    bool isActive() const { return isActive_; }

    /// Searches for something else and selects its first match from where the user is.
    void search(const FindRequest& request);

    /// Selects the match behind or before the selection, beyond the text's end the first or last one. When
    /// the text was not yet searched so far, as soon as it is.
    void findNext();
    void findPrevious();

    /// Searches for what is selected from now on; does nothing without a selection.
    void useSelection();

    /// Replaces the selected match (for the form of `replacement` see `TextSearch`), and selects the next.
    void replace(const std::string& replacement);

    /// Replaces all matches, in one step that can be undone, as soon as all are known.
    void replaceAll(const std::string& replacement);

    TextSearch::State state() const { return state_; }

    /// What is known of the matches in the present text, in ascending order.
    const std::vector<FindMatch>& matches() const { return matches_; }

    /// The matches that have text between two places, in bytes.
    std::vector<FindMatch> matches(std::int64_t first, std::int64_t last) const;

    /// Which match is selected, counted from 1.
    std::optional<std::size_t> selectedMatch() const;

    /// Emitted when matches, state or the selected match may have changed.
    sigc::signal<void()>& signalChanged() { return changed_; }

private:
    enum class Wish { none, fromHere, next, previous, replaceAll };

    void restart();
    void searchSlice();
    void textDidChange();
    void fulfilWish();
    bool knowsAll() const { return state_ != TextSearch::State::searching; }
    void goToNext(std::int64_t from);
    void goToPrevious(std::int64_t before);
    void select(const FindMatch& match);
    void replaceAllNow();
    FindMatch selection() const;
    FindMatch inSearchedText(const FindMatch& match) const;

    TextView& textView_;
    Published<FindRequest>& request_;
    MainQueue& mainQueue_;

    bool isActive_ = false;
    std::optional<TextSearch> search_;
    TextSearch::State state_ = TextSearch::State::complete;
    std::vector<FindMatch> matches_;
    SharedText searchedText_;
    std::unique_ptr<MainQueue::Handle> nextSlice_;

    Wish wish_ = Wish::none;
    std::int64_t origin_ = 0;
    std::string wantedReplacement_;

    sigc::signal<void()> changed_;
    Subscription requestChanged_;
    Subscription textChanged_;
    Subscription selectionChanged_;
};

} // namespace corvanta
