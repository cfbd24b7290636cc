#include "EditorCore/PreviewEditMerge.hpp"
#include "RealPages.hpp"
#include "RealPieces.hpp"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

namespace {

constexpr std::size_t small = 100'000;
constexpr std::size_t large = 1'000'000;
constexpr std::size_t largest = 10'000'000;

void merge(benchmark::State& state, std::string_view before, std::string_view after, std::int64_t occurrence,
           std::int64_t total, const std::string& source) {
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(PreviewEditMerge::applyTextEdit(before, after, occurrence, total, source));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(source.size()));
}

/// The same with another piece of real pages each time, behind `start`.
void mergeInRealPages(benchmark::State& state, std::string_view before, std::string_view after,
                      std::int64_t occurrence, std::int64_t total, std::string_view start) {
    const auto size = static_cast<std::size_t>(state.range(0));
    RealPieces pieces(size);
    std::vector<std::string> sources(largest / size);
    for (std::string& source : sources)
        source.append(start).append(pieces.next());
    std::size_t next = 0;
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(
            PreviewEditMerge::applyTextEdit(before, after, occurrence, total, sources[next]));
        next = (next + 1) % sources.size();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(start.size() + size));
}

std::string repeated(std::string_view part, std::size_t size) {
    std::string text;
    while (text.size() < size)
        text += part;
    return text;
}

void BM_MergeUniqueText(benchmark::State& state) {
    mergeInRealPages(state, "Ein Satz.", "Ein neuer Satz.", 0, 1, "<p>Ein Satz.</p>");
}

/// The second search, for a part of a text, is needed.
void BM_MergePartOfAText(benchmark::State& state) {
    mergeInRealPages(state, "Ein Satz.", "Ein neuer Satz.", 0, 1, "<p>Hier: Ein Satz. </p>");
}

void BM_MergeRepeatedText(benchmark::State& state) {
    const std::string text = "<p>Ein Satz.</p>";
    mergeInRealPages(state, "Ein Satz.", "Ein neuer Satz.", 70, 100, repeated(text, text.size() * 100));
}

void BM_RefuseUnknownText(benchmark::State& state) {
    mergeInRealPages(state, "Ein Satz, den es nirgends gibt.", "x", 0, 1, "");
}

/// The floor of every merge, whose answer is a copy of the source.
void BM_CopyText(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    const std::string source(RealPages::text(size));
    for ([[maybe_unused]] auto iteration : state) {
        std::string copy = source;
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

BENCHMARK(BM_CopyText)->Arg(small)->Arg(largest);
BENCHMARK(BM_MergeUniqueText)->Arg(small)->Arg(large)->Arg(largest);
BENCHMARK(BM_MergePartOfAText)->Arg(small)->Arg(large)->Arg(largest);
BENCHMARK(BM_MergeRepeatedText)->Arg(small)->Arg(large)->Arg(largest);
BENCHMARK(BM_RefuseUnknownText)->Arg(small)->Arg(large)->Arg(largest);

/// Pages of one part, and a text that they do not hold.
struct Page {
    std::string_view name;
    std::string_view part;
    std::string_view text;
};

constexpr std::array pages{Page{"German", "<p>Die Größe der Straße überrascht.</p>\n", "Überraschung"},
                           Page{"Chinese", "<p>漢字仮名交じり文</p>", "漢文"},
                           Page{"Hindi", "<p>हिन्दी में लिखा हुआ पाठ</p>", "पाठशाला"},
                           Page{"decomposed", "Stra\u0308nde u\u0308ber Mu\u0308hlen ", "Mu\u0308llerin"},
                           Page{"Russian", "<p>Мы пишем страницы руками.</p>\n", "Рука"},
                           Page{"Japanese", "<p>ひらがなとカタカナ</p>", "ひらめき"},
                           Page{"Korean", "<p>한글로 쓴 글</p>", "한국"},
                           Page{"emoji", "\U0001F469\u200D\U0001F469\u200D\U0001F467", "\U0001F467"},
                           Page{"references", "&amp;&uuml;", "\u00FC\u00FC"},
                           Page{"line ends", "a\r\n", "a\n"},
                           Page{"ampersands", "&", "&a"},
                           Page{"tags", "<", "a"},
                           Page{"values", "<a b=\"", "a"},
                           Page{"comments", "<!--", "a"},
                           Page{"accents", "<\u0338", "a"},
                           Page{"empty tags", "<>", "a"},
                           Page{"rare ideographs", "<p>\U00020000\U00020001</p>", "\U00020001"},
                           Page{"vowel points", "<p>مَرْحَبًا</p>", "سَلَام"},
                           Page{"other forms", "\u212A", "K\u0301"},
                           Page{"one letter", "a", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab"}};

void BM_RefuseInPagesOf(benchmark::State& state) {
    const Page& page = pages[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(std::string(page.name));
    merge(state, page.text, "x", 0, 1, repeated(page.part, static_cast<std::size_t>(state.range(1))));
}

/// The page's text stands `count` times before it, each time between tags, and the last one is edited.
void mergeInPage(benchmark::State& state, std::size_t count) {
    const Page& page = pages[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(std::string(page.name));
    const std::string paragraph = "<p>" + std::string(page.text) + "</p>";
    const std::string source = repeated(paragraph, paragraph.size() * count) +
                               repeated(page.part, static_cast<std::size_t>(state.range(1)));
    const auto total = static_cast<std::int64_t>(count);
    merge(state, page.text, std::string(page.text) + "x", total - 1, total, source);
}

void BM_MergeUniqueTextInPagesOf(benchmark::State& state) {
    mergeInPage(state, 1);
}

void BM_MergeRepeatedTextInPagesOf(benchmark::State& state) {
    mergeInPage(state, 100);
}

void forEveryPage(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgsProduct({benchmark::CreateDenseRange(0, static_cast<std::int64_t>(pages.size()) - 1, 1),
                            {static_cast<std::int64_t>(small), static_cast<std::int64_t>(large),
                             static_cast<std::int64_t>(largest)}});
}

BENCHMARK(BM_RefuseInPagesOf)->Apply(forEveryPage);
BENCHMARK(BM_MergeUniqueTextInPagesOf)->Apply(forEveryPage);
BENCHMARK(BM_MergeRepeatedTextInPagesOf)->Apply(forEveryPage);

} // namespace

} // namespace corvanta
