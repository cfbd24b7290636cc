#pragma once

#include "Documents/Fingerprint.hpp"

#include <filesystem>
#include <optional>

namespace corvanta {

/// To which document a journal belongs.
struct JournalHead {
    /// Absent for a document that was never saved.
    std::optional<std::filesystem::path> file;

    /// The bytes of the file when the text was last the same as the file's.
    Fingerprint fileContent;

    /// The text to which the first edit of the journal belongs, unless the journal holds a whole text.
    Fingerprint baseText;

    friend bool operator==(const JournalHead&, const JournalHead&) = default;
};

} // namespace corvanta
