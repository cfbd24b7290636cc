#include "ChildProcess.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace corvanta {

namespace {

constexpr int deadlineInMilliseconds = 10'000;

/// Both ends, closed in every program that is started.
std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    return ends;
}

[[noreturn]] void becomeProgram(const std::vector<std::string>& words, int input, int output, int errors) {
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str())); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    arguments.push_back(nullptr);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}

bool waitForInput(int descriptor) {
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, deadlineInMilliseconds) > 0;
}

/// Moves what comes out of `source` to the end of `text`, and gives the descriptor up at its end.
void receive(pollfd& source, std::string& text) {
    std::array<char, 65536> buffer{};
    const ssize_t count = ::read(source.fd, buffer.data(), buffer.size());
    if (count > 0)
        text.append(buffer.data(), static_cast<std::size_t>(count));
    else
        source.fd = -1;
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& words) {
    // A program that ends before it has read everything must not end the test.
    ::signal(SIGPIPE, SIG_IGN);
    const std::array<int, 2> input = makePipe();
    const std::array<int, 2> output = makePipe();
    const std::array<int, 2> errors = makePipe();
    process_ = ::fork();
    if (process_ < 0)
        throw std::runtime_error("no process");
    if (process_ == 0) {
        ::signal(SIGPIPE, SIG_DFL);
        becomeProgram(words, input[0], output[1], errors[1]);
    }
    ::close(input[0]);
    ::close(output[1]);
    ::close(errors[1]);
    input_ = input[1];
    output_ = output[0];
    errors_ = errors[0];
}

ChildProcess::~ChildProcess() {
    closeInput();
    ::close(output_);
    ::close(errors_);
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }
}

void ChildProcess::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(input_, text.data(), text.size());
        if (count <= 0)
            return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string ChildProcess::readLine() {
    std::string line;
    char character = 0;
    while (!line.ends_with('\n') && waitForInput(output_) && ::read(output_, &character, 1) == 1)
        line += character;
    return line;
}

ProgramResult ChildProcess::finish(std::string_view input) {
    // Written and read by turns: a program that waits for its output to be read would read no more input.
    ::fcntl(input_, F_SETFL, O_NONBLOCK);
    ProgramResult result;
    std::array<pollfd, 3> waiting{{{output_, POLLIN, 0}, {errors_, POLLIN, 0}, {input_, POLLOUT, 0}}};
    auto& [output, errors, target] = waiting;
    while (output.fd >= 0 || errors.fd >= 0) {
        if (input.empty()) {
            closeInput();
            target.fd = -1;
        }
        if (::poll(waiting.data(), waiting.size(), deadlineInMilliseconds) <= 0)
            break;
        if (target.fd >= 0 && target.revents != 0) {
            const ssize_t count = ::write(target.fd, input.data(), input.size());
            input = count > 0 ? input.substr(static_cast<std::size_t>(count)) : std::string_view();
        }
        if (output.fd >= 0 && output.revents != 0)
            receive(output, result.output);
        if (errors.fd >= 0 && errors.revents != 0)
            receive(errors, result.errors);
    }
    closeInput();
    int status = 0;
    ::waitpid(process_, &status, 0);
    process_ = -1;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
}

void ChildProcess::closeInput() {
    if (input_ >= 0)
        ::close(input_);
    input_ = -1;
}

ProgramResult runProgram(const std::vector<std::string>& words, std::string_view input) {
    ChildProcess program(words);
    return program.finish(input);
}

ProgramResult runTool(std::vector<std::string> words, std::string_view input) {
    words.insert(words.begin(), CORVANTA_TEXT);
    return runProgram(words, input);
}

ProgramResult runToolInShell(const std::string& line) {
    return runProgram({"/bin/sh", "-c", "exec \"$0\" " + line, CORVANTA_TEXT});
}

} // namespace corvanta
