#pragma once

#include "Platform/FileOperations.hpp"
#include "Platform/MainQueue.hpp"

#include <filesystem>
#include <memory>

namespace corvanta {

/// Counts starts that died young, so that what killed them (a page in the preview, a restored text) is left
/// alone once.
class StartGuard {
public:
    /// A start that lived this long has succeeded.
    static constexpr MainQueue::Duration youth{5'000};
    static constexpr int toleratedDeaths = 2;

    /// Counts this start in `file`. Made before anything that could go wrong. The arguments outlive the
    /// guard.
    StartGuard(FileOperations& operations, MainQueue& mainQueue, std::filesystem::path file);

    /// Whether the last starts died so often that this one should do without preview and restore nothing, and
    /// say so.
    bool isCautious() const { return deaths_ >= toleratedDeaths; }

    /// The program ends in good order.
    void endWell();

private:
    int read() const;
    void write(int deaths) const;

    FileOperations& operations_;
    const std::filesystem::path file_;
    int deaths_;
    std::unique_ptr<MainQueue::Handle> growingUp_;
};

} // namespace corvanta
