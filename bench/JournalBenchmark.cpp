// What keeping a typed letter costs the main thread, by the size of the text, and what journals that wait
// cost the start.

#include "Documents/Journal.hpp"
#include "Documents/WaitingJournal.hpp"
#include "Documents/WorkerThread.hpp"
#include "EditorCore/SharedText.hpp"
#include "Platform/PosixFileOperations.hpp"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <thread>

namespace {

using namespace corvanta;

/// An empty folder for journals.
class Folder {
public:
    Folder() {
        if (::mkdtemp(name_.data()) == nullptr)
            std::abort();
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(name_); }

    std::filesystem::path path() const { return name_; }

private:
    std::string name_ = std::filesystem::temp_directory_path() / "corvanta-bench-XXXXXX";
};

Journal::Base baseOf(const std::string& text) {
    return {"/web/seite.html", Fingerprint::of(text), text};
}

void keepALetter(benchmark::State& state) {
    const Folder folder;
    PosixFileOperations operations;
    WorkerThread worker;
    const std::string base(static_cast<std::size_t>(state.range(0)), 'x');
    Journal journal(operations, worker, folder.path(), baseOf(base));
    SharedText text(base);
    const auto middle = static_cast<std::int64_t>(text.size() / 2);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const auto after = static_cast<std::int64_t>(text.size()) - middle;
        text.replace(middle, middle, "y");
        state.ResumeTiming();
        if (journal.append({middle, after}, text))
            std::abort();
    }
    journal.remove();
}
BENCHMARK(keepALetter)->Arg(4'000)->Arg(1'000'000)->Arg(10'000'000);

/// Types the first letter into one new document after another; `makeReady` is what happened to its journal
/// before.
template <typename MakeReady>
void keepFirstLetters(benchmark::State& state, MakeReady makeReady) {
    const Folder folder;
    PosixFileOperations operations;
    WorkerThread worker;
    const std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    const SharedText typed("y" + text);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        {
            Journal journal(operations, worker, folder.path(), baseOf(text));
            makeReady(journal, worker);
            state.ResumeTiming();
            if (journal.append({0, static_cast<std::int64_t>(text.size())}, typed))
                std::abort();
            state.PauseTiming();
            journal.remove();
        }
        state.ResumeTiming();
    }
}

void keepTheFirstLetter(benchmark::State& state) {
    keepFirstLetters(state, [](Journal&, WorkerThread&) {});
}
BENCHMARK(keepTheFirstLetter)->Arg(4'000)->Arg(1'000'000)->Arg(10'000'000)->Iterations(200);

/// As the program does it: the worker has made a place before.
void keepTheFirstLetterInAPreparedPlace(benchmark::State& state) {
    keepFirstLetters(state, [](Journal& journal, WorkerThread& worker) {
        journal.prepare();
        std::promise<void> prepared;
        worker.after({}, [&] { prepared.set_value(); });
        prepared.get_future().wait();
        // Nobody types in the moment in which the worker is just about to rest.
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    });
}
BENCHMARK(keepTheFirstLetterInAPreparedPlace)->Arg(4'000)->Arg(1'000'000)->Arg(10'000'000)->Iterations(200);

void findFiftyJournals(benchmark::State& state) {
    const Folder folder;
    PosixFileOperations operations;
    WorkerThread worker;
    for (int i = 0; i < 50; ++i) {
        const std::string text(100'000, 'x');
        Journal journal(operations, worker, folder.path(), baseOf(text));
        if (journal.append({}, "y" + text))
            std::abort();
    }
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(WaitingJournal::allIn(operations, folder.path()));
}
BENCHMARK(findFiftyJournals)->Unit(benchmark::kMillisecond);

} // namespace
