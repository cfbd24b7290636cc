#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace corvanta {

/// A program that is measured. It and what it started are ended with this object.
class StartedProgram {
public:
    /// `command` is the program, looked up in PATH, and its arguments. What it prints is dropped.
    explicit StartedProgram(std::vector<std::string> command);
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;
    ~StartedProgram();

    /// Whether the program has not ended by itself.
    bool isRunning();

    /// Waits until the program itself (not what it started) uses hardly any processor time, at most for
    /// `limit`. An editor may lay out a large page in the background long after it has shown its beginning.
    void waitUntilIdle(std::chrono::seconds limit);

private:
    /// The processor time used so far, in clock ticks.
    long usedTicks() const;

    pid_t process_;
    bool isRunning_ = true;
};

} // namespace corvanta
