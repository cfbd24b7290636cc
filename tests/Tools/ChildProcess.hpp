#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// What a program that has ended left behind.
struct ProgramResult {
    std::string output;
    std::string errors;

    /// The exit status, or 128 and the number of the signal that ended the program.
    int status = -1;
};

/// A running program whose standard input and output are pipes to the test.
class ChildProcess {
public:
    /// `words` begin with the program, which is looked up like a shell does.
    explicit ChildProcess(const std::vector<std::string>& words);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Ends the program if it still runs.
    ~ChildProcess();

    void write(std::string_view text);

    /// The next line of the output with its line feed, or less when the program ended or took longer than ten
    /// seconds.
    std::string readLine();

    /// Writes `input`, closes the program's input, waits for its end and answers everything that was not read
    /// before.
    ProgramResult finish(std::string_view input = "");

private:
    void closeInput();

    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    int errors_ = -1;
};

/// Runs a program with `input` to its end.
ProgramResult runProgram(const std::vector<std::string>& words, std::string_view input = "");

/// Runs corvanta-text.
ProgramResult runTool(std::vector<std::string> words, std::string_view input = "");

/// Runs corvanta-text as a shell does: `line` is what stands behind the program's name.
ProgramResult runToolInShell(const std::string& line);

} // namespace corvanta
