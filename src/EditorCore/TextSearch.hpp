#pragma once

#include "EditorCore/FindMatch.hpp"
#include "EditorCore/FindRequest.hpp"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// Searches a whole text, a slice of time at a time, so that whoever types meanwhile need not wait. Matches
/// do not overlap. Letters are compared one by one as Unicode folds their case, so that plain text is found
/// only where it stands character for character.
class TextSearch {
public:
    enum class State {
        searching,
        complete,
        /// The regular expression is none.
        invalid,
        /// The regular expression takes too much time or memory on this text.
        tooExpensive,
    };

    /// Searches `text` (valid UTF-8) for `request`.
    TextSearch(std::string text, const FindRequest& request);
    TextSearch(TextSearch&&) noexcept;
    TextSearch& operator=(TextSearch&&) noexcept;
    ~TextSearch();

    /// Searches on, for about `slice`.
    void advance(std::chrono::microseconds slice);

    State state() const { return state_; }

    /// What was found until now, in ascending order.
    const std::vector<FindMatch>& matches() const { return matches_; }

    /// What `replacement` (UTF-8) means for a match: "$1" and "${name}" are a regular expression's groups, a
    /// backslash takes the next character literally. Plain text means itself. Nothing for a group that there
    /// is not.
    std::optional<std::string> replacement(const FindMatch& match, const std::string& replacement);

private:
    class Searcher;
    class PlainSearcher;
    class RegularSearcher;

    std::unique_ptr<std::string> text_;
    std::unique_ptr<Searcher> searcher_;
    std::vector<FindMatch> matches_;
    State state_ = State::searching;
};

} // namespace corvanta
