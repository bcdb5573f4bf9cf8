#include "git/GitLineDiff.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace tavrel {
namespace {

struct HunkHeader {
    std::int64_t oldCount = 1;
    std::int64_t newStart = 1;
    std::int64_t newCount = 1;
};

/// Reads a header piece by piece: "@@ -5,2 +5,2 @@", where a count of 1 may be left out.
class HeaderReader {
public:
    explicit HeaderReader(std::string_view line) : rest_(line) {}

    std::optional<HunkHeader> header()
    {
        HunkHeader header;
        if (!skip("@@ -") || !number() || !count(header.oldCount) || !skip(" +"))
            return std::nullopt;
        const auto start = number();
        if (!start || !count(header.newCount) || !skip(" @@"))
            return std::nullopt;
        header.newStart = *start;
        return header;
    }

private:
    bool skip(std::string_view text)
    {
        if (!rest_.starts_with(text))
            return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    /// Absent without a digit. No text has more lines than fit in 31 bits.
    std::optional<std::int64_t> number()
    {
        const std::size_t length = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        if (length == 0)
            return std::nullopt;
        std::int32_t value = 0;
        const auto result = std::from_chars(rest_.data(), rest_.data() + length, value);
        rest_.remove_prefix(length);
        return result.ec == std::errc() ? value : 1;
    }

    /// A comma and a number, or nothing.
    bool count(std::int64_t& value)
    {
        if (!skip(","))
            return true;
        const auto read = number();
        value = read.value_or(1);
        return read.has_value();
    }

    std::string_view rest_;
};

void append(std::vector<GitChangedLines>& changes, const GitChangedLines& change)
{
    if (!changes.empty() && changes.back().end() == change.first &&
        changes.back().kind == change.kind)
        changes.back().count += change.count;
    else
        changes.push_back(change);
}

/// Puts each change over those before it. Each is cut at most twice, so this takes O(n log n).
std::vector<GitChangedLines> paintedOver(const std::vector<GitChangedLines>& changes)
{
    std::map<std::int64_t, GitChangedLines> byFirst;
    for (const GitChangedLines& change : changes) {
        auto place = byFirst.lower_bound(change.first);
        if (place != byFirst.begin() && std::prev(place)->second.end() > change.first) {
            GitChangedLines& before = std::prev(place)->second;
            const std::int64_t end = before.end();
            before.count = change.first - before.first;
            if (end > change.end())
                byFirst[change.end()] = {change.end(), end - change.end(), before.kind};
        }
        while (place != byFirst.end() && place->second.first < change.end()) {
            const GitChangedLines covered = place->second;
            place = byFirst.erase(place);
            if (covered.end() > change.end())
                byFirst[change.end()] = {change.end(), covered.end() - change.end(), covered.kind};
        }
        byFirst[change.first] = change;
    }
    std::vector<GitChangedLines> result;
    for (const auto& [first, change] : byFirst)
        append(result, change);
    return result;
}

/// Git's hunks come in order; others have to be sorted out.
std::vector<GitChangedLines> joined(std::vector<GitChangedLines> changes)
{
    const auto clash =
        std::adjacent_find(changes.begin(), changes.end(),
                           [](const GitChangedLines& left, const GitChangedLines& right) {
                               return left.end() > right.first;
                           });
    if (clash != changes.end())
        return paintedOver(changes);
    std::vector<GitChangedLines> result;
    result.reserve(changes.size());
    for (const GitChangedLines& change : changes)
        append(result, change);
    return result;
}

}  // namespace

GitLineDiff GitLineDiff::parse(std::string_view diff)
{
    std::vector<GitChangedLines> changes;
    GitLineDiff result;
    while (!diff.empty()) {
        const std::size_t end = std::min(diff.find('\n'), diff.size());
        const auto header = HeaderReader(diff.substr(0, end)).header();
        diff.remove_prefix(std::min(end + 1, diff.size()));
        if (!header)
            continue;
        const auto [oldCount, newStart, newCount] = *header;
        if (newCount == 0) {
            result.deletedAfterLines.push_back(newStart);
            continue;
        }
        const bool isNew = oldCount == 0;
        changes.push_back(
            {newStart, newCount, isNew ? GitLineChangeKind::added : GitLineChangeKind::modified});
        if (!isNew && oldCount > newCount)
            result.deletedAfterLines.push_back(newStart + newCount - 1);
    }
    result.changedLines = joined(std::move(changes));
    auto& lines = result.deletedAfterLines;
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return result;
}

GitLineDiff GitLineDiff::allAdded(std::string_view text)
{
    // A carriage return and a line feed are one character here, and no line feed.
    std::int64_t lines = 1;
    char before = '\0';
    for (const char byte : text) {
        lines += byte == '\n' && before != '\r';
        before = byte;
    }
    if (text.ends_with('\n') && !text.ends_with("\r\n"))
        --lines;
    return {{{1, lines, GitLineChangeKind::added}}, {}};
}

std::optional<GitLineChangeKind> GitLineDiff::changeAt(std::int64_t line) const
{
    const auto behind = std::upper_bound(
        changedLines.begin(), changedLines.end(), line,
        [](std::int64_t wanted, const GitChangedLines& lines) { return wanted < lines.first; });
    if (behind == changedLines.begin() || std::prev(behind)->end() <= line)
        return std::nullopt;
    return std::prev(behind)->kind;
}

bool GitLineDiff::isDeletedAfter(std::int64_t line) const
{
    return std::binary_search(deletedAfterLines.begin(), deletedAfterLines.end(), line);
}

}  // namespace tavrel
