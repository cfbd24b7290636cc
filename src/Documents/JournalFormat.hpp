#pragma once

#include "Documents/JournalHead.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// How a journal lies on the disk. All numbers are little-endian.
///
///     file      signature, record…
///     record    size of the content (4 bytes), checksum (8 bytes), content
///     content   kind (1 byte), then
///       head        format version (1), whether there is a file (1), size and hash of the file's content
///                   (8 + 8), size and hash of the base text (8 + 8), path of the file (the rest)
///       edit        offset in bytes (8), number of bytes removed there (8), text inserted there (the rest)
///       wholeText   the text from here on (the rest)
///       overwriting the same, and the file is about to be overwritten with it
///
/// A record's checksum is the hash of its content with the checksum before it as the seed, the first with
/// that of the signature: a record counts only when everything before it is sound, and one that lay on this
/// place of the disk before does not count.
struct JournalFormat {
    JournalFormat() = delete;

    static constexpr std::string_view signature = "Corvanta journal\n";
    static constexpr std::uint8_t version = 1;

    /// A journal that is shorter than this, in bytes, has no head and so nothing at all.
    static constexpr std::size_t shortestWithHead = signature.size() + 12 + 1 + 2 + std::size_t{4} * 8;

    enum class Kind : char { head = 'H', edit = 'E', wholeText = 'T', overwriting = 'O' };

    struct Edit {
        std::uint64_t offset = 0;
        std::uint64_t removed = 0;
        std::string_view inserted;
    };

    /// The seed of the first record.
    static std::uint64_t firstSeed();

    /// The content of a record that is a head.
    static std::string content(const JournalHead& head);

    /// The content of a record that is an edit.
    static std::string content(const Edit& edit);

    /// The content of a record that holds `text`.
    static std::string content(Kind kind, std::string_view text);

    /// The bytes of the record with this content. `seed` is the checksum before it and becomes its own.
    static std::string record(std::string_view content, std::uint64_t& seed);

    /// Takes a sound record from the front of `bytes` and returns its content, which is not empty. Returns
    /// nothing when there is none; then nothing was taken.
    static std::optional<std::string_view> takeRecord(std::string_view& bytes, std::uint64_t& seed);

    /// What a record's content says, or nothing when it is not of this kind.
    static std::optional<JournalHead> head(std::string_view content);
    static std::optional<Edit> edit(std::string_view content);
};

} // namespace corvanta
