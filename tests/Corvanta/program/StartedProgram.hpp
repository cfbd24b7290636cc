#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvanta {

/// The program as a process of its own, with nobody's state but its own.
class StartedProgram {
public:
    /// `state` is the folder for what it keeps; `arguments` are files to open; `environment` is what it finds
    /// set otherwise than this process ("NAME=value").
    explicit StartedProgram(const std::filesystem::path& state,
                            const std::vector<std::string>& arguments = {},
                            const std::vector<std::string>& environment = {});
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    /// Kills the program if it still runs.
    ~StartedProgram();

    /// Sends it a signal and waits for its end. Returns the exit status, or 128 and the number of the signal
    /// that ended it.
    int end(int signal);

    /// Waits for its end, which must come within a minute; then it is killed.
    int wait();

    pid_t process() const { return process_; }

private:
    pid_t process_ = -1;
};

} // namespace corvanta
