// What a document shows must be what one scan of its whole text gives, however it was edited and
// wherever it was looked at.

#include "editor/DocumentColoring.h"

#include "editor/SnapshotSource.h"
#include "highlight/ShippedModes.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/ManualWorkQueue.h"
#include "platform/ThreadPool.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

namespace tavrel {

namespace {

std::string goldenText(const std::string& name)
{
    std::ifstream file(std::string(TAVREL_GOLDEN_FOLDER) + "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::u16string repeated(const std::string& text, std::size_t length)
{
    std::u16string result;
    while (result.size() < length)
        result.append(text.begin(), text.end());
    return result;
}

LanguageMode genericMode()
{
    LanguageMode mode = LanguageMode::plain();
    mode.id = "made-up";
    mode.keywords = {"loop", "stop"};
    mode.lineComments = {"#"};
    mode.blockComments = {{"(*", "*)"}};
    mode.stringDelimiters = {"\""};
    mode.punctuation = LanguageMode::defaultPunctuation;
    return mode;
}

class DocumentColoringTest : public testing::Test {
protected:
    void open(const LanguageMode& mode, const std::u16string& text)
    {
        mode_ = std::make_shared<const LanguageMode>(mode);
        reference_.emplace(*mode_);
        storage_.replace({0, storage_.length()}, text);
        coloring_.setLanguage(mode_, mainQueue_, &workQueue_);
    }

    void show(std::size_t location, std::size_t length = 3000)
    {
        shown_ = clampedRange({location, length}, storage_.length());
        coloring_.show(this, shown_);
    }

    void replace(TextRange range, std::u16string_view text)
    {
        storage_.replace(range, text);
        show(shown_.location);
    }

    /// Lets the scans in the background come to their end.
    void settle()
    {
        do
            mainQueue_.advance(1);
        while (workQueue_.runOne());
    }

    TokenRuns expected() const
    {
        return reference_->highlight(SnapshotSource(storage_.snapshot()), shown_).runs;
    }
    TokenRuns shownTokens() const { return storage_.snapshot().tokens(shown_); }

    SimulatedClock clock_;
    ManualMainQueue mainQueue_{clock_};
    ManualWorkQueue workQueue_;
    TextStorage storage_;
    DocumentColoring coloring_{storage_};
    std::shared_ptr<const LanguageMode> mode_;
    std::optional<LexicalHighlighter> reference_;
    TextRange shown_;
};

struct Journey {
    std::string language;
    std::string sample;
    unsigned seed;
};

void PrintTo(const Journey& journey, std::ostream* out)
{
    *out << journey.language << ", seed " << journey.seed;
}

class DocumentColoringJourneyTest : public DocumentColoringTest,
                                    public testing::WithParamInterface<Journey> {};

}  // namespace

TEST_F(DocumentColoringTest, ColorsWhatIsShownAtOnce)
{
    open(shippedMode("cpp"), repeated(goldenText("cpp.cpp"), 100'000));
    show(0);
    EXPECT_EQ(shownTokens(), expected());
    // The text is one scan away from being known, and nothing else has tokens.
    EXPECT_FALSE(coloring_.isKnownThroughout());
    EXPECT_EQ(storage_.snapshot().tokens({50'000, 1000}), TokenRuns(1000));
}

TEST_F(DocumentColoringTest, KnowsTheWholeTextAfterAScanInTheBackground)
{
    open(shippedMode("cpp"), repeated(goldenText("cpp.cpp"), 3'000'000));
    show(0);
    settle();
    EXPECT_TRUE(coloring_.isKnownThroughout());
    show(2'900'000);
    EXPECT_EQ(shownTokens(), expected());
}

TEST_F(DocumentColoringTest, ColorsAPlaceThatNoScanHasComeToByWhatStandsBeforeIt)
{
    open(shippedMode("cpp"), repeated(goldenText("cpp.cpp"), 3'000'000));
    show(2'000'000);
    EXPECT_EQ(shownTokens(), expected());
}

TEST_F(DocumentColoringTest, CorrectsThatPlaceWhenItsTrueStateIsKnown)
{
    open(shippedMode("cpp"), u"/*" + repeated(goldenText("python.py"), 1'000'000) + u"*/ int a;");
    show(500'000);
    EXPECT_NE(shownTokens(), expected());
    settle();
    EXPECT_EQ(shownTokens(), expected());
    EXPECT_EQ(storage_.snapshot().tokenAt(500'000), SyntaxToken::comment);
    show(storage_.length() - 6);
    EXPECT_EQ(shownTokens(), expected());
}

TEST_F(DocumentColoringTest, AnEditBehindWhichNothingChangesNeedsNoScanInTheBackground)
{
    open(shippedMode("cpp"), repeated(goldenText("cpp.cpp"), 3'000'000));
    show(1'500'000);
    settle();
    for (const char16_t unit : std::u16string_view(u"int fortyTwo = 42; // why\n")) {
        replace({1'501'000, 0}, {&unit, 1});
        ASSERT_TRUE(coloring_.isKnownThroughout());
        ASSERT_EQ(shownTokens(), expected());
    }
}

TEST_F(DocumentColoringTest, AnOpenedCommentReachesWhatIsShownAtOnceAndTheRestLater)
{
    std::u16string text = repeated(goldenText("cpp.cpp"), 2'000'000);
    std::erase(text, u'*');  // Nothing ends it.
    open(shippedMode("cpp"), text);
    show(1'000'000);
    settle();
    replace({1'000'100, 0}, u"\n/*");
    EXPECT_EQ(shownTokens(), expected());
    EXPECT_FALSE(coloring_.isKnownThroughout());
    settle();
    EXPECT_TRUE(coloring_.isKnownThroughout());
    show(1'900'000);
    EXPECT_EQ(storage_.snapshot().tokenAt(1'900'100), SyntaxToken::comment);
    show(1'000'000);
    replace({1'000'101, 2}, u"");
    EXPECT_EQ(shownTokens(), expected());
    settle();
    show(1'900'000);
    EXPECT_EQ(shownTokens(), expected());
}

TEST_F(DocumentColoringTest, AScanThatAnEditOvertakesChangesNothing)
{
    open(shippedMode("cpp"), repeated(goldenText("cpp.cpp"), 2'000'000));
    show(0);
    mainQueue_.run();
    EXPECT_TRUE(workQueue_.runOne());  // Its report waits.
    replace({0, 0}, u"/* ");
    settle();
    EXPECT_TRUE(coloring_.isKnownThroughout());
    EXPECT_EQ(shownTokens(), expected());
}

TEST_F(DocumentColoringTest, FollowsTheLanguage)
{
    open(shippedMode("cpp"), u"if x: # int");
    show(0);
    const TokenRuns asCpp = shownTokens();
    EXPECT_EQ(asCpp, expected());
    mode_ = std::make_shared<const LanguageMode>(shippedMode("python"));
    reference_.emplace(*mode_);
    coloring_.setLanguage(mode_, mainQueue_, &workQueue_);
    EXPECT_EQ(shownTokens(), expected());
    EXPECT_NE(shownTokens(), asCpp);
    mode_ = std::make_shared<const LanguageMode>(LanguageMode::plain());
    coloring_.setLanguage(mode_, mainQueue_, &workQueue_);
    EXPECT_EQ(shownTokens(), TokenRuns(11));
}

TEST_F(DocumentColoringTest, PaintsTheLinksOfAPlainText)
{
    open(LanguageMode::plain(), u"see http://example.org/a\nand more");
    show(0);
    EXPECT_EQ(shownTokens(), expected());
    EXPECT_NE(shownTokens(), TokenRuns(storage_.length()));
    replace({4, 1}, u"");  // "ttp://"
    EXPECT_EQ(shownTokens(), TokenRuns(storage_.length()));
}

TEST_F(DocumentColoringTest, FollowsTheEditsOfAPlainText)
{
    open(LanguageMode::plain(), repeated("see http://example.org/a and more\n", 100'000));
    show(50'000);
    EXPECT_EQ(shownTokens(), expected());
    for (const std::size_t location : {50'001, 51'004, 52'000, 49'990}) {
        replace({location, 0}, u" ");
        EXPECT_EQ(shownTokens(), expected()) << location;
        replace({location, 1}, u"");
        EXPECT_EQ(shownTokens(), expected()) << location;
    }
}

TEST_F(DocumentColoringTest, ALanguageOfTheUsersOwnIsScannedWholeAWhileAfterTheEdit)
{
    open(genericMode(), u"(* " + repeated("some talk\n", 100'000) + u"*) loop");
    show(60'000);
    EXPECT_EQ(storage_.snapshot().tokenAt(60'001), SyntaxToken::foreground);
    settle();
    EXPECT_EQ(storage_.snapshot().tokenAt(60'001), SyntaxToken::comment);
    replace({0, 2}, u"");
    mainQueue_.advance(0.34);
    EXPECT_FALSE(workQueue_.runOne());
    mainQueue_.advance(0.01);
    EXPECT_TRUE(workQueue_.runOne());
    mainQueue_.run();
    EXPECT_EQ(shownTokens(), expected());
    EXPECT_EQ(storage_.snapshot().tokenAt(60'001), SyntaxToken::foreground);
}

TEST_F(DocumentColoringTest, KeepsTokensNearTheViewOnly)
{
    open(shippedMode("cpp"), repeated(goldenText("cpp.cpp"), 6'000'000));
    for (std::size_t location = 0; location < 6'000'000; location += 2000)
        show(location);
    std::size_t units = 0;
    const TokenRuns all = storage_.snapshot().tokens({0, storage_.length()});
    EXPECT_EQ(all.runs().front().token, SyntaxToken::foreground);
    EXPECT_GT(all.runs().front().length, 4'000'000U);
    units = all.runs().front().length;
    show(0);
    EXPECT_EQ(shownTokens(), expected());
    EXPECT_GT(units, 0U);
}

TEST_F(DocumentColoringTest, LaterResultsFindADocumentThatHasGone)
{
    {
        TextStorage storage(TextSnapshot(repeated(goldenText("cpp.cpp"), 100'000)));
        DocumentColoring coloring(storage);
        coloring.setLanguage(std::make_shared<const LanguageMode>(shippedMode("cpp")), mainQueue_,
                             &workQueue_);
        coloring.show(this, {0, 1000});
        mainQueue_.run();
    }
    EXPECT_TRUE(workQueue_.runOne());
    mainQueue_.run();
}

TEST_F(DocumentColoringTest, ScansOnAnotherThreadWhileTheTextChanges)
{
    ThreadPool pool(2);
    TextStorage storage(TextSnapshot(repeated(goldenText("cpp.cpp"), 1'000'000)));
    DocumentColoring coloring(storage);
    coloring.setLanguage(std::make_shared<const LanguageMode>(shippedMode("cpp")), mainQueue_,
                         &pool);
    const TextRange shown{500'000, 3000};
    coloring.show(this, shown);
    for (int edit = 0; edit < 40; ++edit) {
        mainQueue_.advance(0.001);
        storage.replace({500'100, 0}, edit % 2 == 0 ? u"/*" : u"*/");
        coloring.show(this, shown);
    }
    mainQueue_.advance(0.001);
    ASSERT_TRUE(mainQueue_.runUntil([&] { return coloring.isKnownThroughout(); }));
    const LexicalHighlighter highlighter(shippedMode("cpp"));
    EXPECT_EQ(storage.snapshot().tokens(shown),
              highlighter.highlight(SnapshotSource(storage.snapshot()), shown).runs);
}

TEST_F(DocumentColoringTest, SeveralViewersAreColoredEach)
{
    open(shippedMode("cpp"), repeated(goldenText("cpp.cpp"), 200'000));
    const int other = 0;
    coloring_.show(&other, {100'000, 2000});
    show(0);
    settle();
    storage_.replace({100'500, 0}, u"\"\n");
    shown_ = {100'000, 2000};
    EXPECT_EQ(shownTokens(), expected());
    coloring_.hide(&other);
    storage_.replace({150'500, 0}, u"\"\n");
    shown_ = {0, 2000};
    EXPECT_EQ(shownTokens(), expected());
}

TEST_P(DocumentColoringJourneyTest, ShowsWhatOneScanOfTheWholeTextGives)
{
    const Journey& journey = GetParam();
    std::mt19937 random(journey.seed);
    const auto below = [&](std::size_t bound) { return bound ? random() % bound : 0; };
    open(shippedMode(journey.language), repeated(goldenText(journey.sample), 60'000));
    show(0);
    const std::u16string_view pieces[] = {u"/*",     u"*/", u"\"",     u"'",    u"`",   u"R\"x(",
                                          u")x\"",   u"\n", u"```\n",  u"<!--", u"-->", u"a",
                                          u" ",      u"(",  u"<",      u"//",   u"#",   u"=begin\n",
                                          u"\"\"\"", u"\\", u"class ", u"{"};
    for (int step = 0; step < 300; ++step) {
        if (below(3) == 0)
            show(below(storage_.length()));
        const std::size_t near =
            below(2) ? shown_.location + below(3000) : below(storage_.length());
        const std::size_t location = std::min(near, storage_.length());
        switch (below(5)) {
        case 0:
            replace({location, below(40)}, u"");
            break;
        case 1:
            replace({location, below(3000)}, repeated(goldenText(journey.sample), 1000));
            break;
        case 2: {
            const TextEdit edits[] = {
                {{location / 2, 1}, TextSnapshot(pieces[below(std::size(pieces))])},
                {{location / 2 + 50, 2}, TextSnapshot(pieces[below(std::size(pieces))])}};
            if (edits[1].range.end() <= storage_.length())
                storage_.apply(edits);
            show(shown_.location);
            break;
        }
        default:
            replace({location, 0}, pieces[below(std::size(pieces))]);
        }
        if (below(4) == 0)
            settle();
        if (coloring_.isKnownThroughout()) {
            ASSERT_EQ(shownTokens(), expected()) << "step " << step;
        }
    }
    settle();
    ASSERT_TRUE(coloring_.isKnownThroughout());
    for (std::size_t location = 0; location < storage_.length(); location += 2500) {
        show(location);
        ASSERT_EQ(shownTokens(), expected()) << "at " << location;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Languages, DocumentColoringJourneyTest,
    testing::Values(Journey{"cpp", "cpp.cpp", 1}, Journey{"cpp", "cpp.cpp", 2},
                    Journey{"javascript", "javascript.js", 3}, Journey{"python", "python.py", 4},
                    Journey{"markdown", "markdown.md", 5}, Journey{"html", "html.html", 6},
                    Journey{"rust", "rust.rs", 7}, Journey{"shell", "shell.sh", 8},
                    Journey{"perl", "perl.pl", 9}, Journey{"yaml", "yaml.yaml", 10},
                    Journey{"css", "css.css", 11}, Journey{"csharp", "csharp.cs", 12},
                    Journey{"swift", "swift.swift", 13}, Journey{"sql", "sql.sql", 14},
                    Journey{"toml", "toml.toml", 15}, Journey{"kotlin", "kotlin.kt", 16}),
    [](const auto& row) { return row.param.language + std::to_string(row.param.seed); });

}  // namespace tavrel
