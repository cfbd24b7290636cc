#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// What the program answers on a terminal, in the language of its interface, with a line feed at the end.
struct LaunchTexts {
    LaunchTexts() = delete;

    static std::string help();

    /// `version` is the program's.
    static std::string version(std::string_view version);

    /// `option` is the word that nobody knows.
    static std::string unknownOption(const std::string& option);

    /// The standard input cannot be handed to the program that runs already.
    static std::string inputTooLarge();
};

} // namespace corvanta
