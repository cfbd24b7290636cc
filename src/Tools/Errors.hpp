#pragma once

#include <stdexcept>

namespace corvanta {

/// The program was called wrongly. The message is shown on one line; exit status 2.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The call was right but could not be carried out. The message is shown on one line; exit status 1.
class Failure : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace corvanta
