// One program of each language with its coloured form: after each line of the program stands a line
// with a letter for the token of each unit. A failure writes the form as it is now beside the
// program; a person reads the difference before it becomes the golden file.

#include "editor/SnapshotSource.h"
#include "highlight/BlockSource.h"
#include "highlight/LexicalHighlighter.h"
#include "highlight/ShippedModes.h"
#include "platform/Utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tavrel {
namespace {

const std::filesystem::path folder = TAVREL_GOLDEN_FOLDER;

/// In the order of `SyntaxToken`.
constexpr std::string_view letters = ".kscnitCfmpMPKdo,l";

std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string colouredForm(std::u16string_view text, const TokenRuns& runs)
{
    std::string marks;
    for (const TokenRuns::Run& run : runs.runs())
        marks.append(run.length, letters[static_cast<std::size_t>(run.token)]);
    std::string form;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(u'\n', start), text.size());
        form += utf8FromUtf16(text.substr(start, end - start)) + "\n";
        form += marks.substr(start, end - start) + "\n";
        start = end + 1;
    }
    return form;
}

std::vector<std::filesystem::path> programs()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".tokens" && entry.path().extension() != ".now")
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

class HighlightGolden : public testing::TestWithParam<std::filesystem::path> {
protected:
    const std::u16string text = utf16FromUtf8(bytesOf(GetParam()));
    const LexicalHighlighter highlighter{shippedMode(GetParam().stem().string())};
    const TokenRuns whole = highlighter.highlight(PlainTextSource(text)).runs;
};

TEST_P(HighlightGolden, HasItsColours)
{
    const std::filesystem::path golden = GetParam().string() + ".tokens";
    const std::string form = colouredForm(text, whole);
    if (form != bytesOf(golden)) {
        const std::filesystem::path now = GetParam().string() + ".now";
        std::ofstream(now, std::ios::binary) << form;
        FAIL() << "compare " << golden << " with " << now;
    }
}

/// What is scanned after an edit in `line`: some text before and behind it, in whole lines.
TextRange sliceAround(const TextSnapshot& text, TextRange line)
{
    const std::size_t before = line.location - std::min<std::size_t>(line.location, 16'384);
    const std::size_t from = text.lineRange({before, 0}).location;
    return {from, text.lineRange({line.end() + 2'048, 0}).end() - from};
}

std::vector<SyntaxToken> tokensOf(const TokenRuns& runs)
{
    std::vector<SyntaxToken> tokens;
    for (const TokenRuns::Run& run : runs.runs())
        tokens.insert(tokens.end(), run.length, run.token);
    return tokens;
}

std::vector<SyntaxToken> partOf(const std::vector<SyntaxToken>& tokens, TextRange range)
{
    const auto from = tokens.begin() + static_cast<std::ptrdiff_t>(range.location);
    return {from, from + static_cast<std::ptrdiff_t>(range.length)};
}

TEST_P(HighlightGolden, HasItsColoursInTheSliceAroundEachLine)
{
    const TextSnapshot snapshot(text);
    const std::vector<SyntaxToken> tokens = tokensOf(whole);
    for (std::size_t start = 0; start < text.size();) {
        const TextRange line = snapshot.lineRange({start, 0});
        const PaintedStretch painted =
            highlighter.highlight(PlainTextSource(text), line, sliceAround(snapshot, line));
        ASSERT_EQ(painted.range, line);
        ASSERT_EQ(tokensOf(painted.runs), partOf(tokens, line)) << "in the line at " << start;
        start = line.end();
    }
}

TEST_P(HighlightGolden, HasItsColoursInSlicesThatBeginInTheMiddle)
{
    std::u16string longText;
    while (longText.size() < 20'000 + 2 * text.size())
        longText += text;
    const PlainTextSource source(longText);
    const TextSnapshot snapshot(longText);
    const std::vector<SyntaxToken> tokens = tokensOf(highlighter.highlight(source).runs);

    // A slice that begins inside a token sees another text, so only the others are looked at.
    std::size_t checked = 0;
    TokenRuns ignored;
    ScanPoint point;
    for (std::size_t start = 18'000; start < longText.size();) {
        const TextRange line = snapshot.lineRange({start, 0});
        const TextRange slice = sliceAround(snapshot, line);
        if (point.location < slice.location)
            point = highlighter.scan(source, point, slice.location, ignored);
        if (point == ScanPoint{slice.location, 0}) {
            ++checked;
            const PaintedStretch painted = highlighter.highlight(source, line, slice);
            ASSERT_EQ(tokensOf(painted.runs), partOf(tokens, line)) << "in the line at " << start;
        }
        start = line.end();
    }
    EXPECT_GT(checked, 10U);
}

TEST_P(HighlightGolden, HasItsColoursBlockByBlock)
{
    for (const std::size_t blockSize : {1, 7, 4096}) {
        EXPECT_EQ(highlighter.highlight(BlockSource(text, blockSize)).runs, whole);
        const SnapshotSource stored{TextSnapshot(text, blockSize)};
        EXPECT_EQ(highlighter.highlight(stored).runs, whole);
    }
}

TEST_P(HighlightGolden, HasItsColoursFromPointToPoint)
{
    const SnapshotSource stored{TextSnapshot(text)};
    TokenRuns runs;
    for (ScanPoint point; point.location < text.size();)
        point = highlighter.scan(stored, point, point.location + 100, runs);
    EXPECT_EQ(runs, whole);
}

TEST_P(HighlightGolden, HasItsColoursBehindEachPoint)
{
    const SnapshotSource stored{TextSnapshot(text)};
    const std::vector<SyntaxToken> tokens = tokensOf(whole);
    TokenRuns ignored;
    for (ScanPoint point; point.location < text.size();) {
        const TextRange stretch = clampedRange({point.location + 50, 100}, text.size());
        const PaintedStretch painted = highlighter.highlightFrom(stored, point, stretch);
        ASSERT_EQ(painted.range, stretch);
        ASSERT_EQ(tokensOf(painted.runs), partOf(tokens, stretch)) << "from " << point.location;
        point = highlighter.scan(stored, point, point.location + 70, ignored);
    }
}

INSTANTIATE_TEST_SUITE_P(EachProgram, HighlightGolden, testing::ValuesIn(programs()),
                         [](const auto& program) { return program.param.stem().string(); });

}  // namespace
}  // namespace tavrel
