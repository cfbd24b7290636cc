#include "Tools/Help.hpp"

#include <fmt/format.h>

#include <string_view>

namespace corvanta {

namespace {

constexpr std::string_view introduction =
    "corvanta-text: Corvanta's text engine on the command line\n"
    "\n"
    "usage: corvanta-text COMMAND [OPTION…] [FILE…]\n"
    "       corvanta-text --help\n"
    "\n"
    "Without FILE, or when it is -, standard input is read. Files may have any encoding that the\n"
    "editor opens; what is printed is UTF-8. Exit status: 0 when done, 1 when something could not\n"
    "be read or written, 2 for a wrong call.\n";

std::string written(const Option& option) {
    return option.valueName.empty() ? fmt::format("--{}", option.name)
                                    : fmt::format("--{} {}", option.name, option.valueName);
}

std::string synopsis(const Command& command) {
    std::string synopsis(command.name);
    for (const Option& option : command.options) {
        const bool isRequired = option.necessity == Option::Necessity::required;
        synopsis += isRequired ? fmt::format(" {}", written(option)) : fmt::format(" [{}]", written(option));
    }
    if (!command.operands.empty())
        synopsis += fmt::format(" {}", command.operands);
    return synopsis;
}

std::string indented(std::string_view text) {
    std::string result = "    ";
    for (const char character : text) {
        result += character;
        if (character == '\n')
            result += "    ";
    }
    return result;
}

} // namespace

std::string helpText(std::span<const Command> commands) {
    std::string text(introduction);
    for (const Command& command : commands) {
        text += fmt::format("\n  {}\n{}\n", synopsis(command), indented(command.help));
        for (const Option& option : command.options)
            text += fmt::format("      {:<17}{}\n", written(option), option.help);
        text += fmt::format("    Example:\n      {}\n", command.example);
    }
    return text;
}

} // namespace corvanta
