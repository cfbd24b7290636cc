#include "EditorCore/SyntaxTokenizer.hpp"
#include "RealPages.hpp"
#include "RealPieces.hpp"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

namespace {

constexpr std::int64_t smallestPage = 2'000;
constexpr std::int64_t largestPage = 10'000'000;

void tokenize(std::string_view text) {
    SyntaxTokenizer::tokenize(
        text, [](std::span<const SyntaxSpan> spans) { benchmark::DoNotOptimize(spans.data()); });
}

void setBytesProcessed(benchmark::State& state, std::int64_t bytes) {
    state.SetBytesProcessed(state.iterations() * bytes);
}

void BM_TokenizeRealPages(benchmark::State& state) {
    RealPieces pieces(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state)
        tokenize(pieces.next());
    setBytesProcessed(state, state.range(0));
}

/// As the editor does it when it opens a page: the list is a new one.
void list(benchmark::State& state, const std::string& text) {
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(SyntaxTokenizer::tokenize(text));
    setBytesProcessed(state, static_cast<std::int64_t>(text.size()));
}

/// What the memory of that list alone takes.
void copyList(benchmark::State& state, const std::string& text) {
    const auto spans = SyntaxTokenizer::tokenize(text);
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<SyntaxSpan> copy = spans;
        benchmark::DoNotOptimize(copy.data());
    }
    setBytesProcessed(state, static_cast<std::int64_t>(text.size()));
}

void BM_ListRealPages(benchmark::State& state) {
    list(state, RealPages::text(largestPage));
}

void BM_CopyListOfRealPages(benchmark::State& state) {
    copyList(state, RealPages::text(largestPage));
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
    const std::string text = hostileText(state);
    for ([[maybe_unused]] auto iteration : state)
        tokenize(text);
    setBytesProcessed(state, static_cast<std::int64_t>(text.size()));
}

void BM_ListHostileText(benchmark::State& state) {
    list(state, hostileText(state));
}

void BM_CopyListOfHostileText(benchmark::State& state) {
    copyList(state, hostileText(state));
}

/// Lists of these are about ten times as large as the text.
void densestTexts(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgsProduct({{1, 8, 9}, {largestPage}});
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
BENCHMARK(BM_ListRealPages);
BENCHMARK(BM_CopyListOfRealPages);
BENCHMARK(BM_ListHostileText)->Apply(densestTexts);
BENCHMARK(BM_CopyListOfHostileText)->Apply(densestTexts);

} // namespace

} // namespace corvanta
