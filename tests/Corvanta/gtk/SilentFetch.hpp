#pragma once

#include "Settings/HttpFetch.hpp"

#include <functional>
#include <memory>

namespace corvanta {

/// A network that answers nothing.
class SilentFetch final : public HttpFetch {
public:
    std::unique_ptr<Handle> get(const Request&, std::function<void(const Answer&)>) override {
        ++fetches;
        return std::make_unique<Handle>();
    }
    int fetches = 0;
};

} // namespace corvanta
