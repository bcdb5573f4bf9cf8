#include "editor/Completion.h"

#include "PaneFixture.h"

#include "editor/CompletionIndex.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

using Candidates = std::vector<std::u16string>;

struct Words {
    Candidates candidatesFor(std::u16string_view partial) const
    {
        return completionCandidates(partial, {.bufferWords = buffer,
                                              .projectWords = &project,
                                              .keywords = keywords,
                                              .types = types});
    }
    WordCounts buffer;
    WordCounts project;
    std::set<std::string> keywords;
    std::set<std::string> types;
};

TEST(Completion, AKeywordOutranksAWordSeenFourTimesAndLosesToOneSeenSix)
{
    Words words;
    words.keywords = {"while"};
    words.buffer.add("whale", 4);
    EXPECT_EQ(words.candidatesFor(u"wh"), (Candidates{u"while", u"whale"}));
    words.buffer.add("whale", 2);
    EXPECT_EQ(words.candidatesFor(u"wh"), (Candidates{u"whale", u"while"}));
}

TEST(Completion, AWordSeenFiveTimesTiesWithAKeyword)
{
    Words words;
    words.keywords = {"while"};
    words.buffer.add("whale", 5);
    words.buffer.add("whole", 5);
    EXPECT_EQ(words.candidatesFor(u"wh"), (Candidates{u"whale", u"while", u"whole"}));
}

TEST(Completion, ATypeStandsBetweenThreeAndFiveOccurrences)
{
    Words words;
    words.types = {"width_t"};
    words.buffer.add("wide", 3);
    words.buffer.add("widen", 5);
    EXPECT_EQ(words.candidatesFor(u"wid"), (Candidates{u"widen", u"width_t", u"wide"}));
}

TEST(Completion, TheSourcesAddUp)
{
    Words words;
    words.keywords = {"auto", "autumn"};
    words.types = {"auto"};
    words.buffer.add("autumn", 3);
    words.project.add("autumn", 99);
    EXPECT_EQ(words.candidatesFor(u"au"), (Candidates{u"auto", u"autumn"}));
    words.project.add("autumn", 2);
    EXPECT_EQ(words.candidatesFor(u"au"), (Candidates{u"autumn", u"auto"}));
}

TEST(Completion, KeywordsKeepTheirCaseAndMatchAnyCase)
{
    Words words;
    words.keywords = {"SELECT", "select_one"};
    EXPECT_EQ(words.candidatesFor(u"sel"), (Candidates{u"select_one", u"SELECT"}));
    EXPECT_EQ(words.candidatesFor(u"SELECT"), (Candidates{u"select_one"}));
}

TEST(Completion, KeywordsMayBeShortAndHoldOtherLetters)
{
    Words words;
    words.keywords = {"if", "\xC3\x89tat", "\xC3\xA9t\xC3\xA9"};
    EXPECT_EQ(words.candidatesFor(u"i"), (Candidates{u"if"}));
    EXPECT_EQ(words.candidatesFor(u"\u00e9t"), (Candidates{u"\u00e9t\u00e9", u"\u00c9tat"}));
}

TEST(Completion, NothingFollowsFromNothing)
{
    Words words;
    words.keywords = {"while"};
    EXPECT_EQ(words.candidatesFor(u""), Candidates{});
    EXPECT_EQ(words.candidatesFor(u"while"), Candidates{});
    EXPECT_EQ(words.candidatesFor(u"whiles"), Candidates{});
}

TEST(Completion, AcceptingIsOneReplacementOfThePartialWord)
{
    OnePane one(u"abcdef ab");
    one.pane.setSelectedRange({9, 0});
    EXPECT_EQ(one.pane.completionCandidates({7, 2}), (Candidates{u"abcdef"}));
    EXPECT_FALSE(one.pane.document().isModified);
    one.pane.acceptCompletion({7, 2}, u"abcdef");
    EXPECT_EQ(one.text(), u"abcdef abcdef");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{13, 0}));
    EXPECT_FALSE(one.pane.lastActionWasTyping());
    ASSERT_EQ(one.pane.document().history().undoStack().size(), 1U);
    one.run("undo");
    EXPECT_EQ(one.text(), u"abcdef ab");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{9, 0}));
}

TEST(Completion, TheKeyTabBehindAWordOffersWordsAndChangesNothing)
{
    OnePane one(u"abcdef ");
    one.pane.setSelectedRange({7, 0});
    one.type(u"ab");
    EXPECT_TRUE(one.pane.keyDown({.keyCode = 48, .characters = u"\t"}));
    EXPECT_EQ(one.view.partial, (TextRange{7, 2}));
    EXPECT_EQ(one.view.candidates, (Candidates{u"abcdef"}));
    EXPECT_EQ(one.text(), u"abcdef ab");
    EXPECT_EQ(one.pane.document().history().undoStack().size(), 1U);
    EXPECT_TRUE(one.pane.lastActionWasTyping());
}

