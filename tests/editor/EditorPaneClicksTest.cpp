#include "PaneFixture.h"

#include "editor/ColorLiterals.h"
#include "editor/LinkAtOffset.h"

#include <gtest/gtest.h>
#include <limits>

namespace tavrel {
namespace {

// --- Lines of search results

class EditorPaneResultClickTest : public PaneFilesTest {
protected:
    void SetUp() override
    {
        const std::string target = folder.write("a.txt", "first\n\nthird\n");
        results =
            "=== 1 matches in 1 files for \"x\"\n\n" + target + ":3:\n     2: \n>    3: third\n";
        pane.files().openSearchResults(folder.write("results.txt", results));
    }
    bool click(std::string_view on) { return pane.clickedAt(results.find(on)); }

    std::string results;
};

TEST_F(EditorPaneResultClickTest, AHeadingOpensItsFileAtItsLine)
{
    ASSERT_TRUE(pane.activeTab().isSearchResults);
    EXPECT_TRUE(click("a.txt:3"));
    EXPECT_EQ(pane.document().url, folder / "a.txt");
    EXPECT_EQ(pane.tabs().size(), 2U);
    EXPECT_EQ(pane.selectedRange(), (TextRange{7, 5}));
    EXPECT_EQ(view.visible, (TextRange{7, 5}));
}

TEST_F(EditorPaneResultClickTest, AResultLineOpensTheFileAboveItAtItsOwnLine)
{
    EXPECT_TRUE(click("2: "));
    EXPECT_EQ(pane.document().url, folder / "a.txt");
    EXPECT_EQ(pane.selectedRange(), (TextRange{6, 0}));  // A blank line.
    pane.selectTab(0);
    EXPECT_TRUE(click("third"));
    EXPECT_EQ(pane.selectedRange(), (TextRange{7, 5}));
}

TEST_F(EditorPaneResultClickTest, AClickBehindTheTextIsOneOnTheLastLine)
{
    EXPECT_TRUE(pane.clickedAt(results.size() + 10));
    EXPECT_EQ(pane.selectedRange(), (TextRange{7, 5}));
}

TEST_F(EditorPaneResultClickTest, OtherLinesAndOtherTabsTakeNoClick)
{
    EXPECT_FALSE(click("matches"));
    pane.activeTab().isSearchResults = false;
    EXPECT_FALSE(click("a.txt:3"));
    EXPECT_EQ(pane.tabs().size(), 1U);
}

TEST_F(EditorPaneResultClickTest, AFileThatHasGoneTakesNoClick)
{
    std::filesystem::remove(folder / "a.txt");
    EXPECT_FALSE(click("a.txt:3"));
    EXPECT_EQ(pane.tabs().size(), 1U);
    std::filesystem::create_directory(folder / "a.txt");
    EXPECT_FALSE(click("a.txt:3"));  // It cannot be opened.
}

TEST_F(EditorPaneResultClickTest, TheOwnerChoosesThePane)
{
    struct Owner final : EditorPaneDelegate {
        void editorPaneDidSetStatus(EditorPane&, std::u16string_view) override {}
        void editorPaneDidBeep(EditorPane&) override {}
        std::optional<std::filesystem::path>
        editorPaneWantsSaveLocation(EditorPane&, const std::filesystem::path&) override
        {
            return {};
        }
        void editorPaneDidMeetCommand(EditorPane&, const EditorCommand&) override {}
        EditorPane* editorPaneWantsFileShown(EditorPane&,
                                             const std::filesystem::path& path) override
        {
            target->openLocation(path);
            return target;
        }
        EditorPane* target = nullptr;
    } owner;
    TestPane other(world());
    owner.target = &other.pane;
    pane.setDelegate(&owner);
    EXPECT_TRUE(click("third"));
    EXPECT_EQ(other.pane.selectedRange(), (TextRange{7, 5}));
    EXPECT_EQ(pane.tabs().size(), 1U);
    pane.setDelegate(nullptr);
    EXPECT_FALSE(click("third"));
}

TEST(EditorPaneSelectLine, BringsAnyNumberIntoTheText)
{
    OnePane one(u"one\ntwo\r\nthree");
    one.pane.storeCursors({1, 2});
    one.pane.selectLine(2);
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{4, 3}));
    EXPECT_FALSE(one.pane.hasSecondaryCursors());
    one.pane.selectLine(0);
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{0, 3}));
    one.pane.selectLine(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{0, 3}));
    one.pane.selectLine(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{9, 5}));
}

// --- Links

std::optional<TextRange> link(std::u16string_view text, std::size_t offset)
{
    return linkAtOffset(TextSnapshot(text), offset);
}

