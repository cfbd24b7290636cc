#pragma once

#include "Tools/Arguments.hpp"
#include "Tools/Output.hpp"

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

namespace corvanta {

/// An option of a command, written "--name" or, when it takes a value, "--name VALUE" or "--name=VALUE".
struct Option {
    enum class Necessity { optional, required };

    /// Without the dashes.
    std::string_view name;

    /// What the help calls the value; empty when the option takes none.
    std::string_view valueName;
    std::string_view help;
    Necessity necessity = Necessity::optional;
};

/// One of the program's commands: all that dispatch, the argument parser and the help know of it.
struct Command {
    std::string_view name;
    std::vector<Option> options;

    /// What the help calls the arguments that are no options; empty when there are none.
    std::string_view operands;
    std::size_t minimumOperandCount = 0;
    std::size_t maximumOperandCount = 0;

    /// As many operands as the user likes.
    static constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

    std::string_view help;
    std::string_view example;

    /// Carries the command out and answers the exit status. Throws `UsageError` or `Failure`.
    int (*run)(const Arguments& arguments, Output& output) = nullptr;
};

} // namespace corvanta
