// A storage and a plain string go through the same random edits and must stay equal.

#include "editor/PlainText.h"
#include "editor/TextCursor.h"
#include "editor/TextDecoder.h"
#include "editor/TextEncoder.h"
#include "editor/TextStorage.h"
#include "editor/TextTree.h"

#include <gtest/gtest.h>

namespace tavrel {

namespace {

// The sanitizers make each edit many times as dear.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t thinning = 10;
#else
constexpr std::size_t thinning = 1;
#endif

struct Road {
    std::size_t blockSize;
    unsigned seed;
    std::size_t edits;
    std::size_t longestText;
};

void PrintTo(const Road& road, std::ostream* out)
{
    *out << "blocks of " << road.blockSize << ", seed " << road.seed;
}

std::string plainEncoded(const PlainText& plain)
{
    std::string bytes;
    std::u16string piece;
    const auto flush = [&] {
        bytes += encodedText(TextSnapshot(piece));
        piece.clear();
    };
    for (const PlainText::Unit& unit : plain.units) {
        if (unit.rawBytes.empty()) {
            piece.push_back(unit.unit);
        } else {
            flush();
            bytes += unit.rawBytes;
        }
    }
    flush();
    return bytes;
}

void expectEqual(const TextSnapshot& text, const PlainText& plain)
{
    const std::u16string units = plain.text();
    ASSERT_TRUE(text == units);
    ASSERT_EQ(text.text(), units);
    ASSERT_EQ(text.tokens({0, text.length()}), plain.tokens());
    for (std::size_t i = 0; i < units.size(); ++i)
        ASSERT_EQ(text.rawBytesAt(i).value_or(""), plain.units[i].rawBytes) << "at " << i;
    ASSERT_EQ(encodedText(text), plainEncoded(plain));
}

// Checks what the tree keeps beside its blocks, and that small blocks and nodes do not pile up.
void expectSoundNode(const TextNode& node, std::size_t blockSize, bool isRoot)
{
    TextSummary sum;
    std::size_t before = 0;
    ASSERT_LE(node.entries().size(), TextNode::maximumEntries);
    ASSERT_TRUE(isRoot || !node.entries().empty());
    for (const TextTreeEntry& entry : node.entries()) {
        if (node.height() == 0) {
            ASSERT_TRUE(entry.block && !entry.node);
            ASSERT_EQ(entry.summary, entryOf(entry.block).summary);
            ASSERT_LE(entry.summary.units, blockSize);
            if (before > 0 && std::min(before, entry.summary.units) < blockSize / 4) {
                ASSERT_GT(before + entry.summary.units, blockSize);
            }
            before = entry.summary.units;
        } else {
            ASSERT_TRUE(entry.node && !entry.block);
            ASSERT_EQ(entry.node->height() + 1, node.height());
            ASSERT_EQ(entry.summary, entry.node->summary());
            ASSERT_NO_FATAL_FAILURE(expectSoundNode(*entry.node, blockSize, false));
            const std::size_t count = entry.node->entries().size();
            if (before > 0 && std::min(before, count) < TextNode::maximumEntries / 4) {
                ASSERT_GT(before + count, TextNode::maximumEntries);
            }
            before = count;
        }
        sum = sum + entry.summary;
    }
    ASSERT_EQ(sum, node.summary());
}

void expectSoundTree(const TextSnapshot& text, std::size_t blockSize)
{
    if (!text.isEmpty())
        expectSoundNode(*text.root(), blockSize, true);
}

class TextStorageRandom : public testing::TestWithParam<Road> {
protected:
    TextSnapshot randomText(std::size_t longest)
    {
        const std::size_t blockSize = random.number(1) == 0 ? 3 : GetParam().blockSize;
        if (random.number(3) > 0)
            return TextSnapshot(random.units(longest), blockSize);
        return decodedText(random.bytes(longest), blockSize);
    }

