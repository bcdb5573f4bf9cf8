#pragma once

#include "probe/ProbeJson.h"

#include <filesystem>

namespace tavrel::probe {

/// The folder that stands for the user's home: the member "home" of a request, else an empty
/// temporary one, which the destructor removes.
class ProbeHome {
public:
    /// Throws `RequestError` where no folder can be made.
    explicit ProbeHome(const Json& request);
    ~ProbeHome();
    ProbeHome(const ProbeHome&) = delete;
    ProbeHome& operator=(const ProbeHome&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
    bool isTemporary_ = false;
};

}  // namespace tavrel::probe
