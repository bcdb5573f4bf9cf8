#pragma once

#include <string>

namespace tavrel {

/// What can go wrong in a workspace beside the file system: one case.
struct WorkspaceError {
    /// The id of a language mode that the application does not bring along.
    std::string missingBundledLanguageMode;

    std::string description() const
    {
        return "Bundled language mode not found: " + missingBundledLanguageMode;
    }
    bool operator==(const WorkspaceError&) const = default;
};

}  // namespace tavrel
