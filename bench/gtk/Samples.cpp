#include "Samples.hpp"

#include <algorithm>
#include <cmath>

namespace corvanta {

void Samples::add(double milliseconds) {
    sorted_.insert(std::upper_bound(sorted_.begin(), sorted_.end(), milliseconds), milliseconds);
}

double Samples::percentile(double share) const {
    if (sorted_.empty())
        return 0;
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(sorted_.size())));
    return sorted_[std::max<std::size_t>(rank, 1) - 1];
}

} // namespace corvanta
