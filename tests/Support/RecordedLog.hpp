#pragma once

#include "Platform/Log.hpp"

#include <string>
#include <vector>

namespace corvanta {

/// Keeps what was logged, one "category: message" a line.
class RecordedLog final : public Log {
public:
    void write(Level, std::string_view category, const std::string& message) override {
        lines.push_back(std::string(category) + ": " + message);
    }

    std::vector<std::string> lines;
};

} // namespace corvanta