TEST(Completion, CandidatesFollowTheText)
{
    OnePane one(u"abc ab");
    EXPECT_EQ(one.pane.completionCandidates({4, 2}), (Candidates{u"abc"}));
    one.pane.replaceText({0, 3}, TextSnapshot(u"abd"));
    EXPECT_EQ(one.pane.completionCandidates({4, 2}), (Candidates{u"abd"}));
    one.run("undo");
    EXPECT_EQ(one.pane.completionCandidates({4, 2}), (Candidates{u"abc"}));
}

TEST(Completion, ARangeThatIsEmptyOrPastTheTextGivesNothing)
{
    OnePane one(u"abc ab");
    EXPECT_EQ(one.pane.completionCandidates({4, 0}), Candidates{});
    EXPECT_EQ(one.pane.completionCandidates({4, 3}), Candidates{});
}

TEST(Completion, ThePaneAsksForTheWordsOfItsLanguage)
{
    struct Owner final : EditorPaneDelegate {
        void editorPaneDidSetStatus(EditorPane&, std::u16string_view) override {}
        void editorPaneDidBeep(EditorPane&) override {}
        std::optional<std::filesystem::path>
        editorPaneWantsSaveLocation(EditorPane&, const std::filesystem::path&) override
        {
            return std::nullopt;
        }
        void editorPaneDidMeetCommand(EditorPane&, const EditorCommand&) override {}
        const WordCounts* editorPaneWantsProjectWords(EditorPane&, std::string_view id) override
        {
            language = id;
            return &words;
        }
        WordCounts words;
        std::string language;
    } owner;
    owner.words.add("abacus", 1);
    OnePane one(u"ab");
    one.pane.setDelegate(&owner);
    EXPECT_EQ(one.pane.completionCandidates({0, 2}), (Candidates{u"abacus"}));
    EXPECT_EQ(owner.language, "text");
}

TEST(CompletionIndex, CountsTheWordsOfEachLanguage)
{
    test::TestFolder folder;
    test::FailingFileSystem fileSystem;
    const std::vector<std::filesystem::path> files{
        folder.write("a.cpp", "int main main"), folder.write("b.H", "main caf\xC3\xA9"),
        folder.write("c.txt", "main words"), folder.write("none", "plain")};
    const auto index = CompletionIndex::build(fileSystem, files, {{"cpp", "cpp"}, {"h", "cpp"}});
    EXPECT_EQ(index.wordsForLanguage("cpp").count("main"), 3U);
    EXPECT_EQ(index.wordsForLanguage("cpp").count("int"), 1U);
    EXPECT_EQ(index.wordsForLanguage("cpp").count("caf"), 1U);
    EXPECT_EQ(index.wordsForLanguage("text").count("main"), 1U);
    EXPECT_EQ(index.wordsForLanguage("text").count("plain"), 1U);
    EXPECT_EQ(index.wordsForLanguage("swift").size(), 0U);
}

TEST(CompletionIndex, PassesOverWhatItCannotRead)
{
    test::TestFolder folder;
    test::FailingFileSystem fileSystem;
    const std::string most(CompletionIndex::maximumFileBytes, 'a');
    const std::vector<std::filesystem::path> files{
        folder / "missing",
        folder.path(),
        folder.write("invalid", "abc \xFF"),
        folder.write("large", most + "a"),
        folder.write("just.right", most),
        folder.write("good", "word"),
    };
    const auto index = CompletionIndex::build(fileSystem, files, {});
    EXPECT_EQ(index.wordsForLanguage("text").size(), 2U);
    EXPECT_EQ(index.wordsForLanguage("text").count("word"), 1U);
    EXPECT_EQ(index.wordsForLanguage("text").count(most), 1U);
}

TEST(CompletionIndex, ReadsAtMostFiftyThousandFiles)
{
    test::TestFolder folder;
    test::FailingFileSystem fileSystem;
    std::vector<std::filesystem::path> files(CompletionIndex::maximumFileCount,
                                             folder.write("a", "abc"));
    files.push_back(folder.write("b", "last"));
    const auto index = CompletionIndex::build(fileSystem, files, {});
    EXPECT_EQ(index.wordsForLanguage("text").count("abc"), CompletionIndex::maximumFileCount);
    EXPECT_EQ(index.wordsForLanguage("text").count("last"), 0U);
}

TEST(CompletionIndex, StopsWhenItIsCancelled)
{
    test::TestFolder folder;
    test::FailingFileSystem fileSystem;
    const auto path = folder.write("a", "abc");
    int asked = 0;
    const auto index = CompletionIndex::build(fileSystem, {path, path, path}, {},
                                              [&asked] { return ++asked > 2; });
    EXPECT_EQ(index.wordsForLanguage("text").count("abc"), 2U);
}

}  // namespace
}  // namespace tavrel
