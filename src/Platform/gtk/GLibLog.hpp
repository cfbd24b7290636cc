#pragma once

#include "Platform/Log.hpp"

#include <string>

namespace corvanta {

/// The desktop's structured log: the subsystem and the category are fields of their own.
class GLibLog final : public Log {
public:
    /// `subsystem` is the application's identifier.
    explicit GLibLog(std::string subsystem) : subsystem_(std::move(subsystem)) {}

    void write(Level level, std::string_view category, const std::string& message) override;

private:
    std::string subsystem_;
};

} // namespace corvanta
