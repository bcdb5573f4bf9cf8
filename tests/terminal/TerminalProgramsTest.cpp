#include "TerminalPanelFixture.h"
#include "terminal/Terminfo.h"

#include <sstream>

namespace tavrel {
namespace {

/// Real programs on a real pseudo terminal, in the panel: what they draw must be what they mean.
///
/// Each runs in Bash, as a person would start it, with our description of the terminal.
class TerminalProgramsTest : public TerminalPanelTest {
protected:
    TerminalProgramsTest()
    {
        services.loginShell = "/bin/bash";
        services.environment.set("HOME", home.home.path().string());
        services.environment.set("LANG", "C.UTF-8");
        services.terminfoFolder = *writeTerminfo(home.fileSystem, home.home.path());
        home.home.write(".bash_profile", "PS1='$ '\nexport HISTFILE=\n");
        home.home.write(".vimrc", "set nocompatible number\nsyntax off\nset shortmess+=I\n");
        view.size = TerminalSize{80, 24};
    }

    void runInBash(const std::string& command)
    {
        shownPanel();
        ASSERT_TRUE(waitForScreen([](const auto& rows) { return rows[0] == "$"; }));
        type(command + "\r");
    }
    void type(std::string_view keys) { panel().sendInput(keys); }

    using Rows = std::vector<std::string>;

    /// The rows of the screen without blanks at their ends; other characters than ASCII as UTF-8.
    Rows screen()
    {
        Rows rows;
        for (int y = 0; y < emulator().rows(); ++y) {
            std::string row;
            for (const char32_t c : emulator().screenRow(y).characters())
                appendUtf8(row, c);
            row.resize(row.find_last_not_of(' ') + 1);
            rows.push_back(row);
        }
        return rows;
    }
    bool waitForScreen(const std::function<bool(const Rows& rows)>& done)
    {
        if (runUntil([&] { return done(screen()); }))
            return true;
        for (const std::string& row : screen())
            ADD_FAILURE() << row;
        return false;
    }
    bool waitForRow(std::size_t y, const std::string& text)
    {
        return waitForScreen([&](const Rows& rows) { return rows[y] == text; });
    }
    /// Waits until the last row that is not empty is the prompt, on the main screen.
    bool waitForPrompt()
    {
        return waitForScreen([this](const Rows& rows) {
            return !emulator().usingAlternateScreen() &&
                   rows[static_cast<std::size_t>(emulator().cursorY())] == "$";
        });
    }

