#pragma once

#include "EditorCore/HTMLFormatterElements.hpp"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace corvanta {

/// Numbers for the names of a page's tags: the same number for the same name, however it is written.
class HTMLFormatterNames {
public:
    struct Name {
        /// Counts up from 0 without a gap.
        std::size_t number = 0;
        HTMLFormatterElements::Traits traits = 0;
    };

    /// The end of the name that starts at `position` of `text`: of letters and digits of any script, "-",
    /// ":", "_" and ".". The position itself when there is none.
    static std::size_t end(std::string_view text, std::size_t position);

    /// Whether a tag's name starts at `position` of `text`, with a letter of any script or "_".
    static bool startsAt(std::string_view text, std::size_t position);

    /// `name` is as the page writes it.
    Name of(std::string_view name);

    /// All numbers given so far are smaller.
    std::size_t count() const { return HTMLFormatterElements::elements.size() + others_.size(); }

private:
    static std::string lowercased(std::string_view name);

    /// Ordered, because no choice of names makes this one slow.
    std::map<std::string, std::size_t, std::less<>> others_;
};

} // namespace corvanta
