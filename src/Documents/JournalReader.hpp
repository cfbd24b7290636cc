#pragma once

#include "Documents/JournalHead.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// Reads a journal, whatever became of it.
struct JournalReader {
    JournalReader() = delete;

    enum class End {
        /// With a whole record.
        whole,
        /// Within a record, as after a death while it was written.
        cutOff,
        /// What follows is no record, or one that cannot be.
        damaged,
    };

    struct Replay {
        /// The text after the last sound record. Absent when the journal needs its base text and that was not
        /// given, or the journal ended before its first text.
        std::optional<std::string> text;

        /// What was typed, when `text` is absent: the inserted pieces, one a line.
        std::string typed;

        /// Whether the last record was written before the file was overwritten in place.
        bool wasOverwriting = false;

        /// Everything before the end is in `text`.
        End end = End::whole;
    };

    /// The head of the journal whose first bytes are given, or nothing when it is not sound.
    static std::optional<JournalHead> head(std::string_view start);

    /// Applies the journal's edits to the base text.
    static Replay replay(std::string_view journal, std::optional<std::string_view> baseText);
};

} // namespace corvanta
