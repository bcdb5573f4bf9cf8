#include "terminal/ShellLine.h"
#include "platform/Graphemes.h"
#include "platform/Utf8.h"

#include <array>
#include <gtest/gtest.h>
#include <random>

namespace tavrel {
namespace {

std::u16string randomText(std::mt19937& random)
{
    static const std::array<std::u16string, 14> pieces{
        u" ", u"  ",     u"a",      u"Z",      u"9",          u"_",  u"-",
        u"/", u"\u00DF", u"\u0301", u"\u4E2D", u"\U0001F600", u"\t", u"\xD800"};
    std::u16string text;
    for (unsigned count = random() % 12; count > 0; --count)
        text += pieces[random() % pieces.size()];
    return text;
}

/// Whatever stands on the screen, a command types no more presses than there are characters, and
/// text that is whole.
TEST(ShellLine, AnyTextGivesKeysWithinTheLine)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    static const std::array<std::string, 7> commands{
        "eraseWord", "eraseFullWord", "camelCase", "typeCase", "titleCase", "strip", "skipWord"};
    for (int round = 0; round < 5000; ++round) {
        const ShellLine line{randomText(random), randomText(random), random() % 2 == 0};
        EditorCommand command{commands[random() % commands.size()], {}};
        const bool goesForward = random() % 2 == 0;
        command.arguments.emplace("forward", CSONValue(goesForward));
        const std::string keys = shellLineInput(line, command);
        ASSERT_TRUE(isValidUtf8(keys));
        const std::size_t erased = std::min(keys.find_first_not_of('\x7F'), keys.size());
        ASSERT_LE(erased, Graphemes(line.left).count());
        if (command.name != "skipWord")
            continue;
        const std::string press =
            std::string(line.applicationCursorKeys ? "\x1BO" : "\x1B[") + (goesForward ? 'C' : 'D');
        ASSERT_EQ(keys.size() % press.size(), 0U);
        ASSERT_LE(keys.size() / press.size(),
                  Graphemes(goesForward ? line.right : line.left).count());
        for (std::size_t at = 0; at < keys.size(); at += press.size())
            ASSERT_EQ(keys.substr(at, press.size()), press);
    }
}

TEST(ShellLine, ItsCommandsAreKnownByName)
{
    EXPECT_TRUE(isShellLineCommand("titleCase"));
    EXPECT_FALSE(isShellLineCommand("newTerminalTab"));
    EXPECT_FALSE(isShellLineCommand(""));
}

}  // namespace
}  // namespace tavrel
