#include "editor/TextChange.h"

#include "editor/PlainText.h"
#include "editor/TextStorage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavrel {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Recorder : public TextStorageObserver {
public:
    void storageDidChange(const TextStorage&, std::span<const TextChange> changes) override
    {
        lists.emplace_back(changes.begin(), changes.end());
        log += 't';
    }
    void storageDidChangeTokens(const TextStorage&, TextRange range) override
    {
        painted.push_back(range);
        log += 'p';
    }

    std::vector<std::vector<TextChange>> lists;
    std::vector<TextRange> painted;
    std::string log;
};

// Copies the new stretches out of `after`, so it equals `after` only when the rest is unchanged.
std::u16string changed(std::u16string_view before, std::u16string_view after,
                       std::span<const TextChange> changes)
{
    std::u16string result;
    std::size_t done = 0;
    for (const TextChange& change : changes) {
        EXPECT_GE(change.oldRange.location, done);
        EXPECT_LE(change.oldRange.end(), before.size());
        result += before.substr(done, change.oldRange.location - done);
        result += after.substr(std::min(result.size(), after.size()), change.newLength);
        done = change.oldRange.end();
    }
    return result += before.substr(std::min(done, before.size()));
}

}  // namespace

TEST(ComposedChanges, KeepThoseApartThatDoNotTouch)
{
    const std::vector<TextChange> first{{{5, 2}, 4}};
    EXPECT_THAT(composedChanges(first, std::vector<TextChange>{{{1, 1}, 0}, {{12, 0}, 3}}),
                ElementsAre(TextChange{{1, 1}, 0}, TextChange{{5, 2}, 4}, TextChange{{10, 0}, 3}));
}

TEST(ComposedChanges, JoinThoseThatOverlapOrTouch)
{
    const std::vector<TextChange> typed{{{5, 0}, 1}};
    EXPECT_THAT(composedChanges(typed, std::vector<TextChange>{{{6, 0}, 1}}),
                ElementsAre(TextChange{{5, 0}, 2}));
    EXPECT_THAT(composedChanges(typed, std::vector<TextChange>{{{3, 6}, 0}}),
                ElementsAre(TextChange{{3, 5}, 0}));
    const std::vector<TextChange> two{{{2, 1}, 1}, {{8, 2}, 5}};
    EXPECT_THAT(composedChanges(two, std::vector<TextChange>{{{2, 7}, 1}}),
                ElementsAre(TextChange{{2, 8}, 5}));
}

TEST(ComposedChanges, DropWhatWasInsertedAndRemoved)
{
    const std::vector<TextChange> typed{{{5, 0}, 3}};
    EXPECT_THAT(composedChanges(typed, std::vector<TextChange>{{{5, 3}, 0}}), IsEmpty());
}

TEST(ComposedChanges, LeadFromTheFirstTextToTheLast)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTexts random(seed);
        // Each unit is unlike any other, so that a unit out of place is seen.
        char16_t next = 0x4000;
        const auto freshUnits = [&](std::size_t count) {
            std::u16string units;
            for (; count > 0; --count)
                units.push_back(next++);
            return units;
        };
        const std::u16string before = freshUnits(200);
        std::u16string plain = before;
        TextStorage storage(TextSnapshot(before), 32);
        Recorder recorder;
        storage.addObserver(&recorder);
        {
            const TextStorageBatch outer(storage);
            for (std::size_t i = random.number(40); i > 0; --i) {
                const TextStorageBatch inner(storage);
                // Runs of single edits, which wait for each other.
                std::size_t place = random.number(storage.length());
                const bool leftwards = random.number(1) == 0;
                for (std::size_t k = random.number(8); k > 0; --k) {
                    const TextRange range =
                        clampedRange({place, random.number(3)}, storage.length());
                    const std::u16string inserted = freshUnits(random.number(3));
                    storage.replace(range, inserted);
                    plain.replace(range.location, range.length, inserted);
                    ASSERT_EQ(storage.length(), plain.size());
                    place = leftwards ? range.location - std::min(range.location, random.number(6))
                                      : range.location + inserted.size() + random.number(3);
                }
                if (random.number(1) == 0) {
                    ASSERT_TRUE(storage.snapshot() == plain);
                }
                std::vector<TextEdit> edits;
                std::size_t location = random.number(storage.length());
                for (std::size_t k = random.number(4); k > 0 && location <= storage.length(); --k) {
                    const TextRange range{location,
                                          std::min(random.number(6), storage.length() - location)};
                    edits.push_back({range, TextSnapshot(freshUnits(random.number(5)))});
                    location = range.end() + random.number(9);
                }
                storage.apply(edits);
                for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
                    plain.replace(edit->range.location, edit->range.length,
                                  edit->replacement.text());
            }
            ASSERT_TRUE(recorder.lists.empty());
        }
        const std::u16string after = storage.snapshot().text();
        ASSERT_EQ(after, plain);
        ASSERT_LE(recorder.lists.size(), 1U);
        if (recorder.lists.empty())
            ASSERT_EQ(after, before);
        else
            ASSERT_EQ(changed(before, after, recorder.lists.front()), after);
    }
}

