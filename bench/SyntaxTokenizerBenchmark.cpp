#include "EditorCore/SyntaxTokenizer.hpp"
#include "RealPages.hpp"

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

constexpr std::int64_t smallestPage = 2'000;
constexpr std::int64_t largestPage = 10'000'000;

/// As the editor does it: every list is a new one.
void tokenize(benchmark::State& state, const std::string& text) {
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(SyntaxTokenizer::tokenize(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

/// The scan without the cost of fresh memory, to tell the two apart.
void tokenizeIntoOneList(benchmark::State& state, const std::string& text) {
    std::vector<SyntaxSpan> spans;
    for ([[maybe_unused]] auto iteration : state) {
        SyntaxTokenizer::tokenize(text, spans);
        benchmark::DoNotOptimize(spans.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void BM_TokenizeRealPages(benchmark::State& state) {
    tokenize(state, RealPages::text(static_cast<std::size_t>(state.range(0))));
}

/// Text that is made to hurt: a start, and a part that is repeated to the wanted size and never closed.
struct Hostile {
    std::string_view start;
    std::string_view part;
};

constexpr std::array hostileTexts{
    Hostile{"", "<"},          Hostile{"", "<div>"},      Hostile{"", "<a b=\""},
    Hostile{"", "<!"},         Hostile{"", "<!--"},       Hostile{"<!--", "-"},
    Hostile{"<!--", ">"},      Hostile{"", "<?php "},     Hostile{"<?php ", "$a"},
    Hostile{"<script>", "1 "}, Hostile{"<script>", "/*"}, Hostile{"<script>", "'\\"},
    Hostile{"<style>", "a "},  Hostile{"", "ä<b>"},       Hostile{"", "</"}};

std::string hostileText(benchmark::State& state) {
    const Hostile& hostile = hostileTexts[static_cast<std::size_t>(state.range(0))];
    std::string text(hostile.start);
    while (text.size() < static_cast<std::size_t>(state.range(1)))
        text += hostile.part;
    state.SetLabel(std::string(hostile.start) + " " + std::string(hostile.part));
    return text;
}

/// The time for a byte should not depend on the size.
void BM_TokenizeHostileText(benchmark::State& state) {
    tokenize(state, hostileText(state));
}
void BM_TokenizeHostileTextIntoOneList(benchmark::State& state) {
    tokenizeIntoOneList(state, hostileText(state));
}

BENCHMARK(BM_TokenizeRealPages)
    ->Arg(smallestPage)
    ->Arg(20'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Arg(4'000'000)
    ->Arg(largestPage);
BENCHMARK(BM_TokenizeHostileText)
    ->ArgsProduct({benchmark::CreateDenseRange(0, static_cast<std::int64_t>(hostileTexts.size()) - 1, 1),
                   {100'000, largestPage}});
BENCHMARK(BM_TokenizeHostileTextIntoOneList)
    ->ArgsProduct({benchmark::CreateDenseRange(0, static_cast<std::int64_t>(hostileTexts.size()) - 1, 1),
                   {100'000, largestPage}});

} // namespace

} // namespace corvanta
