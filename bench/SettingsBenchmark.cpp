#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"
#include "Platform/JSONUserDefaults.hpp"
#include "Settings/AppSettings.hpp"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvanta {

namespace {

/// A settings file with everything that the program stores, and `grants` folder grants.
class StoredSettings {
public:
    explicit StoredSettings(std::int64_t grants) {
        std::string name = std::filesystem::temp_directory_path() / "corvanta-bench-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        folder_ = name;
        JSONUserDefaults defaults(file());
        AppSettings settings(defaults);
        settings.editorFontSize = 14.0;
        settings.editorThemeID = "kontrast";
        settings.checkForUpdatesAtLaunch = true;
        defaults.set("sprache", std::string("en"));
        defaults.set("schriftgroesse", 15.0);
        defaults.set("AppleLanguages", std::vector<std::string>{"en"});
        defaults.set("previewFolderBookmarks",
                     std::vector<std::string>(static_cast<std::size_t>(grants), std::string(200, 'b')));
    }
    StoredSettings(const StoredSettings&) = delete;
    StoredSettings& operator=(const StoredSettings&) = delete;
    ~StoredSettings() { std::filesystem::remove_all(folder_); }

    std::filesystem::path file() const { return folder_ / "settings.json"; }

private:
    std::filesystem::path folder_;
};

/// Takes every question and answers none, as a service that waits for a password.
class SilentKeychain final : public Keychain {
public:
    void add(const std::string&, const std::string&, std::function<void(Status)>) override {}
    void copyMatching(const std::string&, std::function<void(Status, std::optional<std::string>)>) override {}
    void remove(const std::string&, std::function<void(Status)>) override {}
};

/// What the start-up spends on settings: reading the file, and the objects over it.
void BM_StartSettings(benchmark::State& state) {
    const StoredSettings stored(state.range(0));
    SilentKeychain keychain;
    for ([[maybe_unused]] auto iteration : state) {
        JSONUserDefaults defaults(stored.file());
        const AppSettings settings(defaults);
        KeychainManager manager(keychain, "org.example.App");
        const ClaudeAssistantViewModel assistant(manager);
        benchmark::DoNotOptimize(*settings.editorFontSize + static_cast<double>(assistant.apiKey->size()));
    }
}

/// What a slider waits for at each step; the disk is the business of another thread.
void BM_SetSetting(benchmark::State& state) {
    const StoredSettings stored(10);
    JSONUserDefaults defaults(stored.file());
    AppSettings settings(defaults);
    double size = 10.0;
    for ([[maybe_unused]] auto iteration : state)
        settings.editorFontSize = size += 0.001;
}

BENCHMARK(BM_StartSettings)->Arg(0)->Arg(10)->Arg(1000);
BENCHMARK(BM_SetSetting);

} // namespace

} // namespace corvanta
