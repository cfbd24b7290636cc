#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// What the desktop knows about file types.
class TypeRegistry {
public:
    TypeRegistry() = default;
    TypeRegistry(const TypeRegistry&) = delete;
    TypeRegistry& operator=(const TypeRegistry&) = delete;
    virtual ~TypeRegistry() = default;

    /// The preferred MIME type of files with this extension (lower case, without the dot), or nothing.
    virtual std::optional<std::string> mimeType(std::string_view extension) const = 0;
};

} // namespace corvanta
