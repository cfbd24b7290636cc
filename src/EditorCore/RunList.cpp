#include "EditorCore/RunList.hpp"

#include <algorithm>

namespace corvanta {

void RunList::pushBefore(const SyntaxSpan& run) {
    before_.push_back({static_cast<std::uint32_t>(run.range.location),
                       static_cast<std::uint32_t>(run.range.length), run.token});
}

void RunList::pushBehind(const SyntaxSpan& run) {
    behind_.push_back({static_cast<std::uint32_t>(textLength_ - run.range.location),
                       static_cast<std::uint32_t>(run.range.length), run.token});
}

void RunList::moveGap(std::int64_t location) {
    while (!before_.empty() && before_.back().place >= location) {
        pushBehind(fromStart(before_.back()));
        before_.pop_back();
    }
    while (!behind_.empty() && textLength_ - behind_.back().place < location) {
        pushBefore(fromEnd(behind_.back()));
        behind_.pop_back();
    }
}

void RunList::didInsert(std::int64_t location, std::int64_t length) {
    moveGap(location);
    if (!before_.empty() && fromStart(before_.back()).range.end() > location)
        before_.back().length += static_cast<std::uint32_t>(length);
    textLength_ += length;
}

void RunList::didErase(TextRange range) {
    moveGap(range.location);
    if (!before_.empty() && fromStart(before_.back()).range.end() > range.end())
        before_.back().length -= static_cast<std::uint32_t>(range.length);
    else
        clear(range);
    textLength_ -= range.length;
}

void RunList::clear(TextRange range) {
    moveGap(range.location);
    if (!before_.empty()) {
        const SyntaxSpan cut = fromStart(before_.back());
        if (cut.range.end() > range.location) {
            before_.back().length = static_cast<std::uint32_t>(range.location - cut.range.location);
            if (cut.range.end() > range.end())
                pushBehind({{range.end(), cut.range.end() - range.end()}, cut.token});
        }
    }
    while (!behind_.empty()) {
        const SyntaxSpan run = fromEnd(behind_.back());
        if (run.range.location >= range.end())
            break;
        behind_.pop_back();
        if (run.range.end() > range.end())
            pushBehind({{range.end(), run.range.end() - range.end()}, run.token});
    }
}

void RunList::add(const SyntaxSpan& run) {
    moveGap(run.range.location);
    pushBefore(run);
}

std::vector<SyntaxSpan> RunList::overlapping(TextRange range) const {
    std::vector<SyntaxSpan> runs;
    auto before = std::partition_point(before_.begin(), before_.end(), [&](const Run& run) {
        return fromStart(run).range.end() <= range.location;
    });
    for (; before != before_.end() && before->place < range.end(); ++before)
        runs.push_back(fromStart(*before));

    auto behind = std::partition_point(behind_.rbegin(), behind_.rend(), [&](const Run& run) {
        return fromEnd(run).range.end() <= range.location;
    });
    for (; behind != behind_.rend() && fromEnd(*behind).range.location < range.end(); ++behind)
        runs.push_back(fromEnd(*behind));
    return runs;
}

} // namespace corvanta
