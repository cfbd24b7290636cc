#pragma once

#include "EditorCore/TextRange.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvanta {

/// Turns places of a UTF-8 text from bytes into UTF-16 code units, asked in ascending order. Over ASCII,
/// where the two differ by a constant, an answer is one subtraction; all answers together read the text
/// twice.
class CodeUnitCursor {
public:
    /// `text` must outlive the cursor. Ill-formed sequences count like the well-formed ones that start with
    /// the same byte.
    /// Nothing before `byte`, which is `codeUnit` code units into the text, will be asked for.
    explicit CodeUnitCursor(std::string_view text, std::size_t byte = 0, std::int64_t codeUnit = 0)
        : text_(text), asciiUntil_(byte), surplus_(static_cast<std::int64_t>(byte) - codeUnit) {}

    /// The bytes from `start` to `end` as a range of code units. `start` must not be less than the `end` of
    /// the last call, `end` not beyond the text.
    TextRange codeUnits(std::size_t start, std::size_t end) {
        if (end > asciiUntil_) [[unlikely]]
            return codeUnitsBeyondASCII(start, end);
        const auto length = static_cast<std::int64_t>(end - start);
        return {static_cast<std::int64_t>(start) - surplus_, length};
    }

private:
    TextRange codeUnitsBeyondASCII(std::size_t start, std::size_t end);
    std::int64_t codeUnits(std::size_t offset);

    std::string_view text_;
    /// From the last place asked for up to here there is nothing but ASCII.
    std::size_t asciiUntil_;
    /// By how much the bytes before `asciiUntil_` outnumber their code units.
    std::int64_t surplus_;
};

} // namespace corvanta
