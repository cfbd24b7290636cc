#include "EditorCore/IndentationEngine.hpp"
#include "RealPieces.hpp"

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

void BM_IndentInRealPages(benchmark::State& state) {
    RealPieces pieces(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(IndentationEngine::indentForNewLine(pieces.next()));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

/// Text that is made to hurt: a start, and a part that is repeated to the wanted size.
struct Hostile {
    std::string_view start;
    std::string_view part;
};

constexpr std::array hostileTexts{Hostile{"", "<"},           Hostile{"", "<div>"},
                                  Hostile{"", "<!-->"},       Hostile{"", "<!--\n"},
                                  Hostile{"", "<a b=\""},     Hostile{"", "<ü>"},
                                  Hostile{"", "</"},          Hostile{"", "<?= ?>"},
                                  Hostile{"<script>", "/*"},  Hostile{"<script>", "/**/"},
                                  Hostile{"<script>", "'\\"}, Hostile{"<script>", "{"},
                                  Hostile{"<style>", "//"},   Hostile{"<?php ", "?"}};

/// The time for a byte should not depend on the size.
void BM_IndentInHostileText(benchmark::State& state) {
    const Hostile& hostile = hostileTexts[static_cast<std::size_t>(state.range(0))];
    std::string text(hostile.start);
    while (text.size() < static_cast<std::size_t>(state.range(1)))
        text += hostile.part;
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(IndentationEngine::indentForNewLine(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetLabel(std::string(hostile.start) + " " + std::string(hostile.part));
}

BENCHMARK(BM_IndentInRealPages)->Arg(2'000)->Arg(100'000)->Arg(1'000'000)->Arg(10'000'000);
BENCHMARK(BM_IndentInHostileText)
    ->ArgsProduct({benchmark::CreateDenseRange(0, static_cast<std::int64_t>(hostileTexts.size()) - 1, 1),
                   {100'000, 10'000'000}});

} // namespace

} // namespace corvanta
