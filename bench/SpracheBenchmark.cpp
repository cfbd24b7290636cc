#include "DesignSystem/Sprache.hpp"
#include "DesignSystem/Textkatalog.hpp"
#include "DesignSystem/t.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Platform/ResourceFolder.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/TemporaryFolder.hpp"

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>
#include <vector>

namespace corvanta {

namespace {

/// The shipped languages and a folder of the user's own, on a system in English.
struct Catalogue {
    TemporaryFolder folder;
    PosixFileManager files;
    InMemoryUserDefaults defaults;
    Sprache sprache{{defaults, files, [] { return std::vector<std::string>{"en-GB"}; },
                     resourceFolder(runningExecutable()), folder.path()}};
    Sprache::Sitzung sitzung{sprache};
};

/// One text after the other, so that the time is the mean of short and long ones.
void BM_LookUpText(benchmark::State& state) {
    const Catalogue catalogue;
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(t(Textkatalog::alle[next]));
        next = next + 1 == Textkatalog::alle.size() ? 0 : next + 1;
    }
}

void BM_LookUpAndFillText(benchmark::State& state) {
    const Catalogue catalogue;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(t("%lld von %lld", 3, 17));
}

/// What the program does with its catalogue before the first window: the language in use is read.
void BM_Start(benchmark::State& state) {
    Catalogue catalogue;
    catalogue.sprache.vorbereiten();
    for ([[maybe_unused]] auto _ : state) {
        catalogue.sprache.neuLaden();
        benchmark::DoNotOptimize(t("Version %@"));
    }
}

void BM_StartWithManyOwnLanguages(benchmark::State& state) {
    Catalogue catalogue;
    for (int i = 0; i < state.range(0); ++i)
        std::ofstream(catalogue.sprache.eigenerOrdner() / (std::to_string(i) + ".json")) << R"({"Link":"x"})";
    for ([[maybe_unused]] auto _ : state) {
        catalogue.sprache.neuLaden();
        benchmark::DoNotOptimize(t("Version %@"));
    }
}

/// The first start of all, which makes the user's folder.
void BM_FirstStart(benchmark::State& state) {
    Catalogue catalogue;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove_all(catalogue.folder / "Corvanta");
        state.ResumeTiming();
        catalogue.sprache.neuLaden();
        benchmark::DoNotOptimize(t("Version %@"));
    }
}

/// What the program does beside the start: it finds the templates up to date.
void BM_CheckTemplates(benchmark::State& state) {
    const Catalogue catalogue;
    catalogue.sprache.vorbereiten();
    for ([[maybe_unused]] auto _ : state)
        catalogue.sprache.vorbereiten();
}

/// The same when there are none yet; it waits for the disk.
void BM_WriteTemplates(benchmark::State& state) {
    const Catalogue catalogue;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove_all(catalogue.folder / "Corvanta");
        state.ResumeTiming();
        catalogue.sprache.vorbereiten();
    }
}

/// What the settings window asks for.
void BM_ListLanguages(benchmark::State& state) {
    const Catalogue catalogue;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(catalogue.sprache.verfuegbare());
}

BENCHMARK(BM_LookUpText);
BENCHMARK(BM_LookUpAndFillText);
BENCHMARK(BM_Start);
BENCHMARK(BM_StartWithManyOwnLanguages)->Arg(10'000);
BENCHMARK(BM_FirstStart);
BENCHMARK(BM_CheckTemplates);
BENCHMARK(BM_WriteTemplates)->UseRealTime();
BENCHMARK(BM_ListLanguages);

} // namespace

} // namespace corvanta
