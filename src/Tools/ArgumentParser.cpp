#include "Tools/ArgumentParser.hpp"

#include "Tools/Errors.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace corvanta {

namespace {

const Option& optionNamed(std::string_view name, const Command& command) {
    const auto option = std::ranges::find(command.options, name, &Option::name);
    if (option == command.options.end())
        throw UsageError(fmt::format("{}: unknown option --{}", command.name, name));
    return *option;
}

/// Reads the option at the front of `words` and takes it off, with its value.
void takeOption(const Command& command, std::span<const std::string>& words, Arguments& arguments) {
    const std::string_view word = std::string_view(words.front()).substr(2);
    words = words.subspan(1);

    const std::size_t equalsSign = word.find('=');
    const bool isValueAttached = equalsSign != std::string_view::npos;
    const Option& option = optionNamed(word.substr(0, equalsSign), command);

    std::string value;
    if (option.valueName.empty()) {
        if (isValueAttached)
            throw UsageError(fmt::format("{}: --{} takes no value", command.name, option.name));
    } else if (isValueAttached) {
        value = word.substr(equalsSign + 1);
    } else if (!words.empty()) {
        value = words.front();
        words = words.subspan(1);
    } else {
        throw UsageError(fmt::format("{}: --{} needs a value", command.name, option.name));
    }
    if (!arguments.options.emplace(option.name, std::move(value)).second)
        throw UsageError(fmt::format("{}: --{} is given twice", command.name, option.name));
}

void checkRequiredOptions(const Command& command, const Arguments& arguments) {
    for (const Option& option : command.options) {
        if (option.necessity == Option::Necessity::required && !arguments.has(option.name)) {
            throw UsageError(
                fmt::format("{}: --{} {} is missing", command.name, option.name, option.valueName));
        }
    }
}

} // namespace

Arguments parseArguments(const Command& command, std::span<const std::string> words) {
    Arguments arguments;
    bool takesOptions = true;
    while (!words.empty()) {
        const std::string& word = words.front();
        if (takesOptions && word == "--") {
            takesOptions = false;
            words = words.subspan(1);
        } else if (takesOptions && word.starts_with("--")) {
            takeOption(command, words, arguments);
        } else if (takesOptions && word.starts_with('-') && word != "-") {
            throw UsageError(fmt::format("{}: unknown option {}", command.name, word));
        } else if (arguments.operands.size() == command.maximumOperandCount) {
            throw UsageError(fmt::format("{}: one argument too many: {}", command.name, word));
        } else {
            arguments.operands.push_back(word);
            words = words.subspan(1);
        }
    }
    checkRequiredOptions(command, arguments);
    if (arguments.operands.size() < command.minimumOperandCount)
        throw UsageError(fmt::format("{}: {} are needed", command.name, command.operands));
    return arguments;
}

} // namespace corvanta
