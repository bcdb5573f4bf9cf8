#pragma once

#include "config/ResourceStore.h"

#include <span>

namespace tavrel {

/// A file of the folder `resources`, as the build put it into the program.
struct EmbeddedFile {
    std::string_view path;
    std::string_view text;
};

/// The files of the folder `resources`, which travel inside the program and need no file on the
/// disk. Finding one costs O(log files).
class BuiltInResources final : public ResourceStore {
public:
    std::optional<std::string_view> textAt(std::string_view path) const override;

    /// All of them, sorted by path.
    static std::span<const EmbeddedFile> files();
};

}  // namespace tavrel
