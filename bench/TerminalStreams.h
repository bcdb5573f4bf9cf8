#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tavrel::bench {

/// What a program might write to a terminal of 80 by 24.
struct TerminalStream {
    std::string name;
    std::string bytes;
};

/// Eight kinds of output, each about `size` bytes, the same at every call.
std::vector<TerminalStream> generatedStreams(std::size_t size);

/// The files of `folder`, sorted by name: recorded sessions, or streams of other programs.
std::vector<TerminalStream> streamsOfFolder(const std::string& folder);

}  // namespace tavrel::bench
