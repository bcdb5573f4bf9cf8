#pragma once

#include "git/GitLineDiff.h"
#include "git/GitTool.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

class FileSystem;
class MainQueue;
class PrivateFolder;
class WorkQueue;

/// Compares texts of the editor with the last commit of the repository that holds their file.
class GitLineDiffer {
public:
    using Completion = std::function<void(std::optional<GitLineDiff>)>;
    /// The text to compare as UTF-8. Called at most once, on the work queue and only for a file in
    /// a repository, so that a large text is turned into bytes there, and not without need.
    using TextSource = std::function<std::string()>;

    /// Borrows all but `tool`; they must outlive the work in `workQueue`, as this object must.
    /// Nothing in `workQueue`, a serial one, runs at the same time, so one git runs at a time.
    GitLineDiffer(GitTool tool, FileSystem& fileSystem, PrivateFolder& folder, WorkQueue& workQueue,
                  MainQueue& mainQueue)
        : tool_(std::move(tool)), fileSystem_(fileSystem), folder_(folder), workQueue_(workQueue),
          mainQueue_(mainQueue)
    {
    }

    /// Queues the comparison and returns at once. `completion` runs on the main queue, with
    /// nothing when no statement can be made: no git, no repository, a failure on the way. Answers
    /// come in the order of the questions.
    void compute(const std::string& path, TextSource text, Completion completion);

    /// The comparison itself. Blocks, at most for the time limits of three children; on any thread.
    std::optional<GitLineDiff> compare(const std::string& path, std::string_view text) const;

private:
    std::optional<GitLineDiff> compare(const std::string& path, const TextSource& source) const;
    std::optional<GitLineDiff> compareTexts(std::string_view base, std::string_view text) const;

    GitTool tool_;
    FileSystem& fileSystem_;
    PrivateFolder& folder_;
    WorkQueue& workQueue_;
    MainQueue& mainQueue_;
};

}  // namespace tavrel
