#pragma once

#include <string>
#include <vector>

namespace tavrel {

class Collator;
class GitIgnoreCache;

/// A child of a folder as the project tree shows it.
struct ListedChild {
    std::string name;
    bool isDirectory = false;  // Of what the name leads to: a link to a folder counts as one.

    bool operator==(const ListedChild&) const = default;
};

/// The children of `folder`, an absolute path in standard form, that are neither hidden (a name
/// that begins with a dot) nor ignored: folders before files, each as `collator` orders the names.
/// To the ignore files a link is no folder. A folder that cannot be read has no children.
std::vector<ListedChild> listFolder(const std::string& folder, GitIgnoreCache& cache,
                                    const Collator& collator);

}  // namespace tavrel