TEST(LinkAtOffset, IsTheTrimmedAddressThatHoldsTheOffset)
{
    const std::u16string_view text = u"(see https://a.b/c).\nhttp://d.e, HTTP://f";
    EXPECT_EQ(link(text, 5), (TextRange{5, 13}));
    EXPECT_EQ(link(text, 17), (TextRange{5, 13}));
    EXPECT_EQ(link(text, 18), std::nullopt);  // What was trimmed.
    EXPECT_EQ(link(text, 4), std::nullopt);
    EXPECT_EQ(link(text, 21), (TextRange{21, 10}));
    EXPECT_EQ(link(text, 31), std::nullopt);
    EXPECT_EQ(link(text, 33), std::nullopt);  // Eight units are too few.
    EXPECT_EQ(link(text, 99), std::nullopt);
    EXPECT_EQ(link(u"", 0), std::nullopt);
}

TEST(LinkAtOffset, EndsWhereAddressesEnd)
{
    EXPECT_EQ(link(u"<http://a.b>", 3), (TextRange{1, 10}));
    EXPECT_EQ(link(u"\"http://a.b\"", 3), (TextRange{1, 10}));
    EXPECT_EQ(link(u"http://a.b\u2028c", 3), (TextRange{0, 10}));
    EXPECT_EQ(link(u"xhttps://a.b", 3), (TextRange{1, 11}));
    EXPECT_EQ(link(u"xhttps://a.b", 0), std::nullopt);
}

