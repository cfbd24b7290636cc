#include "EditorCore/FindSession.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvanta {

namespace {

/// How long to search before keys and drawing have their turn, and how long they have it.
constexpr std::chrono::microseconds slice{2000};
constexpr MainQueue::Duration turn{1};

/// How long the typing must rest before the text is searched anew.
constexpr MainQueue::Duration rest{150};

} // namespace

FindSession::FindSession(TextView& textView, Published<FindRequest>& request, MainQueue& mainQueue)
    : textView_(textView), request_(request), mainQueue_(mainQueue) {}

void FindSession::setActive(bool isActive) {
    if (isActive_ == isActive)
        return;
    isActive_ = isActive;
    if (isActive) {
        requestChanged_ = request_.subscribe([this](const FindRequest&) { restart(); });
        textChanged_ = Subscription(textView_.signalTextDidChange().connect([this] { textDidChange(); }));
        selectionChanged_ =
            Subscription(textView_.signalSelectionDidChange().connect([this] { changed_.emit(); }));
        restart();
        return;
    }
    requestChanged_ = Subscription();
    textChanged_ = Subscription();
    selectionChanged_ = Subscription();
    nextSlice_.reset();
    search_.reset();
    matches_.clear();
    state_ = TextSearch::State::complete;
    wish_ = Wish::none;
    changed_.emit();
}

void FindSession::search(const FindRequest& request) {
    setActive(true);
    origin_ = selection().first;
    request_ = request;
    wish_ = Wish::fromHere;
    fulfilWish();
}

void FindSession::findNext() {
    setActive(true);
    wish_ = Wish::next;
    fulfilWish();
}

void FindSession::findPrevious() {
    setActive(true);
    wish_ = Wish::previous;
    fulfilWish();
}

void FindSession::useSelection() {
    const FindMatch selected = selection();
    if (selected.first == selected.last)
        return;
    FindRequest request = *request_;
    request.text = textView_.text().substring(selected.first, selected.last);
    request.isRegularExpression = false;
    request_ = request;
}

void FindSession::replace(const std::string& replacement) {
    setActive(true);
    const FindMatch selected = selection();
    const bool isMatch = std::binary_search(
        matches_.begin(), matches_.end(), selected, [](const FindMatch& a, const FindMatch& b) {
            return std::pair(a.first, a.last) < std::pair(b.first, b.last);
        });
    std::optional<std::string> text;
    if (isMatch && search_)
        text = search_->replacement(inSearchedText(selected), replacement);
    if (text)
        textView_.insertText(*text, textView_.selectedRange());
    findNext();
    // No match is known behind this one. Whoever replaces one after the other does not wait for the typing to
    // rest.
    if (text && wish_ == Wish::next)
        restart();
}

void FindSession::replaceAll(const std::string& replacement) {
    setActive(true);
    wantedReplacement_ = replacement;
    wish_ = Wish::replaceAll;
    if (searchedText_ != textView_.text())
        restart();
    fulfilWish();
}

/// Searches the present text from its start.
void FindSession::restart() {
    matches_.clear();
    searchedText_ = textView_.text();
    search_.emplace(searchedText_.string(), *request_);
    searchSlice();
}

void FindSession::searchSlice() {
    search_->advance(slice);
    const std::vector<FindMatch>& found = search_->matches();
    matches_.insert(matches_.end(), found.begin() + static_cast<std::ptrdiff_t>(matches_.size()),
                    found.end());
    state_ = search_->state();
    if (state_ == TextSearch::State::searching)
        nextSlice_ = mainQueue_.after(turn, [this] { searchSlice(); });
    else
        nextSlice_.reset();
    fulfilWish();
    changed_.emit();
}

/// Until the text is searched anew, the matches that the edit did not touch move with it.
void FindSession::textDidChange() {
    const TextChange change = SharedText::change(searchedText_, textView_.text());
    const std::int64_t added = textView_.text().end().byte - searchedText_.end().byte;
    const std::int64_t changedUntil = searchedText_.end().byte - change.unchangedAfter;
    const std::vector<FindMatch> old = search_->matches();
    matches_.clear();
    for (const FindMatch& match : old) {
        if (match.last <= change.unchangedBefore)
            matches_.push_back(match);
        else if (match.first >= changedUntil)
            matches_.push_back({match.first + added, match.last + added});
    }
    state_ = TextSearch::State::searching;
    nextSlice_ = mainQueue_.after(rest, [this] { restart(); });
    changed_.emit();
}

