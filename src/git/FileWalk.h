#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

namespace tavrel {

class Collator;
class GitIgnoreCache;

/// The files of a project: what quick open lists and project search looks into.
///
/// - A root that is a regular file is in the list as it is. A root that is a folder, also through
///   a link and whatever its name, is walked; any other root, or one that is not an absolute path,
///   is passed over.
/// - Below a root only regular files and folders count, and links are not followed. Left out are
///   names that begin with a dot, the folders "DerivedData", "build" and "node_modules", and what
///   the ignore files say, those above a root included unless it is the root of a repository.
/// - A folder that cannot be read counts as empty. Overlapping roots give each file once.
///
/// The paths are in standard form, sorted by `collator`. There are at most `limit` of them: the
/// roots are taken one after another, each folder in the same order. Two threads read the folders;
/// the result does not depend on them. Blocks: not for the main thread. Where `cancelled` becomes
/// true, the walk ends soon with whatever it has found.
std::vector<std::string> collectFiles(const std::vector<std::string>& roots, std::size_t limit,
                                      GitIgnoreCache& cache, const Collator& collator,
                                      const std::atomic<bool>* cancelled = nullptr);

}  // namespace tavrel
