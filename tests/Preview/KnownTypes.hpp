#pragma once

#include "Preview/TypeRegistry.hpp"

#include <map>

namespace corvanta {

/// A desktop that knows only the types that a test tells it.
class KnownTypes final : public TypeRegistry {
public:
    std::optional<std::string> mimeType(std::string_view extension) const override {
        const auto type = types.find(extension);
        return type == types.end() ? std::nullopt : std::optional(type->second);
    }

    std::map<std::string, std::string, std::less<>> types;
};

} // namespace corvanta
