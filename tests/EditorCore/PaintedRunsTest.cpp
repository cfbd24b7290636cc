#include "EditorCore/PaintedRuns.hpp"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace corvanta {
namespace {

constexpr TextRange everything{0, 1'000'000};

SyntaxSpan span(std::int64_t location, std::int64_t length, SyntaxToken token = SyntaxToken::tag) {
    return {{location, length}, token};
}

using Spans = std::vector<SyntaxSpan>;

TEST(PaintedRuns, ShowNothingAtFirst) {
    const PaintedRuns painted;
    EXPECT_EQ(painted.staleRange(everything, {}), std::nullopt);
    EXPECT_EQ(painted.staleRange(everything, Spans{span(3, 4)}), (TextRange{3, 4}));
}

TEST(PaintedRuns, AreNotStaleAfterPainting) {
    PaintedRuns painted;
    const Spans wanted{span(0, 4), span(6, 2, SyntaxToken::string)};
    painted.didPaint(everything, wanted);
    EXPECT_EQ(painted.staleRange(everything, wanted), std::nullopt);
}

TEST(PaintedRuns, AreStaleOnlyInsideThePaintedRange) {
    PaintedRuns painted;
    const Spans wanted{span(0, 4), span(6, 10)};
    painted.didPaint({0, 8}, wanted);
    EXPECT_EQ(painted.staleRange({0, 8}, wanted), std::nullopt);
    EXPECT_EQ(painted.staleRange(everything, wanted), (TextRange{8, 8}));
}

TEST(PaintedRuns, TakeAdjoiningRunsOfOneKindForOne) {
    PaintedRuns painted;
    painted.didPaint(everything, Spans{span(0, 4), span(4, 1)});
    EXPECT_EQ(painted.staleRange(everything, Spans{span(0, 5)}), std::nullopt);
}

TEST(PaintedRuns, MoveWithTheTextBehindAnInsertion) {
    PaintedRuns painted;
    painted.didPaint(everything, Spans{span(10, 4)});
    painted.didInsert(2, 5);
    EXPECT_EQ(painted.staleRange(everything, Spans{span(15, 4)}), std::nullopt);
}

TEST(PaintedRuns, GrowByTextTypedIntoThem) {
    PaintedRuns painted;
    painted.didPaint(everything, Spans{span(10, 100, SyntaxToken::comment)});
    painted.didInsert(50, 1);
    EXPECT_EQ(painted.staleRange(everything, Spans{span(10, 101, SyntaxToken::comment)}), std::nullopt);
}

TEST(PaintedRuns, DoNotKnowTheColourOfTextTypedBetweenTwo) {
    PaintedRuns painted;
    const Spans wanted{span(10, 4), span(14, 4, SyntaxToken::string)};
    painted.didPaint(everything, wanted);
    painted.didInsert(14, 1);
    EXPECT_EQ(painted.staleRange(everything, Spans{span(10, 4), span(14, 5, SyntaxToken::string)}),
              (TextRange{14, 1}));
}

TEST(PaintedRuns, OfOneColourAreOneWhenTheTextBetweenThemIsErased) {
    PaintedRuns painted;
    painted.didPaint(everything, Spans{span(10, 4), span(20, 4)});
    painted.didErase({14, 6});
    painted.didInsert(14, 1);
    EXPECT_EQ(painted.staleRange(everything, Spans{span(10, 9)}), std::nullopt);
}

TEST(PaintedRuns, DoNotKnowTheColourOfTextTypedBesideARun) {
    PaintedRuns painted;
    painted.didPaint(everything, Spans{span(10, 4)});
    painted.didInsert(14, 1);
    EXPECT_EQ(painted.staleRange(everything, Spans{span(10, 4)}), (TextRange{14, 1}));
}

TEST(PaintedRuns, ShrinkWhenTextIsErased) {
    PaintedRuns painted;
    painted.didPaint(everything, Spans{span(10, 4), span(20, 4)});
    painted.didErase({12, 10});
    EXPECT_EQ(painted.staleRange(everything, Spans{span(10, 2), span(12, 2)}), std::nullopt);
}

TEST(PaintedRuns, OfErasedTextAreGone) {
    PaintedRuns painted;
    painted.didPaint(everything, Spans{span(10, 4)});
    painted.didErase({0, 50});
    EXPECT_EQ(painted.staleRange(everything, {}), std::nullopt);
}

/// The same by hand: the colour that every unit shows, 0 for none, -1 for unknown.
class PaintedRunsAgainstUnits : public testing::TestWithParam<unsigned> {};

TEST_P(PaintedRunsAgainstUnits, FindTheSmallestStaleRangeThroughRandomEdits) {
    std::mt19937 random(GetParam());
    const auto below = [&](std::int64_t limit) {
        return static_cast<std::int64_t>(random() % static_cast<unsigned>(limit));
    };
    PaintedRuns painted;
    std::vector<int> units(40, 0);

    for (int step = 0; step < 200; ++step) {
        const auto size = static_cast<std::int64_t>(units.size());
        const std::int64_t location = below(size);
        const std::int64_t length = below(std::min<std::int64_t>(size - location, 12)) + 1;
        const TextRange range{location, length};
        switch (random() % 3) {
        case 0: {
            const int before = location > 0 ? units[static_cast<std::size_t>(location) - 1] : 0;
            const int behind = units[static_cast<std::size_t>(location)];
            units.insert(units.begin() + location, static_cast<std::size_t>(length),
                         before == behind ? before : -1);
            painted.didInsert(location, length);
            break;
        }
        case 1:
            units.erase(units.begin() + location, units.begin() + location + length);
            painted.didErase(range);
            break;
        default: {
            Spans wanted;
            for (std::int64_t at = below(5); at < size; at += below(6) + 1) {
                wanted.push_back(span(at, 1 + below(4), static_cast<SyntaxToken>(random() % 3)));
                at = wanted.back().range.end() + below(2);
            }
            std::vector<int> meant(units.size(), 0);
            for (const SyntaxSpan& each : wanted)
                for (std::int64_t at = each.range.location; at < std::min(each.range.end(), size); ++at)
                    meant[static_cast<std::size_t>(at)] = static_cast<int>(each.token) + 1;

            std::optional<TextRange> stale;
            for (std::int64_t at = location; at < location + length; ++at)
                if (units[static_cast<std::size_t>(at)] != meant[static_cast<std::size_t>(at)])
                    stale = stale ? TextRange{stale->location, at + 1 - stale->location} : TextRange{at, 1};
            ASSERT_EQ(painted.staleRange(range, wanted), stale) << "step " << step;

            painted.didPaint(range, wanted);
            std::copy_n(meant.begin() + location, length, units.begin() + location);
            break;
        }
        }
        while (units.size() < 40) {
            painted.didInsert(0, 1);
            units.insert(units.begin(), units.front() != 0 ? -1 : 0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PaintedRunsAgainstUnits, testing::Range(1U, 41U));

} // namespace
} // namespace corvanta
