#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// Text widgets end a text at its first NUL. A text that holds one is shown with a stand-in character that it
/// does not hold otherwise, and is translated back on the way out, so that it is saved as it was.
class NulStandIn {
public:
    NulStandIn() = default;

    /// A stand-in that fits `text`; none, and every text is left as it is, when `text` holds no NUL.
    explicit NulStandIn(std::string_view text);

    /// Whether `text` can be shown so that its meaning is found again: it holds no NUL for which there is no
    /// stand-in, and not the stand-in itself.
    bool canShow(std::string_view text) const;

    /// `text` as the widget shows it.
    std::string shown(std::string text) const;

    /// The text meant by `shown`.
    std::string meant(std::string shown) const;

private:
    /// One character, UTF-8; empty when none is needed.
    std::string character_;
};

} // namespace corvanta
