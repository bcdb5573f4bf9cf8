#pragma once

#include "git/GitIgnoreRule.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// One parsed ignore file. Never changes; shared freely between threads.
class GitIgnoreFile {
public:
    /// `baseFolder` is the path of the folder that holds the file, absolute and in standard form.
    /// `text` is split at every line terminator; lines that hold no rule are dropped.
    GitIgnoreFile(std::string_view baseFolder, std::u16string_view text);

    /// The path that those below the folder begin with: the folder's, with a slash at its end.
    const std::string& base() const { return base_; }
    /// In the order of the lines.
    const std::vector<GitIgnoreRule>& rules() const { return rules_; }

    /// What the last matching rule says about the absolute path `path`: true where it ignores it,
    /// false where it takes it back in, absent without one and for a path that is not below the
    /// folder. Any bytes may come in; those that are not UTF-8 count as U+FFFD.
    std::optional<bool> decision(std::string_view path, bool isDirectory) const;

private:
    std::string base_;
    std::vector<GitIgnoreRule> rules_;
};

/// The ignore files that apply to a folder, from the outermost in.
using GitIgnoreChain = std::vector<std::shared_ptr<const GitIgnoreFile>>;

/// Whether `chain` ignores `path`, absolute and in standard form: a deeper file's decision
/// replaces that of the files above it. Looks at this path alone, not at the folders above it.
bool isIgnored(std::string_view path, bool isDirectory, const GitIgnoreChain& chain);

}  // namespace tavrel
