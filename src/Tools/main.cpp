#include "Tools/ArgumentParser.hpp"
#include "Tools/CommandTable.hpp"
#include "Tools/Complaint.hpp"
#include "Tools/Errors.hpp"
#include "Tools/ExitStatus.hpp"
#include "Tools/Help.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

namespace {

bool isHelpRequest(std::string_view word) {
    return word == "--help" || word == "-h";
}

/// Whether help is asked for by `words`; behind "--" there are no options.
bool asksForHelp(std::span<const std::string> words) {
    return std::any_of(words.begin(), std::ranges::find(words, "--"), isHelpRequest);
}

int run(std::span<const std::string> words, Output& output) {
    if (asksForHelp(words)) {
        output.write(helpText(commandTable()));
        return 0;
    }
    if (words.empty())
        throw UsageError("no command given; corvanta-text --help lists them");

    const auto command = std::ranges::find(commandTable(), words.front(), &Command::name);
    if (command == commandTable().end())
        throw UsageError(fmt::format("unknown command {}; corvanta-text --help lists them", words.front()));
    return command->run(parseArguments(*command, words.subspan(1)), output);
}

int runAndComplain(std::span<const std::string> words) {
    try {
        Output output;
        const int status = run(words, output);
        output.finish();
        return status;
    } catch (const UsageError& error) {
        complain(error.what());
        return ExitStatus::wrongCall;
    } catch (const std::bad_alloc&) {
        complain("out of memory");
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return ExitStatus::failure;
}

} // namespace

} // namespace corvanta

int main(int count, char** words) {
    // A reader who has gone away is one more error while writing: told, not a silent death.
    std::signal(SIGPIPE, SIG_IGN);
    return corvanta::runAndComplain(std::vector<std::string>(words + std::min(count, 1), words + count));
}
