#include "terminal/KeyRoute.h"

#include <gtest/gtest.h>

#include <set>

namespace tavrel {
namespace {

constexpr int keyOfC = 8;
constexpr int keyOf2 = 19;
constexpr int keyOf6 = 22;
constexpr int keyOfMinus = 27;
constexpr int keyOfReturn = 36;
constexpr int keyOfBackspace = 51;

KeyEvent press(int keyCode, std::uint64_t modifiers, std::u16string text, std::u16string typed = {})
{
    return {keyCode, modifiers, std::move(typed), std::move(text)};
}

KeyRoute route(const KeyEvent& event, CommandKey commandKey = CommandKey::ctrl,
               std::set<std::string, std::less<>> bound = {})
{
    return keyRoute(event, commandKey, CursorKeys::normal,
                    [&](std::string_view chord) { return bound.contains(chord); });
}

TEST(KeyRoute, APressWithoutTheCommandKeyIsAskedForAndThenTyped)
{
    const KeyEvent letter = press(keyOfC, 0, u"c", u"c");
    EXPECT_EQ(route(letter), (KeyRoute{letter, "c"}));
    EXPECT_EQ(route(letter, CommandKey::super), (KeyRoute{letter, "c"}));
}

TEST(KeyRoute, CtrlAndALetterIsItsControlByteAndNoCommand)
{
    const KeyEvent event = press(keyOfC, commandModifier, u"c");
    EXPECT_EQ(route(event, CommandKey::ctrl, {"cmd+c"}), (KeyRoute{std::nullopt, "\x03"}));
}

TEST(KeyRoute, CtrlAndSpaceIsTheByteZero)
{
    const KeyEvent event = press(49, commandModifier, u" ");
    EXPECT_EQ(route(event).bytes, std::string(1, '\0'));
}

TEST(KeyRoute, CtrlAndAKeyWithoutAControlByteIsACommandOnly)
{
    const KeyEvent event = press(keyOf2, commandModifier, u"2");
    EXPECT_EQ(route(event), (KeyRoute{event, std::nullopt}));
}

TEST(KeyRoute, CtrlShiftIsTheChordWithShiftWhereThatIsBound)
{
    const KeyEvent event = press(13, commandModifier | shiftModifier, u"W");
    EXPECT_EQ(route(event, CommandKey::ctrl, {"cmd+shift+w", "cmd+w"}),
              (KeyRoute{event, std::nullopt}));
}

TEST(KeyRoute, CtrlShiftIsTheChordWithoutShiftWhereOnlyThatIsBound)
{
    const KeyEvent event = press(keyOfC, commandModifier | shiftModifier, u"C");
    KeyEvent unshifted = event;
    unshifted.modifierFlags = commandModifier;
    EXPECT_EQ(route(event, CommandKey::ctrl, {"cmd+c"}), (KeyRoute{unshifted, std::nullopt}));
}

TEST(KeyRoute, CtrlShiftAndALetterNeverReachesTheShell)
{
    EXPECT_EQ(route(press(14, commandModifier | shiftModifier, u"E")).bytes, std::nullopt);
}

TEST(KeyRoute, ASignThatNeedsShiftKeepsItsControlByte)
{
    EXPECT_EQ(route(press(keyOfMinus, commandModifier | shiftModifier, u"_")),
              (KeyRoute{std::nullopt, "\x1F"}));
    EXPECT_EQ(route(press(keyOf6, commandModifier | shiftModifier, u"^")),
              (KeyRoute{std::nullopt, "\x1E"}));
}

TEST(KeyRoute, ASignThatNeedsShiftIsACommandWhereItsKeyIsBound)
{
    const KeyEvent event = press(keyOf2, commandModifier | shiftModifier, u"@");
    const KeyRoute found = route(event, CommandKey::ctrl, {"cmd+2"});
    ASSERT_TRUE(found.command.has_value());
    EXPECT_EQ(found.command->modifierFlags, commandModifier);
    EXPECT_EQ(found.bytes, std::nullopt);
}

TEST(KeyRoute, CtrlAndANamedKeyIsAskedForAndThenSendsItsSequence)
{
    const KeyEvent backspace = press(keyOfBackspace, commandModifier, u"\x7F");
    EXPECT_EQ(route(backspace), (KeyRoute{backspace, "\x7F"}));
    const KeyEvent enter = press(keyOfReturn, commandModifier | shiftModifier, u"\r");
    EXPECT_EQ(route(enter), (KeyRoute{enter, "\r"}));
}

TEST(KeyRoute, CtrlAltIsTheCommandWhereItIsBoundAndElseTheControlByte)
{
    const KeyEvent event = press(31, commandModifier | optionModifier, u"o");
    EXPECT_EQ(route(event, CommandKey::ctrl, {"opt+cmd+o"}), (KeyRoute{event, std::nullopt}));
    EXPECT_EQ(route(event), (KeyRoute{event, "\x0F"}));
}

TEST(KeyRoute, WithACommandKeyOfItsOwnTheCommandsNeverReachTheShell)
{
    const KeyEvent copy = press(keyOfC, commandModifier, u"c");
    EXPECT_EQ(route(copy, CommandKey::super), (KeyRoute{copy, std::nullopt}));
    const KeyEvent enter = press(keyOfReturn, commandModifier, u"\r");
    EXPECT_EQ(route(enter, CommandKey::super), (KeyRoute{enter, std::nullopt}));
}

TEST(KeyRoute, WithACommandKeyOfItsOwnControlIsControl)
{
    const KeyEvent interrupt = press(keyOfC, controlModifier, u"c", u"\x03");
    EXPECT_EQ(route(interrupt, CommandKey::super), (KeyRoute{interrupt, "\x03"}));
    const KeyEvent shifted = press(keyOfC, controlModifier | shiftModifier, u"C", u"\x03");
    EXPECT_EQ(route(shifted, CommandKey::super).bytes, "\x03");
}

TEST(KeyRoute, WithoutAnyoneToAskNothingIsBound)
{
    const KeyEvent event = press(keyOfC, commandModifier | shiftModifier, u"C");
    const KeyRoute found = keyRoute(event, CommandKey::ctrl, CursorKeys::normal, {});
    ASSERT_TRUE(found.command.has_value());
    EXPECT_EQ(found.command->modifierFlags, commandModifier);
}

}  // namespace
}  // namespace tavrel
