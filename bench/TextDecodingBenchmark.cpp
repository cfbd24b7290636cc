#include "EditorCore/TextDecoding.hpp"
#include "RealPages.hpp"

#include <benchmark/benchmark.h>

#include <string>

namespace corvanta {

namespace {

void decode(benchmark::State& state, const std::string& bytes) {
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(TextDecoding::string(bytes));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

std::string repeated(std::string_view part, std::int64_t size) {
    std::string text;
    while (text.size() < static_cast<std::size_t>(size))
        text += part;
    return text;
}

void BM_DecodeRealPages(benchmark::State& state) {
    decode(state, RealPages::text(static_cast<std::size_t>(state.range(0))));
}

void BM_DecodeASCII(benchmark::State& state) {
    decode(state, repeated("plain ASCII text\n", state.range(0)));
}

void BM_DecodeGermanUtf8(benchmark::State& state) {
    decode(state, repeated("Die Größe der Straße überrascht.\n", state.range(0)));
}

void BM_DecodeGermanWindows1252(benchmark::State& state) {
    decode(state, repeated("Die Gr\xF6\xDF"
                           "e der Stra\xDF"
                           "e \xFC"
                           "berrascht.\n",
                           state.range(0)));
}

void BM_DecodeChineseUtf8(benchmark::State& state) {
    decode(state, repeated("漢字", state.range(0)));
}

constexpr std::int64_t small = 100'000;
constexpr std::int64_t large = 10'000'000;

BENCHMARK(BM_DecodeRealPages)->Arg(2'000)->Arg(small)->Arg(large);
BENCHMARK(BM_DecodeASCII)->Arg(small)->Arg(large);
BENCHMARK(BM_DecodeGermanUtf8)->Arg(small)->Arg(large);
BENCHMARK(BM_DecodeGermanWindows1252)->Arg(small)->Arg(large);
BENCHMARK(BM_DecodeChineseUtf8)->Arg(small)->Arg(large);

} // namespace

} // namespace corvanta