/// Where a match of `matches_` was in the text that was searched, in which alone its groups are known.
FindMatch FindSession::inSearchedText(const FindMatch& match) const {
    const TextChange change = SharedText::change(searchedText_, textView_.text());
    if (match.last <= change.unchangedBefore)
        return match;
    const std::int64_t added = textView_.text().end().byte - searchedText_.end().byte;
    return {match.first - added, match.last - added};
}

/// Goes where the user wants to, when enough is known for it.
void FindSession::fulfilWish() {
    const FindMatch here = selection();
    switch (wish_) {
    case Wish::none:
        return;
    case Wish::fromHere:
        return goToNext(origin_);
    case Wish::next:
        return goToNext(here.last);
    case Wish::previous:
        return goToPrevious(here.first);
    case Wish::replaceAll:
        if (knowsAll())
            replaceAllNow();
        return;
    }
}

void FindSession::goToNext(std::int64_t from) {
    const auto next = std::partition_point(matches_.begin(), matches_.end(),
                                           [from](const FindMatch& match) { return match.first < from; });
    if (next != matches_.end())
        select(*next);
    else if (knowsAll() && !matches_.empty())
        select(matches_.front());
    else if (knowsAll())
        wish_ = Wish::none;
}

void FindSession::goToPrevious(std::int64_t before) {
    const auto next = std::partition_point(matches_.begin(), matches_.end(),
                                           [before](const FindMatch& match) { return match.last <= before; });
    // The one before is known when the search has come so far; wrapping around needs the last of all.
    if (next != matches_.begin() && (knowsAll() || next != matches_.end()))
        select(*(next - 1));
    else if (knowsAll() && !matches_.empty())
        select(matches_.back());
    else if (knowsAll())
        wish_ = Wish::none;
}

void FindSession::select(const FindMatch& match) {
    wish_ = Wish::none;
    const std::int64_t first = textView_.text().atByte(match.first).codeUnit;
    textView_.setSelectedRange({first, textView_.text().atByte(match.last).codeUnit - first});
    textView_.revealSelection();
}

void FindSession::replaceAllNow() {
    wish_ = Wish::none;
    const std::string before = searchedText_.string();
    std::string after;
    std::int64_t copied = 0;
    const auto between = [&before](std::int64_t first, std::int64_t last) {
        return std::string_view(before).substr(static_cast<std::size_t>(first),
                                               static_cast<std::size_t>(last - first));
    };
    for (const FindMatch& match : matches_) {
        const std::optional<std::string> replacement = search_->replacement(match, wantedReplacement_);
        if (!replacement)
            return;
        after += between(copied, match.first);
        after += *replacement;
        copied = match.last;
    }
    after += between(copied, static_cast<std::int64_t>(before.size()));
    const TextRange selected = textView_.selectedRange();
    if (!matches_.empty() && textView_.replaceWholeText(SharedText(after)))
        textView_.setSelectedRange({selected.location, 0});
}

std::vector<FindMatch> FindSession::matches(std::int64_t first, std::int64_t last) const {
    const auto begin = std::partition_point(matches_.begin(), matches_.end(),
                                            [first](const FindMatch& match) { return match.last <= first; });
    const auto end = std::partition_point(begin, matches_.end(),
                                          [last](const FindMatch& match) { return match.first < last; });
    return {begin, end};
}

std::optional<std::size_t> FindSession::selectedMatch() const {
    const FindMatch selected = selection();
    const auto found = std::partition_point(matches_.begin(), matches_.end(), [&](const FindMatch& match) {
        return match.first < selected.first;
    });
    if (found == matches_.end() || *found != selected)
        return std::nullopt;
    return static_cast<std::size_t>(found - matches_.begin()) + 1;
}

FindMatch FindSession::selection() const {
    const TextRange range = textView_.selectedRange();
    return {textView_.text().atCodeUnit(range.location).byte, textView_.text().atCodeUnit(range.end()).byte};
}

} // namespace corvanta
