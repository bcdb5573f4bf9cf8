#include "git/GitLineDiffer.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/PosixFileSystem.h"
#include "platform/PrivateFolder.h"
#include "platform/WorkQueue.h"
#include "probe/Adaptors.h"

#include <filesystem>

namespace tavrel::probe {
namespace {

Json jsonFromDiff(const std::optional<GitLineDiff>& diff)
{
    if (!diff)
        return {{"result", nullptr}};
    // A diff of a few bytes may speak of billions of lines, and each is a member of the answer.
    constexpr std::int64_t mostLines = 10'000'000;
    std::int64_t lineCount = 0;
    for (const GitChangedLines& lines : diff->changedLines)
        lineCount += lines.count;
    if (lineCount > mostLines)
        throw RequestError("more than 10000000 changed lines");
    Json changed = Json::object();
    for (const GitChangedLines& lines : diff->changedLines) {
        const char* kind = lines.kind == GitLineChangeKind::added ? "added" : "modified";
        for (std::int64_t line = lines.first; line < lines.end(); ++line)
            changed[std::to_string(line)] = kind;
    }
    return {{"changedLines", std::move(changed)}, {"deletedAfterLines", diff->deletedAfterLines}};
}

/// For a differ whose comparison is called directly.
class NoQueue final : public WorkQueue {
public:
    void post(Work) override {}
};

}  // namespace

Json lineDiffAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    if (member(body, "diff") || member(body, "diffHex")) {
        const std::string diff = bytesMember(body, "diff");
        return jsonFromDiff(
            request.measured([&] { return std::string_view(diff); }, GitLineDiff::parse));
    }
    const std::string file = utf8Member(body, "file");
    const std::string text = bytesMember(body, "text");
    const Environment environment = Environment::ofThisProcess();
    const auto program = GitTool::findProgram(environment);
    PosixFileSystem fileSystem;
    auto folder =
        PrivateFolder::create(fileSystem, environment.value("XDG_RUNTIME_DIR").value_or(""),
                              std::filesystem::temp_directory_path());
    if (!program || !folder)
        return jsonFromDiff(std::nullopt);
    SimulatedClock clock;
    ManualMainQueue mainQueue(clock);
    NoQueue workQueue;
    const GitLineDiffer differ(GitTool(*program, environment), fileSystem, *folder, workQueue,
                               mainQueue);
    return jsonFromDiff(
        request.measured([&] { return std::string_view(text); },
                         [&](std::string_view current) { return differ.compare(file, current); }));
}

}  // namespace tavrel::probe
