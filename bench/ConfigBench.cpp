#include "config/BuiltInResources.h"
#include "config/PreferencesStore.h"
#include "config/SettingsReloader.h"
#include "config/SettingsUpgrade.h"
#include "platform/ManualMainQueue.h"
#include "platform/PosixFileSystem.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

// A load of the configuration as at the start of the program, and a reload after a save, beside a
// plain read of the same texts.

namespace {

using namespace tavrel;

/// A home folder with a settings file, removed at the end.
class BenchHome {
public:
    explicit BenchHome(const std::string& settings)
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "tavrel-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data()))
            std::abort();
        path_ = pattern;
        std::filesystem::create_directory(path_ / ".tavrel-code");
        std::ofstream(path_ / ".tavrel-code/settings.cson") << settings;
    }
    ~BenchHome() { std::filesystem::remove_all(path_); }
    BenchHome(const BenchHome&) = delete;
    BenchHome& operator=(const BenchHome&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The settings that a new user gets.
std::string usualSettings()
{
    return std::string(BuiltInResources().textAt("Defaults/settings.cson").value_or("{}"));
}

std::string settingsWithBindings(int count)
{
    std::string text = usualSettings();
    std::string bindings;
    for (int i = 0; i < count; ++i)
        bindings += "    \"cmd+k,cmd+shift+f" + std::to_string(i % 12 + 1) + ",ctrl+opt+" +
                    std::to_string(i) + "\": [{moveCursor offset: " + std::to_string(i) +
                    "} {selectWord} {copy}]\n";
    return text.insert(text.rfind("  }"), bindings);
}

void fullLoad(benchmark::State& state)
{
    const BenchHome home(settingsWithBindings(static_cast<int>(state.range(0))));
    PosixFileSystem fileSystem;
    const BuiltInResources resources;
    for (auto _ : state) {
        PreferencesStore store(fileSystem, resources, home.path());
        benchmark::DoNotOptimize(store.load());
    }
}
BENCHMARK(fullLoad)->Arg(0)->Arg(1000)->Unit(benchmark::kMillisecond);

struct QuietDelegate final : SettingsReloaderDelegate {
    void settingsReloaderDidReload(ColumnLayout) override {}
    void settingsReloaderDidReport(std::string_view) override {}
    void settingsReloaderDidRewrite(const std::filesystem::path&) override {}
};

void reload(benchmark::State& state)
{
    const BenchHome home(settingsWithBindings(static_cast<int>(state.range(0))));
    PosixFileSystem fileSystem;
    const BuiltInResources resources;
    PreferencesStore store(fileSystem, resources, home.path());
    SimulatedClock clock;
    ManualMainQueue queue(clock);
    QuietDelegate delegate;
    SettingsReloader reloader(store, queue, delegate,
                              [](FolderWatchDelegate&) { return std::unique_ptr<FolderWatch>(); });
    for (auto _ : state)
        reloader.reloadSettings();
}
BENCHMARK(reload)->Arg(0)->Arg(1000)->Unit(benchmark::kMillisecond);

void upgrade(benchmark::State& state)
{
    const std::string text = settingsWithBindings(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(upgradedSettings(text));
}
BENCHMARK(upgrade)->Arg(0)->Arg(1000)->Unit(benchmark::kMillisecond);

void menuChord(benchmark::State& state)
{
    PosixFileSystem fileSystem;
    const BuiltInResources resources;
    PreferencesStore store(fileSystem, resources, "/nowhere");
    store.load(settingsWithBindings(static_cast<int>(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(store.keyChord("toggleTree"));
}
BENCHMARK(menuChord)->Arg(0)->Arg(1000)->Unit(benchmark::kMicrosecond);

/// All texts of a load, touched once.
void plainRead(benchmark::State& state)
{
    const std::string settings = settingsWithBindings(0);
    for (auto _ : state) {
        std::string copy = settings;
        for (const EmbeddedFile& file : BuiltInResources::files())
            copy += file.text;
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(plainRead)->Unit(benchmark::kMillisecond);

}  // namespace
