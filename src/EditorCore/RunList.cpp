#include "EditorCore/RunList.hpp"

#include <algorithm>

namespace corvanta {

SyntaxSpan RunList::fromStart(const RunFromEnd& run) const {
    return {{textLength_ - run.distance, run.length}, run.token};
}

RunList::RunFromEnd RunList::fromEnd(const SyntaxSpan& run) const {
    return {textLength_ - run.range.location, run.range.length, run.token};
}

void RunList::moveGap(std::int64_t location) {
    while (!before_.empty() && before_.back().range.location >= location) {
        behind_.push_back(fromEnd(before_.back()));
        before_.pop_back();
    }
    while (!behind_.empty() && textLength_ - behind_.back().distance < location) {
        before_.push_back(fromStart(behind_.back()));
        behind_.pop_back();
    }
}

void RunList::didInsert(std::int64_t location, std::int64_t length) {
    moveGap(location);
    if (!before_.empty() && before_.back().range.end() > location)
        before_.back().range.length += length;
    textLength_ += length;
}

void RunList::didErase(TextRange range) {
    moveGap(range.location);
    if (!before_.empty() && before_.back().range.end() > range.end())
        before_.back().range.length -= range.length;
    else
        clear(range);
    textLength_ -= range.length;
}

void RunList::clear(TextRange range) {
    moveGap(range.location);
    if (!before_.empty() && before_.back().range.end() > range.location) {
        SyntaxSpan& cut = before_.back();
        const std::int64_t rest = cut.range.end() - range.end();
        cut.range.length = range.location - cut.range.location;
        if (rest > 0)
            behind_.push_back(fromEnd({{range.end(), rest}, cut.token}));
    }
    while (!behind_.empty()) {
        const SyntaxSpan run = fromStart(behind_.back());
        if (run.range.location >= range.end())
            break;
        behind_.pop_back();
        if (run.range.end() > range.end())
            behind_.push_back(fromEnd({{range.end(), run.range.end() - range.end()}, run.token}));
    }
}

void RunList::add(const SyntaxSpan& run) {
    moveGap(run.range.location);
    before_.push_back(run);
}

std::vector<SyntaxSpan> RunList::overlapping(TextRange range) const {
    std::vector<SyntaxSpan> runs;
    auto before = std::partition_point(before_.begin(), before_.end(), [&](const SyntaxSpan& run) {
        return run.range.end() <= range.location;
    });
    for (; before != before_.end() && before->range.location < range.end(); ++before)
        runs.push_back(*before);

    auto behind = std::partition_point(behind_.rbegin(), behind_.rend(), [&](const RunFromEnd& run) {
        return fromStart(run).range.end() <= range.location;
    });
    for (; behind != behind_.rend() && fromStart(*behind).range.location < range.end(); ++behind)
        runs.push_back(fromStart(*behind));
    return runs;
}

} // namespace corvanta
