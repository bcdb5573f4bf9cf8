#include "git/FileWalk.h"
#include "git/FolderListing.h"
#include "git/GitIgnoreCache.h"
#include "git/GitLineDiffer.h"
#include "git/GitTool.h"
#include "git/IgnoreTranslation.h"
#include "platform/ChildProcess.h"
#include "platform/Clock.h"
#include "platform/Collator.h"
#include "platform/Environment.h"
#include "platform/ManualMainQueue.h"
#include "platform/PosixFileSystem.h"
#include "platform/PrivateFolder.h"
#include "platform/RegularExpression.h"
#include "platform/ThreadPool.h"
#include "platform/Utf8.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

// The walk through a project beside "find" and "git ls-files" on the same tree, ignore rules
// beside the regular expressions that define them, and line marks beside git's part of the work.
// The tree is made below the system's temporary folder, or TMPDIR, and removed at the end.

namespace {

namespace fs = std::filesystem;
using namespace tavrel;

constexpr int fileCount = 50'000;
constexpr int filesPerFolder = 12;
constexpr int ignoreFileCount = 200;

const std::vector<std::string>& commonRules()
{
    static const std::vector<std::string> rules{
        "*.o",          "*.pyc",  "*~",      "/dist",     "target/",           "*.min.js",
        "docs/_build/", ".cache", "!keep.o", "*.py[cod]", "**/generated/*.ts", "tmp-?"};
    return rules;
}

class Folder {
public:
    Folder()
    {
        std::string pattern = (fs::temp_directory_path() / "tavrel-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data()))
            throw std::runtime_error("cannot make a folder like " + pattern);
        path_ = fs::canonical(pattern);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

ChildProcess child(const std::string& program, std::vector<std::string> arguments,
                   const fs::path& folder)
{
    ChildProcess process;
    process.program = program;
    process.arguments = std::move(arguments);
    process.environment = Environment::ofThisProcess();
    process.environment.set("GIT_CONFIG_GLOBAL", "/dev/null");
    process.workingFolder = folder;
    process.timeLimit = std::chrono::minutes(5);
    return process;
}

void git(const fs::path& folder, std::vector<std::string> arguments)
{
    std::vector<std::string> all{"-c", "user.name=Bench", "-c", "user.email=bench@localhost"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const auto result = run(child("/usr/bin/git", std::move(all), folder));
    if (!result || result->exitStatus != 0)
        throw std::runtime_error("git " + arguments.front() + " failed");
}

/// Three levels of folders with a dozen files each, every 20th with an ignore file of its own.
const fs::path& tree()
{
    static const Folder folder;
    static const bool made = [] {
        const std::vector<std::string> endings{".c", ".h",  ".cpp", ".py",
                                               ".o", ".ts", ".md",  ".js"};
        const int folderCount = fileCount / filesPerFolder + 1;
        int ignoreFiles = 0;
        for (int index = 0, files = 0; index < folderCount && files < fileCount; ++index) {
            const fs::path path = folder.path() / ("module" + std::to_string(index % 60)) /
                                  ("part_" + std::to_string(index / 60 % 9)) /
                                  ("section-" + std::to_string(index / 540));
            fs::create_directories(path);
            if (index % (folderCount / ignoreFileCount) == 0 && ignoreFiles < ignoreFileCount) {
                std::ofstream ignore(path / ".gitignore");
                for (const std::string& rule : commonRules())
                    ignore << rule << '\n';
                ++ignoreFiles;
            }
            for (int file = 0; file < filesPerFolder && files < fileCount; ++file, ++files)
                std::ofstream(path / ("Source_file" + std::to_string(file) +
                                      endings[static_cast<std::size_t>(file) % endings.size()]));
        }
        std::ofstream(folder.path() / ".gitignore") << "*.tmp\n/out/\n";
        git(folder.path(), {"init", "--quiet"});
        return true;
    }();
    static_cast<void>(made);
    return folder.path();
}

void walkTree(benchmark::State& state)
{
    const std::string root = tree();
    PosixFileSystem fileSystem;
    GitIgnoreCache cache(fileSystem);
    const Collator collator("");
    std::size_t found = collectFiles({root}, fileCount, cache, collator).size();
    for (auto _ : state)
        benchmark::DoNotOptimize(found = collectFiles({root}, fileCount, cache, collator).size());
    state.counters["files"] = static_cast<double>(found);
}
BENCHMARK(walkTree)->Unit(benchmark::kMillisecond)->UseRealTime();

void walkTreeCold(benchmark::State& state)
{
    const std::string root = tree();
    PosixFileSystem fileSystem;
    const Collator collator("");
    for (auto _ : state) {
        GitIgnoreCache cache(fileSystem);  // Parses every ignore file.
        benchmark::DoNotOptimize(collectFiles({root}, fileCount, cache, collator));
    }
}
BENCHMARK(walkTreeCold)->Unit(benchmark::kMillisecond)->UseRealTime();

void findTree(benchmark::State& state)
{
    const fs::path& root = tree();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            run(child("/usr/bin/find", {root.string(), "-type", "f"}, root))->output.size());
}
BENCHMARK(findTree)->Unit(benchmark::kMillisecond)->UseRealTime();

void gitListTree(benchmark::State& state)
{
    const fs::path& root = tree();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            run(child("/usr/bin/git", {"ls-files", "--others", "--exclude-standard"}, root))
                ->output.size());
}
BENCHMARK(gitListTree)->Unit(benchmark::kMillisecond)->UseRealTime();

std::vector<std::string> hundredRules()
{
    std::vector<std::string> rules = commonRules();
    for (int index = 0; rules.size() < 100; ++index) {
        const std::string number = std::to_string(index);
        rules.push_back("*.ext" + number);
        rules.push_back("/only/here" + number);
        rules.push_back("name" + number + "/");
        rules.push_back("a" + number + "*b[0-9].c");
    }
    rules.resize(100);
    return rules;
}

std::vector<std::string> tenThousandPaths()
{
    std::vector<std::string> paths;
    for (int index = 0; index < 10'000; ++index)
        paths.push_back("/r/src/module" + std::to_string(index % 60) + "/part_" +
                        std::to_string(index % 9) + "/Source_file" + std::to_string(index) +
                        ".cpp");
    return paths;
}

void ignoreRules(benchmark::State& state)
{
    std::string text;
    for (const std::string& rule : hundredRules())
        text += rule + "\n";
    const GitIgnoreChain chain{std::make_shared<const GitIgnoreFile>("/r", utf16FromUtf8(text))};
    const std::vector<std::string> paths = tenThousandPaths();
    for (auto _ : state) {
        for (const std::string& path : paths)
            benchmark::DoNotOptimize(isIgnored(path, false, chain));
    }
}
BENCHMARK(ignoreRules)->Unit(benchmark::kMillisecond);

void ignoreRulesOneExpressionAfterAnother(benchmark::State& state)
{
    std::vector<RegularExpressionMatcher> matchers;
    for (const std::string& rule : hundredRules())
        matchers.emplace_back(
            RegularExpression::compile(translateIgnorePattern(utf16FromUtf8(rule)).expression)
                .value());
    const std::vector<std::string> paths = tenThousandPaths();
    for (auto _ : state) {
        for (const std::string& path : paths) {
            const std::u16string relative = utf16FromUtf8(path.substr(3));
            for (RegularExpressionMatcher& matcher : matchers) {
                matcher.setText(relative);
                benchmark::DoNotOptimize(matcher.next());
            }
        }
    }
}
BENCHMARK(ignoreRulesOneExpressionAfterAnother)->Unit(benchmark::kMillisecond);

void ignoreRulesAllInOneExpression(benchmark::State& state)
{
    // Which rule matched would still have to be found for the paths that match.
    std::u16string joined;
    for (const std::string& rule : hundredRules())
        joined += (joined.empty() ? u"(?:" : u"|(?:") +
                  translateIgnorePattern(utf16FromUtf8(rule)).expression + u")";
    RegularExpressionMatcher matcher(RegularExpression::compile(joined).value());
    const std::vector<std::string> paths = tenThousandPaths();
    for (auto _ : state) {
        for (const std::string& path : paths) {
            const std::u16string relative = utf16FromUtf8(path.substr(3));
            matcher.setText(relative);
            benchmark::DoNotOptimize(matcher.next());
        }
    }
}
BENCHMARK(ignoreRulesAllInOneExpression)->Unit(benchmark::kMillisecond);

/// A committed file of 10 MB, and its text with every 100th line changed.
struct LargeFile {
    LargeFile()
    {
        std::string base;
        for (int line = 0; base.size() < 10'000'000; ++line) {
            const std::string text = "    value[" + std::to_string(line) + "] = compute(" +
                                     std::to_string(line * 7) + ");\n";
            base += text;
            current += line % 100 == 50 ? "    changed(" + std::to_string(line) + ");\n" : text;
        }
        std::ofstream(folder.path() / "large.c") << base;
        std::ofstream(folder.path() / "current.c") << current;
        git(folder.path(), {"init", "--quiet"});
        git(folder.path(), {"add", "large.c"});
        git(folder.path(), {"commit", "--quiet", "--message", "first"});
    }

    Folder folder;
    std::string current;
};

const LargeFile& largeFile()
{
    static const LargeFile file;
    return file;
}

void lineMarks(benchmark::State& state)
{
    const LargeFile& file = largeFile();
    const Folder temporary;
    PosixFileSystem fileSystem;
    auto folder = PrivateFolder::create(fileSystem, "", temporary.path());
    SimulatedClock clock;
    ManualMainQueue mainQueue(clock);
    ThreadPool pool(1);
    const GitLineDiffer differ(GitTool("/usr/bin/git", Environment::ofThisProcess()), fileSystem,
                               *folder, pool, mainQueue);
    const std::string path = file.folder.path() / "large.c";
    std::size_t hunks = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(hunks = differ.compare(path, file.current)->changedLines.size());
    state.counters["hunks"] = static_cast<double>(hunks);
}
BENCHMARK(lineMarks)->Unit(benchmark::kMillisecond)->UseRealTime();

void gitDiffAlone(benchmark::State& state)
{
    const fs::path& folder = largeFile().folder.path();
    for (auto _ : state)
        benchmark::DoNotOptimize(run(child("/usr/bin/git",
                                           {"diff", "--no-index", "--unified=0", "--no-color", "--",
                                            "large.c", "current.c"},
                                           folder))
                                     ->output.size());
}
BENCHMARK(gitDiffAlone)->Unit(benchmark::kMillisecond)->UseRealTime();

void gitShowAlone(benchmark::State& state)
{
    const fs::path& folder = largeFile().folder.path();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            run(child("/usr/bin/git", {"show", "HEAD:large.c"}, folder))->output.size());
}
BENCHMARK(gitShowAlone)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
