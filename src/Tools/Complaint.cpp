#include "Tools/Complaint.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace corvanta {

void complain(std::string_view message) {
    std::string line(message);
    std::ranges::replace_if(
        line, [](char character) { return static_cast<unsigned char>(character) < ' '; }, '?');
    fmt::print(stderr, "corvanta-text: {}\n", line);
}

} // namespace corvanta