TEST(LinkAtOffset, LooksAtNoMoreThanASurroundingStretch)
{
    const std::u16string longLine = std::u16string(1'000'000, u'x') + u"http://a.b";
    EXPECT_EQ(link(longLine, 1'000'003), (TextRange{1'000'000, 10}));
    EXPECT_EQ(link(u"http://a.b" + longLine, 500'000), std::nullopt);
}

TEST(EditorPaneLinks, AreThoseOfPlainTextAlone)
{
    OnePane one(u"see https://a.b/c.");
    EXPECT_EQ(one.pane.linkAt(6), u"https://a.b/c");
    EXPECT_EQ(one.pane.linkAt(1), std::nullopt);
    one.pane.activeTab().isSearchResults = true;
    EXPECT_EQ(one.pane.linkAt(6), std::nullopt);
    one.pane.activeTab().isSearchResults = false;
    auto other = std::make_shared<LanguageMode>(LanguageMode::plain());
    other->id = "cpp";
    one.pane.activeTab().language = other;
    EXPECT_EQ(one.pane.linkAt(6), std::nullopt);
}

// --- Colours

std::optional<TextRange> literal(std::u16string_view text, std::size_t offset)
{
    const auto found = colorLiteralAt(TextSnapshot(text), offset);
    return found ? std::optional(found->range) : std::nullopt;
}

TEST(ColorLiterals, AreHitFromTheirStartToTheirEnd)
{
    const std::u16string_view text = u"a: #12aBcF;";
    for (std::size_t offset = 3; offset <= 10; ++offset)
        EXPECT_EQ(literal(text, offset), (TextRange{3, 7})) << offset;
    EXPECT_EQ(literal(text, 2), std::nullopt);
    EXPECT_EQ(literal(text, 11), std::nullopt);
    EXPECT_EQ(colorLiteralAt(TextSnapshot(text), 5)->color, (Color{0x12, 0xAB, 0xCF}));
}

TEST(ColorLiterals, AreHitOnTheQuotationMarksNextToThem)
{
    for (const std::u16string_view text : {u" '#12aBcF' ", u" \"#12aBcF\" "}) {
        EXPECT_EQ(literal(text, 0), std::nullopt);
        EXPECT_EQ(literal(text, 1), (TextRange{2, 7}));
        EXPECT_EQ(literal(text, 10), (TextRange{2, 7}));
        EXPECT_EQ(literal(text, 11), std::nullopt);
    }
    EXPECT_EQ(literal(u"(#12aBcF)", 0), std::nullopt);
    EXPECT_EQ(literal(u"(#12aBcF)", 9), std::nullopt);
}

TEST(ColorLiterals, HaveSixDigitsAndEndTheirWord)
{
    for (const std::u16string_view text : {u"#12345G", u"#1234567", u"#12345", u"#123456_",
                                           u"#123456é", u"123456#", u"#12 456", u""})
        EXPECT_EQ(literal(text, 2), std::nullopt);
    EXPECT_TRUE(literal(u"#123456", 7));
    EXPECT_TRUE(literal(u"#123456\U0001F600", 3));
    EXPECT_TRUE(literal(u"##123456", 3));
}

TEST(ColorLiterals, TheFirstOfTwoThatTouchIsHit)
{
    EXPECT_EQ(literal(u"#111111#222222", 7), (TextRange{0, 7}));
    EXPECT_EQ(literal(u"#111111#222222", 8), (TextRange{7, 7}));
    EXPECT_EQ(literal(u"#111111'#222222", 8), (TextRange{0, 7}));
}

class EditorPaneColorsTest : public OnePane, public testing::Test {
protected:
    EditorPaneColorsTest() : OnePane(u"a: '#102030';\nb: '#ffffff';") {}
};

TEST_F(EditorPaneColorsTest, PickingSelectsTheLiteralAndAsksForThePanel)
{
    pane.storeCursors({1, 2});
    EXPECT_TRUE(pane.beginColorPicking(6));
    EXPECT_EQ(pane.colorPanelReplacementRange(), (TextRange{4, 7}));
    EXPECT_EQ(pane.selectedRange(), (TextRange{4, 7}));
    EXPECT_FALSE(pane.hasSecondaryCursors());
    EXPECT_EQ(view.visible, (TextRange{4, 7}));
    EXPECT_TRUE(view.hasFocus);
    EXPECT_EQ(view.panelColor, (Color{0x10, 0x20, 0x30}));
}

TEST_F(EditorPaneColorsTest, AnywhereElseTheClickIsAnOrdinaryOne)
{
    pane.storeCursors({5});
    EXPECT_FALSE(pane.beginColorPicking(1));
    EXPECT_TRUE(pane.hasSecondaryCursors());
    EXPECT_FALSE(pane.colorPanelReplacementRange());
    EXPECT_FALSE(view.panelColor);
}

TEST_F(EditorPaneColorsTest, EachColourReplacesTheLiteral)
{
    pane.beginColorPicking(6);
    pane.pickColor(1.0, 0.5, 0.0);
    EXPECT_EQ(text(), u"a: '#FF8000';\nb: '#ffffff';");
    EXPECT_EQ(pane.selectedRange(), (TextRange{4, 7}));
    pane.pickColor(-1.0, 2.0, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(text(), u"a: '#00FF00';\nb: '#ffffff';");
    run("undo");
    EXPECT_EQ(text(), u"a: '#102030';\nb: '#ffffff';");
}

TEST_F(EditorPaneColorsTest, TheSameColourChangesNothing)
{
    pane.beginColorPicking(6);
    pane.pickColor(0x10 / 255.0, 0x20 / 255.0, 0x30 / 255.0);
    EXPECT_FALSE(pane.document().isModified);
    EXPECT_TRUE(pane.document().history().undoStack().empty());
}

TEST_F(EditorPaneColorsTest, ALiteralThatIsNoneAnyMoreStaysAsItIs)
{
    pane.beginColorPicking(6);
    pane.replaceText({5, 1}, TextSnapshot(u"x"));
    pane.pickColor(1, 1, 1);
    EXPECT_EQ(text(), u"a: '#x02030';\nb: '#ffffff';");
    pane.replaceText({5, 1}, {});
    pane.pickColor(1, 1, 1);
    EXPECT_EQ(text(), u"a: '#02030';\nb: '#ffffff';");
}

TEST_F(EditorPaneColorsTest, TheColourFollowsItsLiteral)
{
    pane.beginColorPicking(6);
    TestPane other(world());
    other.pane.showDocument(pane.activeTab().document);
    other.pane.setSelectedRange({0, 0});
    other.type(u"xy");
    pane.setSelectedRange({0, 0});
    type(u"z");
    pane.pickColor(0, 0, 0);
    EXPECT_EQ(text(), u"zxya: '#000000';\nb: '#ffffff';");
}

TEST_F(EditorPaneColorsTest, ClosingThePanelEndsIt)
{
    pane.beginColorPicking(6);
    pane.endColorPicking();
    EXPECT_FALSE(pane.colorPanelReplacementRange());
    EXPECT_FALSE(view.panelColor);
    pane.pickColor(1, 1, 1);
    EXPECT_FALSE(pane.document().isModified);
}

TEST_F(EditorPaneColorsTest, AnotherTabHasNothingToDoWithThePanel)
{
    pane.beginColorPicking(6);
    pane.showDocument(std::make_shared<EditorDocument>(std::nullopt, TextSnapshot(text())));
    EXPECT_FALSE(pane.colorPanelReplacementRange());
    EXPECT_FALSE(view.panelColor);
    pane.pickColor(1, 1, 1);
    EXPECT_FALSE(pane.document().isModified);
}

}  // namespace
}  // namespace tavrel
