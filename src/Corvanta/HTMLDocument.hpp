#pragma once

#include "Corvanta/ContentType.hpp"
#include "EditorCore/SharedText.hpp"
#include "Platform/FileManager.hpp"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <system_error>

namespace corvanta {

/// A document as it is read from a file and written to one.
struct HTMLDocument {
    /// The whole content of the file.
    SharedText text;

    /// The kinds of files that can be opened.
    static std::span<const ContentType> readableContentTypes();

    /// The kinds of files that are offered for saving: the first of those that can be opened.
    static std::span<const ContentType> writableContentTypes();

    /// The document in the file at `path`, whatever its encoding. When it is not a regular file or cannot be
    /// read, nothing, and `error` is `DocumentError::fileReadCorruptFile`.
    static std::optional<HTMLDocument> read(const FileManager& fileManager, const std::filesystem::path& path,
                                            std::error_code& error);

    /// The document in a file that holds `bytes`, whatever their encoding.
    static HTMLDocument fromFileContents(std::string bytes);

    /// The bytes of the file to write: always UTF-8 without a byte-order mark, line ends as they are.
    std::string fileContents() const { return text.string(); }

    friend bool operator==(const HTMLDocument&, const HTMLDocument&) = default;
};

} // namespace corvanta
