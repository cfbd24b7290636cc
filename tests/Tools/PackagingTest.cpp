// What is shipped beside the program knows all of its commands and options.

#include "ToolTest.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

namespace corvanta {

namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAreArray;

std::string contents(const std::string& path) {
    std::ifstream stream(CORVANTA_SOURCE_FOLDER "/packaging/" + path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The commands that the help lists, each with its options as they are written.
std::map<std::string, std::vector<std::string>> commandsOfTheHelp() {
    std::map<std::string, std::vector<std::string>> commands;
    std::istringstream help(runTool({"--help"}).output);
    std::string command;
    for (std::string line; std::getline(help, line);) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        const std::size_t margin = line.find_first_not_of(' ');
        if (margin == 2)
            commands[command = word];
        else if (margin == 6 && word.starts_with("--"))
            commands[command].push_back(word);
    }
    return commands;
}

/// What bash offers for the last of `words`, those behind the name of a program.
std::vector<std::string> completions(const std::vector<std::string>& words, const std::string& folder,
                                     const std::string& program = "corvanta-text") {
    const std::string script = "cd \"$1\"; source \"$2\"; shift 2\n"
                               "COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1))\n"
                               "$(complete -p \"$1\" | sed 's/.*-F \\([^ ]*\\).*/\\1/') \"$1\" \"${@: -1}\"\n"
                               "printf '%s\\n' \"${COMPREPLY[@]}\"\n";
    std::vector<std::string> call{"bash",
                                  "--norc",
                                  "-c",
                                  script,
                                  "bash",
                                  folder,
                                  CORVANTA_SOURCE_FOLDER "/packaging/completions/" + program,
                                  program};
    call.insert(call.end(), words.begin(), words.end());
    const ProgramResult result = runProgram(call);
    EXPECT_EQ(result.errors, "");

    std::vector<std::string> offered;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty())
            offered.push_back(line);
    }
    return offered;
}

} // namespace

class Packaging : public ToolTest {};

TEST_F(Packaging, HasManualPagesThatNameEveryCommandAndOption) {
    const auto commands = commandsOfTheHelp();
    EXPECT_GE(commands.size(), 10U);
    for (const char* name : {"man/corvanta-text.1", "man/de/corvanta-text.1"}) {
        const std::string page = contents(name);
        for (const auto& [command, options] : commands) {
            EXPECT_THAT(page, HasSubstr("\n.SS " + command + "\n")) << name;
            for (std::string option : options) {
                for (std::size_t at = 0; (at = option.find('-', at)) != std::string::npos; at += 2)
                    option.insert(at, "\\");
                EXPECT_THAT(page, HasSubstr(option)) << name << ": " << command;
            }
        }
    }
}

TEST_F(Packaging, HasManualPagesWithoutMistakesOfTheirOwn) {
    for (const char* name : {"corvanta.1", "corvanta-text.1", "de/corvanta.1", "de/corvanta-text.1"}) {
        const ProgramResult result =
            runProgram({"groff", "-man", "-Kutf8", "-Tutf8", "-ww", "-z",
                        std::string(CORVANTA_SOURCE_FOLDER "/packaging/man/") + name});
        EXPECT_EQ(result.errors, "") << name;
        EXPECT_EQ(result.status, 0) << name;
    }
}

TEST_F(Packaging, CompletesEveryCommand) {
    std::vector<std::string> commands{"--help"};
    for (const auto& [command, options] : commandsOfTheHelp())
        commands.push_back(command);
    EXPECT_THAT(completions({""}, folder.path()), UnorderedElementsAreArray(commands));
    EXPECT_THAT(completions({"for"}, folder.path()), testing::ElementsAre("format"));
}

TEST_F(Packaging, CompletesTheOptionsOfEachCommand) {
    for (auto [command, options] : commandsOfTheHelp()) {
        options.emplace_back("--help");
        EXPECT_THAT(completions({command, "--"}, folder.path()), UnorderedElementsAreArray(options))
            << command;
    }
    EXPECT_THAT(completions({"format", "--w"}, folder.path()), testing::ElementsAre("--write"));
}

TEST_F(Packaging, CompletesThemes) {
    EXPECT_THAT(completions({"highlight", "--theme", "k"}, folder.path()),
                testing::UnorderedElementsAre("klassisch", "kontrast"));
}

TEST_F(Packaging, CompletesFilesAndFolders) {
    file("meine seite.html", "");
    std::filesystem::create_directory(folder / "mappe");
    EXPECT_THAT(completions({"decode", "m"}, folder.path()),
                testing::UnorderedElementsAre("meine seite.html", "mappe"));
    EXPECT_THAT(completions({"site", "--root", "m"}, folder.path()), testing::ElementsAre("mappe"));
    EXPECT_THAT(completions({"site", "--document", "me"}, folder.path()),
                testing::ElementsAre("meine seite.html"));
    EXPECT_THAT(completions({"newer", "m"}, folder.path()), testing::ElementsAre());
}

TEST_F(Packaging, CompletesTheEditorsOptionsAndFiles) {
    const auto offered = [this](const std::vector<std::string>& words) {
        return completions(words, folder.path(), "corvanta");
    };
    file("meine seite.html", "");
    file("-x.html", "");
    EXPECT_THAT(offered({"m"}), testing::ElementsAre("meine seite.html"));
    EXPECT_THAT(offered({"-"}), testing::UnorderedElementsAre("-", "--", "--help", "--version"));
    EXPECT_THAT(offered({"meine seite.html", "--v"}), testing::ElementsAre("--version"));
    EXPECT_THAT(offered({"--", "-"}), testing::ElementsAre("-x.html"));
}

TEST_F(Packaging, OffersTheEditorForItsDocumentsAndNotForPlainText) {
    const std::string entry = contents("de.corvanta.Corvanta.desktop");
    const std::string metainfo = contents("de.corvanta.Corvanta.metainfo.xml.in");
    std::istringstream lines(entry.substr(entry.find("MimeType=") + std::string("MimeType=").size()));
    std::string types;
    std::getline(lines, types);
    std::istringstream each(types);
    std::vector<std::string> offered;
    for (std::string type; std::getline(each, type, ';');) {
        offered.push_back(type);
        EXPECT_THAT(metainfo, HasSubstr("<mediatype>" + type + "</mediatype>"));
    }
    EXPECT_THAT(offered, testing::IsSupersetOf({"text/html", "text/css", "text/javascript",
                                                "application/x-php", "application/xhtml+xml"}));
    EXPECT_THAT(offered, testing::Not(testing::Contains("text/plain")));
}

} // namespace corvanta
