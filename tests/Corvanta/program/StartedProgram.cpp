#include "StartedProgram.hpp"

#include "Support/gtk/MainLoop.hpp"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <system_error>

namespace corvanta {

StartedProgram::StartedProgram(const std::filesystem::path& state, const std::vector<std::string>& arguments,
                               const std::vector<std::string>& environment) {
    std::vector<std::string> words{"env", "XDG_STATE_HOME=" + state.string()};
    words.insert(words.end(), environment.begin(), environment.end());
    words.emplace_back(CORVANTA_PROGRAM);
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const int error = ::posix_spawnp(&process_, "env", nullptr, nullptr, pointers.data(), environ);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "env");
}

StartedProgram::~StartedProgram() {
    if (process_ != -1)
        end(SIGKILL);
}

int StartedProgram::end(int signal) {
    ::kill(process_, signal);
    return wait();
}

int StartedProgram::wait() {
    int status = 0;
    const bool hasEnded = waitUntil([&] { return ::waitpid(process_, &status, WNOHANG) != 0; });
    if (!hasEnded) {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, &status, 0);
    }
    process_ = -1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace corvanta
