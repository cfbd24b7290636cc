#include "StartedProgram.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>
#include <system_error>
#include <thread>
#include <utility>

namespace corvanta {

StartedProgram::StartedProgram(std::vector<std::string> command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);

    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int error =
        ::posix_spawnp(&process_, arguments[0], &actions, &attributes, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::posix_spawnattr_destroy(&attributes);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), command[0]);
}

StartedProgram::~StartedProgram() {
    using namespace std::chrono_literals;
    ::kill(-process_, SIGTERM);
    for (int tries = 0; isRunning() && tries < 100; ++tries)
        std::this_thread::sleep_for(20ms);
    ::kill(-process_, SIGKILL);
    if (isRunning_)
        ::waitpid(process_, nullptr, 0);
}

bool StartedProgram::isRunning() {
    if (isRunning_ && ::waitpid(process_, nullptr, WNOHANG) == process_)
        isRunning_ = false;
    return isRunning_;
}

void StartedProgram::waitUntilIdle(std::chrono::seconds limit) {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + limit;
    // A tenth of a second in a second counts as nothing; a tick is a hundredth.
    constexpr long hardlyAny = 10;
    long before = 0;
    long now = usedTicks();
    do {
        std::this_thread::sleep_for(1s);
        before = std::exchange(now, usedTicks());
    } while (now - before > hardlyAny && std::chrono::steady_clock::now() < end);
}

long StartedProgram::usedTicks() const {
    std::ifstream file("/proc/" + std::to_string(process_) + "/stat");
    std::string text;
    std::getline(file, text);
    // The program's name comes second, in brackets, and may hold anything; 11 fields later come user and
    // system time.
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    std::string skipped;
    for (int field = 0; field < 11; ++field)
        fields >> skipped;
    long user = 0;
    long system = 0;
    fields >> user >> system;
    return user + system;
}

} // namespace corvanta
