#include "EditorCore/HTMLFormatter.hpp"
#include "RealPieces.hpp"

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

constexpr std::int64_t smallestPage = 2'000;
constexpr std::int64_t largestPage = 10'000'000;

void BM_FormatRealPages(benchmark::State& state) {
    RealPieces pieces(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(HTMLFormatter::format(pieces.next()));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

/// Text that is made to hurt: a start, and a part that is repeated to the wanted size and never closed.
/// Of the blocks that are never closed the formatter gives up the larger ones, whose result would be tabs.
struct Hostile {
    std::string_view start;
    std::string_view part;
};

constexpr std::array hostileTexts{Hostile{"", "<"},
                                  Hostile{"", "<b>"},
                                  Hostile{"<p>", "<b>x"},
                                  Hostile{"", "<b>x  "},
                                  Hostile{"", "<p>x"},
                                  Hostile{"", "<div>"},
                                  Hostile{"", "</p>"},
                                  Hostile{"<b><b><b>", "</i>"},
                                  Hostile{"", "<a "},
                                  Hostile{"", "<a \""},
                                  Hostile{"", "<a \"'"},
                                  Hostile{"", "</"},
                                  Hostile{"", "</script <script "},
                                  Hostile{"<b>", "<script></script "},
                                  Hostile{"<script>", "{\n}\n"},
                                  Hostile{"<script>", "'\\"},
                                  Hostile{"", "<?"},
                                  Hostile{"", "<!--"},
                                  Hostile{"<!--", "-"},
                                  Hostile{"", "\n \n"},
                                  Hostile{"", "ä <ü></ü>"}};

/// The time for a byte should not depend on the size.
void BM_FormatHostileText(benchmark::State& state) {
    const Hostile& hostile = hostileTexts[static_cast<std::size_t>(state.range(0))];
    std::string text(hostile.start);
    while (text.size() < static_cast<std::size_t>(state.range(1)))
        text += hostile.part;
    state.SetLabel(std::string(hostile.start) + " " + std::string(hostile.part));
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(HTMLFormatter::format(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK(BM_FormatRealPages)
    ->Arg(smallestPage)
    ->Arg(20'000)
    ->Arg(100'000)
    ->Arg(400'000)
    ->Arg(1'000'000)
    ->Arg(4'000'000)
    ->Arg(largestPage);
BENCHMARK(BM_FormatHostileText)
    ->ArgsProduct({benchmark::CreateDenseRange(0, static_cast<std::int64_t>(hostileTexts.size()) - 1, 1),
                   {100'000, largestPage}});

} // namespace

} // namespace corvanta
