#pragma once

#include <optional>
#include <string>

namespace corvanta {

/// The text of `file`, decoded as the editor decodes it. Without a name, or when it is "-", that of standard
/// input. Pipes and devices are read to their end. Throws `Failure` with the file and the reason.
std::string readText(const std::optional<std::string>& file);

/// Hands out standard input line by line, each as soon as it is there.
class InputLines {
public:
    /// The next line without its line end (LF or CR LF), also a last one that has none; nothing at the end.
    /// Throws `Failure`.
    std::optional<std::string> next();

private:
    std::string buffer_;
    std::size_t start_ = 0;
    bool isAtEnd_ = false;
};

} // namespace corvanta
