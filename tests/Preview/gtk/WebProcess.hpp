#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace corvanta {

/// The engine's page processes that this process started, through whatever helpers stand between. Those that
/// have ended do not count, even if nobody has asked yet how.
inline std::vector<pid_t> webProcesses() {
    struct Process {
        pid_t parent = 0;
        std::string name;
        bool hasEnded = false;
    };
    std::map<pid_t, Process> processes;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string number = entry.path().filename();
        if (number.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::ifstream file(entry.path() / "stat");
        std::string stat;
        // A process may end between being listed and being read: then nothing is read, and nothing is thrown.
        std::getline(file, stat, '\0');
        // "number (name) state parent …"; the name may hold anything.
        const std::size_t open = stat.find('(');
        const std::size_t close = stat.rfind(')');
        if (open == std::string::npos || close == std::string::npos || close + 4 >= stat.size())
            continue;
        processes[std::stoi(number)] = {std::stoi(stat.substr(close + 4)),
                                        stat.substr(open + 1, close - open - 1), stat[close + 2] == 'Z'};
    }
    std::vector<pid_t> found;
    for (const auto& [process, description] : processes) {
        if (description.hasEnded || !description.name.starts_with("WebKitWebProces"))
            continue;
        pid_t ancestor = process;
        while (ancestor > 1 && ancestor != ::getpid())
            ancestor = processes[ancestor].parent;
        if (ancestor == ::getpid())
            found.push_back(process);
    }
    return found;
}

} // namespace corvanta
