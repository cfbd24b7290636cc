#include "Corvanta/gtk/CommandLine.hpp"
#include "Corvanta/gtk/CorvantaApp.hpp"

#include <algorithm>
#include <string>
#include <vector>

int main(int argc, char* argv[]) {
    const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    if (const auto status = corvanta::CommandLine::answer(words))
        return *status;
    return corvanta::CorvantaApp().run(argc, argv);
}
