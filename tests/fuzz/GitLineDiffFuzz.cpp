#include "git/GitLineDiff.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace tavrel;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

}  // namespace

/// Any bytes as a diff: the result is in order and without overlap, and finds what it lists.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const GitLineDiff diff = GitLineDiff::parse(bytes);
    const GitChangedLines* before = nullptr;
    for (const GitChangedLines& lines : diff.changedLines) {
        require(lines.count > 0 && lines.first >= 0);
        require(!before || before->end() < lines.first ||
                (before->end() == lines.first && before->kind != lines.kind));
        require(diff.changeAt(lines.first) == lines.kind);
        require(diff.changeAt(lines.end() - 1) == lines.kind);
        before = &lines;
    }
    for (std::size_t index = 0; index < diff.deletedAfterLines.size(); ++index) {
        require(diff.isDeletedAfter(diff.deletedAfterLines[index]));
        require(index == 0 || diff.deletedAfterLines[index - 1] < diff.deletedAfterLines[index]);
    }
    require(GitLineDiff::allAdded(bytes).changedLines.size() == 1);
    return 0;
}
