#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// Standard output. An error while writing is never lost: the call that meets it throws `Failure`.
class Output {
public:
    /// Appends `text`; it may stay in memory until `flush` or `finish`.
    void write(std::string_view text);

    /// Hands over what was written so far, for a reader who waits for the answer.
    void flush();

    /// Hands over the rest and closes, since some file systems tell of an error only then. Nothing may
    /// follow.
    void finish();

private:
    std::string pending_;
};

} // namespace corvanta
