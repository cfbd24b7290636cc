#pragma once

#include <cstddef>
#include <vector>

namespace corvanta {

/// Durations in milliseconds and what is told about them.
class Samples {
public:
    void add(double milliseconds);

    std::size_t count() const { return sorted_.size(); }

    /// The smallest sample that is not exceeded by `share` (0 to 1) of all; 0 without a sample.
    double percentile(double share) const;
    double median() const { return percentile(0.5); }
    double maximum() const { return percentile(1); }

private:
    std::vector<double> sorted_;
};

} // namespace corvanta