    RandomTexts random{GetParam().seed};
};

}  // namespace

TEST_P(TextStorageRandom, StaysEqualToAPlainString)
{
    const Road road = GetParam();
    SCOPED_TRACE(testing::PrintToString(road));
    TextStorage storage(randomText(road.longestText), road.blockSize);
    std::u16string plain = storage.snapshot().text();
    for (std::size_t i = 0; i < road.edits; ++i) {
        // A text that has grown long is cut more than it grows.
        const bool isLong = plain.size() > road.longestText;
        const TextRange range = random.range(plain.size(), isLong ? 60 : 8);
        const std::u16string inserted = random.units(random.number(9) == 0 ? 40 : 6);
        storage.replace(range, inserted);
        plain.replace(range.location, range.length, inserted);
        ASSERT_EQ(storage.length(), plain.size());
        if (i % 64 == 0) {
            const TextSnapshot& text = storage.snapshot();
            ASSERT_TRUE(text == plain) << "after edit " << i;
            ASSERT_NO_FATAL_FAILURE(expectSoundTree(text, road.blockSize)) << "after edit " << i;
            const std::vector<std::size_t> starts = plainLineStarts(plain);
            const std::vector<std::size_t> lfStarts = plainLfLineStarts(plain);
            for (int k = 0; k < 4; ++k) {
                ASSERT_NO_FATAL_FAILURE(expectLines(text, plain, starts, lfStarts,
                                                    random.range(plain.size(), 100),
                                                    random.number(starts.size())))
                    << "after edit " << i;
            }
        }
    }
}

TEST_P(TextStorageRandom, KeepsTokensAndRawBytesWithTheirUnits)
{
    const Road road = GetParam();
    SCOPED_TRACE(testing::PrintToString(road));
    TextStorage storage({}, road.blockSize);
    PlainText plain;
    for (std::size_t i = 0; i < road.edits / 50; ++i) {
        const bool isLong = plain.length() > road.longestText / 4;
        const TextRange range = random.range(plain.length(), isLong ? 80 : 8);
        switch (random.number(3)) {
        case 0: {
            TokenRuns runs;
            while (runs.length() < range.length)
                runs.append(std::min(random.number(5), range.length - runs.length()),
                            random.token());
            storage.setTokens(range.location, runs);
            for (std::size_t k = 0; k < range.length; ++k)
                plain.units[range.location + k].token = runs.tokenAt(k);
            break;
        }
        case 1: {
            const TextSnapshot moved = storage.snapshot().slice(random.range(plain.length(), 30));
            storage.replace(range, moved);
            plain.replace(range, moved);
            break;
        }
        default: {
            const TextSnapshot text = randomText(10);
            storage.replace(range, text);
            plain.replace(range, text);
        }
        }
        if (i % 16 == 0) {
            ASSERT_NO_FATAL_FAILURE(expectEqual(storage.snapshot(), plain)) << "after edit " << i;
        }
    }
}

TEST_P(TextStorageRandom, AppliesABatchAsItsEditsOneByOne)
{
    const Road road = GetParam();
    SCOPED_TRACE(testing::PrintToString(road));
    TextStorage storage(randomText(road.longestText), road.blockSize);
    for (std::size_t i = 0; i < road.edits / 200; ++i) {
        const TextSnapshot before = storage.snapshot();
        std::vector<TextEdit> edits;
        std::size_t location = random.number(20);
        while (location <= before.length()) {
            const TextRange range{location, std::min(random.number(random.number(5) == 0 ? 200 : 4),
                                                     before.length() - location)};
            edits.push_back({range, randomText(random.number(20) == 0 ? 50 : 3)});
            location = range.end() + random.number(random.number(3) * 40);
            if (random.number(30) == 0)
                break;
        }
        std::u16string plain = before.text();
        for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
            const std::u16string inserted = edit->replacement.text();
            plain.replace(edit->range.location, edit->range.length, inserted);
        }
        storage.apply(edits);
        ASSERT_TRUE(storage.snapshot() == plain) << "after batch " << i;
        ASSERT_TRUE(storage.snapshot() == TextSnapshot(plain));
        ASSERT_EQ(storage.snapshot().lineCount(), plainLineStarts(plain).size());
        ASSERT_EQ(storage.snapshot().lfLineCount(), plainLfLineStarts(plain).size());
        ASSERT_NO_FATAL_FAILURE(expectSoundTree(storage.snapshot(), road.blockSize));
        if (storage.length() > road.longestText)
            storage.replace(random.range(storage.length(), storage.length()), u"");
        else if (storage.length() < road.longestText / 4)
            storage.replace({random.number(storage.length()), 0}, randomText(road.longestText));
    }
}

TEST_P(TextStorageRandom, SlicesAndReadersSeeTheSameUnits)
{
    const Road road = GetParam();
    SCOPED_TRACE(testing::PrintToString(road));
    TextStorage storage(randomText(road.longestText), road.blockSize);
    for (std::size_t i = 0; i < road.edits / 200; ++i) {
        storage.replace(random.range(storage.length(), 20), random.units(20));
        const TextSnapshot text = storage.snapshot();
        const std::u16string plain = text.text();
        const TextRange range = random.range(plain.size(), plain.size());
        const std::u16string part = plain.substr(range.location, range.length);
        ASSERT_EQ(text.text(range), part);
        const TextSnapshot slice = text.slice(range);
        ASSERT_TRUE(slice == part);
        ASSERT_EQ(slice.lineCount(), plainLineStarts(part).size());
        ASSERT_EQ(slice.tokens({0, slice.length()}), text.tokens(range));
        std::u16string chunks;
        text.forEachChunk(range, [&](std::u16string_view chunk) {
            chunks += chunk;
            return true;
        });
        ASSERT_EQ(chunks, part);
        TextCursor cursor(text, range.location);
        std::u16string read;
        while (cursor.position() < range.end())
            read.push_back(cursor.next());
        ASSERT_EQ(read, part);
        while (cursor.position() > range.location) {
            ASSERT_EQ(cursor.previous(), read.back());
            read.pop_back();
        }
        for (int k = 0; k < 10; ++k) {
            const std::size_t location = random.number(plain.size());
            const char16_t expected = location < plain.size() ? plain[location] : u'\0';
            ASSERT_EQ(text.unitAt(location), expected);
            ASSERT_EQ(cursor.unitAt(location), expected);
        }
        if (storage.length() > road.longestText)
            storage.replace(random.range(storage.length(), storage.length()), u"");
    }
}

TEST_P(TextStorageRandom, LeavesEarlierSnapshotsAsTheyAre)
{
    const Road road = GetParam();
    SCOPED_TRACE(testing::PrintToString(road));
    TextStorage storage(randomText(500), road.blockSize);
    std::vector<std::pair<TextSnapshot, std::u16string>> kept;
    for (std::size_t i = 0; i < 300; ++i) {
        kept.emplace_back(storage.snapshot(), storage.snapshot().text());
        storage.replace(random.range(storage.length(), 30), random.units(25));
        storage.setTokens(random.number(storage.length()), TokenRuns(10));
    }
    for (const auto& [snapshot, text] : kept)
        ASSERT_TRUE(snapshot == text);
}

INSTANTIATE_TEST_SUITE_P(Roads, TextStorageRandom,
                         testing::Values(Road{1, 1, 200'000 / thinning, 600},
                                         Road{2, 5, 100'000 / thinning, 1000},
                                         Road{7, 2, 300'000 / thinning, 2000},
                                         Road{128, 4, 100'000 / thinning, 20000},
                                         Road{65536, 3, 300'000 / thinning, 6000}));

}  // namespace tavrel
