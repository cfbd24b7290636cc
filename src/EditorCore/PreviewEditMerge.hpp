#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// Carries a text edit made in the rendered page back into the source of the page.
struct PreviewEditMerge {
    PreviewEditMerge() = delete;

    /// The new source, or nothing when it is not certain where the edit belongs. `before` and `after` are the
    /// whole content of the edited text node, `occurrence` its index (from 0) among the `total` text nodes of
    /// the page whose content equalled `before`. Only the stretch of the source that the edit touched is
    /// replaced; markup and character references around it stay as they were written. All texts are UTF-8;
    /// they are compared by characters (grapheme clusters).
    static std::optional<std::string> applyTextEdit(std::string_view before, std::string_view after,
                                                    std::int64_t occurrence, std::int64_t total,
                                                    std::string_view source);
};

} // namespace corvanta
