#pragma once

#include <string_view>
#include <vector>

namespace corvanta {

/// A kind of file, for the dialogs that open and save.
struct ContentType {
    /// German; the dialogs translate it.
    std::string_view name;

    /// May end in "/*" for every type of a family.
    std::vector<std::string_view> mimeTypes;

    /// Lower case, without the dot; the preferred one first. May be empty.
    std::vector<std::string_view> suffixes;

    friend bool operator==(const ContentType&, const ContentType&) = default;
};

} // namespace corvanta
