#pragma once

#include "EditorCore/SyntaxSpan.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// What is wrong with `spans` of a text that is `length` code units long; empty when they are in ascending
/// order, apart from each other, inside the text and none of them empty.
inline std::string complaintAbout(const std::vector<SyntaxSpan>& spans, std::int64_t length) {
    std::int64_t previousEnd = 0;
    for (const SyntaxSpan& span : spans) {
        const std::string place = "span at " + std::to_string(span.range.location);
        if (span.range.length < 1)
            return place + " is empty";
        if (span.range.location < previousEnd)
            return place + " starts before the end of the one before it";
        if (span.range.end() > length)
            return place + " ends beyond the text";
        previousEnd = span.range.end();
    }
    return {};
}

} // namespace corvanta
