#pragma once

namespace corvanta {

/// How the program ends when it does not end with 0.
struct ExitStatus {
    ExitStatus() = delete;

    /// Something could not be read or written, or a question was answered with no.
    static constexpr int failure = 1;

    /// The program was called wrongly or given input that is not what it reads.
    static constexpr int wrongCall = 2;
};

} // namespace corvanta