    /// A file of the lines "line 1" to "line `count`".
    void writeLines(const std::string& name, int count)
    {
        std::string text;
        for (int number = 1; number <= count; ++number)
            text += "line " + std::to_string(number) + "\n";
        home.home.write(name, text);
    }

private:
    static void appendUtf8(std::string& text, char32_t c)
    {
        if (c < 0x80) {
            text += static_cast<char>(c);
        } else if (c < 0x800) {
            text += static_cast<char>(0xC0 | (c >> 6));
            text += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            text += static_cast<char>(0xE0 | (c >> 12));
            text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            text += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
};

TEST_F(TerminalProgramsTest, BashEditsItsLine)
{
    runInBash("echo one two");
    ASSERT_TRUE(waitForScreen([](const Rows& rows) { return rows[1] == "one two"; }));
    ASSERT_TRUE(waitForPrompt());
    EXPECT_EQ(screen()[0], "$ echo one two");
    type("echo middle");
    ASSERT_TRUE(waitForRow(2, "$ echo middle"));
    type("\x01X\x05Y");  // To the start of the line, to its end.
    ASSERT_TRUE(waitForRow(2, "$ Xecho middleY"));
    type("\x1B[D\x1B[D\x1B[3~Z");  // Left twice, delete.
    ASSERT_TRUE(waitForRow(2, "$ Xecho middlZY"));
    type("\x15");  // All before the cursor goes.
    ASSERT_TRUE(waitForRow(2, "$ Y"));
    type("\x05\x7F\x1B[A");  // The last command comes back.
    ASSERT_TRUE(waitForRow(2, "$ echo one two"));
    EXPECT_TRUE(emulator().bracketedPaste());
}

TEST_F(TerminalProgramsTest, BashWrapsALongLine)
{
    const std::string word(100, 'w');
    runInBash("echo");
    ASSERT_TRUE(waitForRow(2, "$"));
    type(word);
    ASSERT_TRUE(waitForRow(3, word.substr(78)));
    EXPECT_EQ(screen()[2], "$ " + word.substr(0, 78));
    type(std::string(30, '\x7F'));
    ASSERT_TRUE(waitForRow(2, "$ " + word.substr(0, 70)));
    EXPECT_EQ(screen()[3], "");
    EXPECT_EQ(emulator().cursorX(), 72);
    EXPECT_EQ(emulator().cursorY(), 2);
}

TEST_F(TerminalProgramsTest, BashRedrawsAtANewWidth)
{
    runInBash("stty size");
    ASSERT_TRUE(waitForRow(1, "24 80"));
    view.size = TerminalSize{60, 10};
    panel().syncGridSize();
    type("stty size\r");
    EXPECT_TRUE(waitForScreen([](const Rows& rows) {
        return std::find(rows.begin(), rows.end(), "10 60") != rows.end();
    }));
}

TEST_F(TerminalProgramsTest, LessShowsPagesAndSearches)
{
    writeLines("lines", 100);
    runInBash("less lines");
    ASSERT_TRUE(waitForRow(23, "lines"));
    EXPECT_TRUE(emulator().usingAlternateScreen());
    for (int y = 0; y < 23; ++y)
        EXPECT_EQ(screen()[static_cast<std::size_t>(y)], "line " + std::to_string(y + 1));
    type(" ");
    ASSERT_TRUE(waitForRow(22, "line 46"));
    EXPECT_EQ(screen()[0], "line 24");
    type("\x1BOA");  // Up, by the cursor keys of the application.
    ASSERT_TRUE(waitForRow(0, "line 23"));
    EXPECT_EQ(screen()[22], "line 45");
    type("\x1B[6~");  // Page Down.
    ASSERT_TRUE(waitForRow(0, "line 46"));
    type("G");
    ASSERT_TRUE(waitForRow(22, "line 100"));
    type("g/line 77\r");
    ASSERT_TRUE(waitForRow(0, "line 77"));
    // What was found is shown in reverse.
    EXPECT_TRUE(emulator().screenRow(0).cell(0).flags.contains(TerminalCellFlags::inverse));
    EXPECT_TRUE(emulator().screenRow(1).cell(0).flags.isEmpty());
    type("q");
    ASSERT_TRUE(waitForPrompt());
    EXPECT_EQ(screen()[0], "$ less lines");
    EXPECT_EQ(screen()[2], "");
}

TEST_F(TerminalProgramsTest, VimEditsScrollsAndSaves)
{
    writeLines("text", 200);
    runInBash("vim text");
    ASSERT_TRUE(waitForRow(0, "  1 line 1"));
    for (int y = 0; y < 23; ++y) {
        std::string number = std::to_string(y + 1);
        EXPECT_EQ(screen()[static_cast<std::size_t>(y)],
                  std::string(3 - number.size(), ' ') + number + " line " + number);
    }
    type("50G");
    ASSERT_TRUE(waitForScreen([&](const Rows& rows) {
        return emulator().cursorX() == 4 &&
               rows[static_cast<std::size_t>(emulator().cursorY())] == " 50 line 50";
    }));
    type("zt");  // The line goes to the top.
    ASSERT_TRUE(waitForRow(0, " 50 line 50"));
    EXPECT_EQ(screen()[22], " 72 line 72");
    type("dd");
    ASSERT_TRUE(waitForRow(0, " 50 line 51"));
    EXPECT_EQ(screen()[22], " 72 line 73");
    type("Onew \xC3\xA9 text\x1B");
    ASSERT_TRUE(waitForRow(0, " 50 new \xC3\xA9 text"));
    ASSERT_TRUE(waitForRow(1, " 51 line 51"));
    EXPECT_EQ(screen()[22], " 72 line 72");
    type("\x05\x05");  // Two rows up.
    ASSERT_TRUE(waitForRow(0, " 52 line 52"));
    EXPECT_EQ(screen()[22], " 74 line 74");
    type("\x19");  // One row down.
    ASSERT_TRUE(waitForRow(0, " 51 line 51"));
    EXPECT_EQ(screen()[22], " 73 line 73");
    type(":wq\r");
    ASSERT_TRUE(waitForPrompt());
    EXPECT_EQ(screen()[0], "$ vim text");
    const std::string saved = fileText("text");
    EXPECT_NE(saved.find("line 49\nnew \xC3\xA9 text\nline 51\n"), std::string::npos);
}

TEST_F(TerminalProgramsTest, VimTakesAPasteAsText)
{
    runInBash("vim new");
    ASSERT_TRUE(waitForRow(0, "  1"));
    type("i");
    ASSERT_TRUE(waitForScreen([this](const Rows& rows) {
        return rows[23].starts_with("-- INSERT --") && emulator().bracketedPaste();
    }));
    type("\x1B[200~pasted \x1B text\rsecond\x1B[201~");
    ASSERT_TRUE(waitForRow(1, "  2 second"));
    EXPECT_EQ(screen()[0], "  1 pasted ^[ text");
    type("\x1B:q!\r");
    EXPECT_TRUE(waitForPrompt());
}

TEST_F(TerminalProgramsTest, VimFollowsANewSize)
{
    writeLines("text", 200);
    runInBash("vim text");
    ASSERT_TRUE(waitForRow(22, " 23 line 23"));
    view.size = TerminalSize{50, 40};
    panel().syncGridSize();
    // The editor is done with a picture once the cursor is back in the text; what is typed before
    // that it may throw away.
    const auto isInText = [this] { return emulator().cursorY() == 0 && emulator().cursorX() == 4; };
    ASSERT_TRUE(
        waitForScreen([&](const Rows& rows) { return rows[38] == " 39 line 39" && isInText(); }));
    EXPECT_EQ(screen()[0], "  1 line 1");
    view.size = TerminalSize{30, 8};
    panel().syncGridSize();
    ASSERT_TRUE(waitForScreen([&](const Rows& rows) {
        return rows.size() == 8 && rows[6] == "  7 line 7" && rows[0] == "  1 line 1" && isInText();
    }));
    type(":q\r");
    EXPECT_TRUE(waitForPrompt());
}

TEST_F(TerminalProgramsTest, TopListsProcessesAndLeavesTheScreenAsItWas)
{
    runInBash("top -d 100");
    ASSERT_TRUE(waitForScreen([](const Rows& rows) {
        return rows[0].starts_with("top - ") && rows[6].find("PID USER") != std::string::npos &&
               !rows[23].empty();
    }));
    const Rows rows = screen();
    EXPECT_TRUE(rows[1].starts_with("Tasks:")) << rows[1];
    EXPECT_TRUE(rows[2].starts_with("%Cpu(s):")) << rows[2];
    EXPECT_NE(rows[3].find("Mem :"), std::string::npos) << rows[3];
    EXPECT_NE(rows[4].find("Swap:"), std::string::npos) << rows[4];
    // The heading of the list is a bar in reverse.
    for (const int column : {0, 20, 40})
        EXPECT_TRUE(emulator().screenRow(6).cell(column).flags.contains(TerminalCellFlags::inverse))
            << column;
    for (std::size_t y = 7; y < 24; ++y) {
        int process = 0;
        std::istringstream words(rows[y]);
        words >> process;
        EXPECT_GT(process, 0) << rows[y];
    }
    type("q");
    EXPECT_TRUE(waitForPrompt());
}

TEST_F(TerminalProgramsTest, GitLogShowsItsColours)
{
    runInBash("clear; export GIT_CONFIG_NOSYSTEM=1; git init -q r; cd r; "
              "git config user.name N; git config user.email e@e; "
              "git commit -q --allow-empty -m first; git commit -q --allow-empty -m second; "
              "clear; git --no-pager log --graph --color=always "
              "--format='%C(yellow)hash%Creset %C(bold blue)%s%Creset %C(#102030)x'");
    ASSERT_TRUE(waitForScreen([](const Rows& rows) {
        return rows[0] == "* hash second x" && rows[1] == "* hash first x" && rows[2] == "$";
    }));
    const TerminalRow row = emulator().screenRow(0);
    EXPECT_EQ(row.cell(0).foreground, TerminalColor::defaultForeground());
    EXPECT_EQ(row.cell(2).foreground, TerminalColor::palette(3));
    EXPECT_TRUE(row.cell(2).flags.isEmpty());
    EXPECT_EQ(row.cell(7).foreground, TerminalColor::palette(4));
    EXPECT_TRUE(row.cell(7).flags.contains(TerminalCellFlags::bold));
    EXPECT_EQ(row.cell(14).foreground, TerminalColor::rgb(0x10, 0x20, 0x30));
    EXPECT_TRUE(row.cell(6).flags.isEmpty());
}

TEST_F(TerminalProgramsTest, TmuxSplitsItsScreenWithLines)
{
    home.home.write(".tmux.conf", "set -g status on\nset -g status-right ''\n"
                                  "set -g default-command '/bin/bash'\n");
    home.home.write(".bashrc", "PS1='in> '\n");
    // Side by side: 40 columns, a line, 39 columns.
    runInBash("tmux -S $HOME/socket new-session -s name ';' split-window -h");
    ASSERT_TRUE(waitForScreen([](const Rows& rows) { return rows[23].starts_with("[name] 0:"); }));
    ASSERT_TRUE(waitForScreen([](const Rows& rows) {
        const std::string line = "\xE2\x94\x82";
        return rows[0] == "in>" + std::string(37, ' ') + line + "in>";
    }));
    for (std::size_t y = 1; y < 23; ++y)
        EXPECT_EQ(screen()[y], std::string(40, ' ') + "\xE2\x94\x82");
    type("seq 1 50\r");
    ASSERT_TRUE(waitForScreen(
        [](const Rows& rows) { return rows[21] == std::string(40, ' ') + "\xE2\x94\x82" + "50"; }));
    EXPECT_EQ(screen()[0], "in>" + std::string(37, ' ') + "\xE2\x94\x82" + "29");
    type("exit\r");
    ASSERT_TRUE(waitForScreen([](const Rows& rows) { return rows[0] == "in>"; }));
    type("exit\r");
    EXPECT_TRUE(waitForPrompt());
}

TEST_F(TerminalProgramsTest, AnInterruptStopsAFlood)
{
    // The queue is never done with a flood, so the keys come from within one of its turns.
    bool isInterrupted = false;
    view.onRows = [&] {
        if (!isInterrupted && screen()[0] == "y") {
            isInterrupted = true;
            type("\x03");
        }
    };
    runInBash("yes");
    ASSERT_TRUE(waitForScreen([&](const Rows&) { return isInterrupted; }));
    EXPECT_TRUE(waitForPrompt());
}

TEST_F(TerminalProgramsTest, ClearEmptiesTheHistory)
{
    runInBash("seq 1 100");
    ASSERT_TRUE(waitForRow(22, "100"));
    EXPECT_GT(emulator().historyLength(), 0);
    type("clear\r");
    ASSERT_TRUE(waitForRow(0, "$"));
    EXPECT_EQ(emulator().historyLength(), 0);
}

}  // namespace
}  // namespace tavrel