TEST(TextStorageObservers, HearOfEachEditOutsideABatch)
{
    TextStorage storage(TextSnapshot(u"hello world"));
    Recorder recorder;
    storage.addObserver(&recorder);
    storage.replace({0, 5}, u"bye");
    storage.replace({3, 0}, u"");
    const std::vector<TextEdit> edits{
        {{0, 0}, TextSnapshot(u"x")}, {{0, 0}, TextSnapshot(u"yz")}, {{4, 2}, {}}};
    storage.apply(edits);
    ASSERT_EQ(recorder.lists.size(), 2U);
    EXPECT_THAT(recorder.lists[0], ElementsAre(TextChange{{0, 5}, 3}));
    EXPECT_THAT(recorder.lists[1],
                ElementsAre(TextChange{{0, 0}, 1}, TextChange{{0, 0}, 2}, TextChange{{4, 2}, 0}));
    EXPECT_EQ(storage.snapshot().text(), u"xyzbye rld");
    EXPECT_EQ(storage.revision(), 2U);
}

TEST(TextStorageObservers, HearOfPaintingBehindTheTextOfABatch)
{
    TextStorage storage(TextSnapshot(u"hello world"));
    Recorder recorder;
    storage.addObserver(&recorder);
    TokenRuns keyword;
    keyword.append(5, SyntaxToken::keyword);
    storage.setTokens(6, keyword);
    EXPECT_THAT(recorder.painted, ElementsAre(TextRange{6, 5}));
    EXPECT_EQ(storage.revision(), 0U);
    EXPECT_EQ(storage.tokenRevision(), 1U);
    {
        const TextStorageBatch batch(storage);
        storage.setTokens(9, keyword);
        storage.setTokens(1, TokenRuns(2));
        storage.replace({0, 0}, u"oh ");
        EXPECT_EQ(recorder.log, "p");
    }
    EXPECT_EQ(recorder.log, "ptp");
    EXPECT_EQ(recorder.painted.back(), (TextRange{0, 14}));
    storage.setTokens(14, keyword);
    EXPECT_EQ(recorder.log, "ptp");
}

TEST(TextStorageObservers, MayLeaveWhileTheyAreTold)
{
    class Leaver : public TextStorageObserver {
    public:
        Leaver(TextStorage& storage, TextStorageObserver& other) : storage_(storage), other_(other)
        {
        }
        void storageDidChange(const TextStorage&, std::span<const TextChange>) override
        {
            storage_.removeObserver(this);
            storage_.removeObserver(&other_);
        }

    private:
        TextStorage& storage_;
        TextStorageObserver& other_;
    };
    TextStorage storage;
    Recorder recorder;
    Leaver leaver(storage, recorder);
    storage.addObserver(&leaver);
    storage.addObserver(&recorder);
    storage.replace({0, 0}, u"a");
    EXPECT_TRUE(recorder.lists.empty());
}

}  // namespace tavrel
