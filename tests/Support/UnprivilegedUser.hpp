#pragma once

#include <grp.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace corvanta {

/// Permissions mean nothing to root, so a test about them that root runs becomes "nobody" as long as this
/// lives. For anybody else it does nothing.
class UnprivilegedUser {
public:
    /// `folder` will belong to the user that the test becomes.
    explicit UnprivilegedUser(const std::filesystem::path& folder) : wasRoot_(::geteuid() == 0) {
        if (!wasRoot_)
            return;
        if (::chown(folder.c_str(), nobody, nobody) != 0 || ::setgroups(0, nullptr) != 0 ||
            ::setegid(nobody) != 0 || ::seteuid(nobody) != 0)
            throw std::runtime_error("cannot become nobody");
    }
    UnprivilegedUser(const UnprivilegedUser&) = delete;
    UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;
    ~UnprivilegedUser() {
        if (wasRoot_ && (::seteuid(0) != 0 || ::setegid(0) != 0))
            std::abort();
    }

private:
    static constexpr uid_t nobody = 65534;

    bool wasRoot_;
};

} // namespace corvanta
