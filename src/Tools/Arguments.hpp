#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// What the user wrote behind the name of a command.
struct Arguments {
    /// The options that were given, without the dashes, with their values; empty for those that take none.
    std::map<std::string, std::string, std::less<>> options;

    /// Everything else, in order.
    std::vector<std::string> operands;

    bool has(std::string_view option) const { return options.find(option) != options.end(); }

    /// The value of an option; nothing when it was not given.
    std::optional<std::string> value(std::string_view option) const {
        const auto found = options.find(option);
        return found == options.end() ? std::nullopt : std::optional(found->second);
    }

    /// The operand at `index`; nothing when there are fewer.
    std::optional<std::string> operand(std::size_t index) const {
        return index < operands.size() ? std::optional(operands[index]) : std::nullopt;
    }
};

} // namespace corvanta
