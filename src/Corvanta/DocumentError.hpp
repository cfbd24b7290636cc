#pragma once

#include <system_error>

namespace corvanta {

/// Why a document could not be read or saved.
enum class DocumentError {
    /// What lies there is not a regular file, or it could not be read.
    fileReadCorruptFile = 1,
    /// Somebody else changed the file; saving would overwrite that.
    fileChangedOutside,
    /// Another document has the file.
    fileIsOpenElsewhere,
};

std::error_code make_error_code(DocumentError error);

} // namespace corvanta

template <>
struct std::is_error_code_enum<corvanta::DocumentError> : std::true_type {};
