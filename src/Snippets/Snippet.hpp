#pragma once

#include "Snippets/UUID.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// A piece of text to be inserted again and again. Strings are UTF-8.
struct Snippet {
    UUID id = UUID();
    /// The name shown to the user.
    std::string title;
    /// The text that the snippet inserts.
    std::string body;

    /// A JSON object with exactly the members "id", "title" and "body". Bytes that are no UTF-8 come out as
    /// replacement characters.
    std::string toJSON() const;

    /// The snippet in `text`, a JSON object with at least these members, or nothing.
    static std::optional<Snippet> fromJSON(std::string_view text);

    friend bool operator==(const Snippet&, const Snippet&) = default;
};

} // namespace corvanta

template <>
struct std::hash<corvanta::Snippet> {
    /// The id alone: equal snippets have equal ids, and different ones hardly ever have.
    std::size_t operator()(const corvanta::Snippet& snippet) const noexcept {
        std::size_t mixed = 0;
        for (const std::uint8_t byte : snippet.id.bytes())
            mixed = mixed * 31 + byte;
        return mixed;
    }
};
