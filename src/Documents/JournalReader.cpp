#include "Documents/JournalReader.hpp"

#include "Documents/GapText.hpp"
#include "Documents/JournalFormat.hpp"

#include <cstdint>

namespace corvanta {

namespace {

using End = JournalReader::End;
using Kind = JournalFormat::Kind;

/// Carries out the records after the head one by one.
class Player {
public:
    explicit Player(std::optional<std::string_view> baseText) {
        if (baseText)
            text_.emplace(*baseText);
    }

    /// Returns false when there can be no such record.
    bool play(std::string_view content) {
        const auto kind = static_cast<Kind>(content.front());
        if (kind == Kind::wholeText || kind == Kind::overwriting) {
            text_.emplace(content.substr(1));
            wasOverwriting_ = kind == Kind::overwriting;
            return true;
        }
        const auto edit = JournalFormat::edit(content);
        return edit && play(*edit);
    }

    JournalReader::Replay result(End end) const {
        if (!text_)
            return {std::nullopt, typed_, false, end};
        return {text_->text(), "", wasOverwriting_, end};
    }

private:
    bool play(const JournalFormat::Edit& edit) {
        wasOverwriting_ = false;
        if (!text_) {
            typed_.append(edit.inserted).push_back('\n');
            return true;
        }
        if (edit.offset > text_->size() || edit.removed > text_->size() - edit.offset)
            return false;
        text_->replace(edit.offset, edit.removed, edit.inserted);
        return true;
    }

    std::optional<GapText> text_;
    std::string typed_;
    bool wasOverwriting_ = false;
};

/// Whether `bytes`, with which no sound record begins, could be the beginning of one.
bool isBeginningOfARecord(std::string_view bytes) {
    constexpr std::size_t sizeOfSize = 4;
    constexpr std::size_t sizeBeforeContent = 12;
    if (bytes.size() < sizeBeforeContent)
        return true;
    std::uint64_t size = 0;
    for (std::size_t i = 0; i < sizeOfSize; ++i)
        size |= std::uint64_t{static_cast<std::uint8_t>(bytes[i])} << (8 * i);
    return size > bytes.size() - sizeBeforeContent;
}

/// Takes the signature and the head from the front of `journal`.
std::optional<JournalHead> takeHead(std::string_view& journal, std::uint64_t& seed) {
    if (!journal.starts_with(JournalFormat::signature))
        return std::nullopt;
    journal.remove_prefix(JournalFormat::signature.size());
    const auto content = JournalFormat::takeRecord(journal, seed);
    return content ? JournalFormat::head(*content) : std::nullopt;
}

} // namespace

std::optional<JournalHead> JournalReader::head(std::string_view start) {
    std::uint64_t seed = JournalFormat::firstSeed();
    return takeHead(start, seed);
}

JournalReader::Replay JournalReader::replay(std::string_view journal,
                                            std::optional<std::string_view> baseText) {
    std::uint64_t seed = JournalFormat::firstSeed();
    const auto head = takeHead(journal, seed);
    if (!head)
        return {std::nullopt, "", false, End::damaged};

    // A base text that does not belong to the edits would give a wrong text.
    const bool belongs = baseText && Fingerprint::of(*baseText) == head->baseText;
    Player player(belongs ? baseText : std::nullopt);
    while (!journal.empty()) {
        std::string_view rest = journal;
        const auto content = JournalFormat::takeRecord(rest, seed);
        if (!content)
            return player.result(isBeginningOfARecord(journal) ? End::cutOff : End::damaged);
        if (!player.play(*content))
            return player.result(End::damaged);
        journal = rest;
    }
    return player.result(End::whole);
}

} // namespace corvanta
