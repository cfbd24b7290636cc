#pragma once

#include <giomm/actionmap.h>
#include <giomm/application.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// Does what a call of the program asks for, in this process or in the one that runs already.
struct CommandLine {
    CommandLine() = delete;

    /// What a call asks of the running program beside opening files.
    struct Services {
        /// Opens a new document; the bytes may have any encoding that a file may have.
        std::function<void(std::string_view bytes)> openNew;

        /// Jumps to a line, the first being 1, of the document in a file, if that is open.
        std::function<void(const std::filesystem::path& path, int line)> goToLine;
    };

    /// Prints what a call only wants to be told, for example the version, and answers the exit status;
    /// nothing when the call asks for more. Needs no display, unlike an application object. `words` are those
    /// behind the program's name.
    static std::optional<int> answer(const std::vector<std::string>& words);

    /// Makes the services ready to be called from other processes.
    static void addActions(Gio::ActionMap& program, Services services);

    /// Opens what `words` name, to which `answer` had nothing to say. Answers the exit status, or nothing
    /// when the desktop wants the program as a service. The main loop then goes on if there is something to
    /// show.
    static std::optional<int> run(Gio::Application& program, const std::vector<std::string>& words);
};

} // namespace corvanta
