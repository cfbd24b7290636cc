#include "Corvanta/LaunchArguments.hpp"

#include <charconv>
#include <string_view>
#include <system_error>

namespace corvanta {

namespace {

using Request = LaunchArguments::Request;

/// What an option asks for; nothing when there is no such option.
std::optional<Request> requestOf(std::string_view option) {
    if (option == "--help" || option == "-h")
        return Request::help;
    if (option == "--version")
        return Request::version;
    // The desktop starts the program so when somebody calls it by its name on the bus.
    if (option == "--gapplication-service")
        return Request::service;
    return std::nullopt;
}

std::optional<int> lineNumber(std::string_view digits) {
    int number = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number > 0 ? std::optional(number) : std::nullopt;
}

LaunchArguments::File fileNamed(const std::string& word,
                                const std::function<bool(const std::string&)>& exists) {
    const std::size_t colon = word.rfind(':');
    if (colon == std::string::npos || colon == 0)
        return {word, std::nullopt};
    const std::optional<int> line = lineNumber(std::string_view(word).substr(colon + 1));
    const std::string name = word.substr(0, colon);
    return line && !exists(word) && exists(name) ? LaunchArguments::File{name, line}
                                                 : LaunchArguments::File{word, std::nullopt};
}

} // namespace

LaunchArguments LaunchArguments::parse(std::span<const std::string> words,
                                       const std::function<bool(const std::string&)>& exists) {
    LaunchArguments arguments;
    bool takesOptions = true;
    for (const std::string& word : words) {
        if (word == "-") {
            arguments.readsStandardInput = true;
        } else if (takesOptions && word == "--") {
            takesOptions = false;
        } else if (takesOptions && word.starts_with('-')) {
            const std::optional<Request> request = requestOf(word);
            arguments.request = request.value_or(Request::wrongCall);
            if (!request)
                arguments.unknownOption = word;
            return arguments;
        } else {
            arguments.files.push_back(fileNamed(word, exists));
        }
    }
    return arguments;
}

} // namespace corvanta
