#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace corvanta {

/// Compares versions as people write them: numbers with dots between them, "1.10" or "2.0-beta".
struct VersionNumber {
    VersionNumber() = delete;

    /// Whether version `a` is newer than `b`. Numbers that one of them lacks count as 0, so "1.2" and "1.2.0"
    /// are the same version.
    static bool isNewer(std::string_view a, std::string_view b);

    /// The number at the start of each piece between the dots of `version` (UTF-8); pieces without a
    /// character are left out. A piece that starts with none, or with one too large for 64 bits or not
    /// written in the digits 0 to 9 throughout, gives 0.
    static std::vector<std::int64_t> parts(std::string_view version);
};

} // namespace corvanta
