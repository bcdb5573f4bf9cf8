#pragma once

#include "terminal/ControlSequenceParameters.h"
#include "terminal/IncrementalUTF8Decoder.h"
#include "terminal/TerminalScreen.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace tavrel {

/// A terminal without its pixels: the bytes that a program writes go in, a screen with a history is
/// there to be drawn, and replies for the program come out.
///
/// Lives on the main thread, as long as its tab: it outlives the shell. Columns and rows count from
/// 0. No input is an error: numbers out of range are limited, sequences that it does not know are
/// dropped, and what never ends takes no memory. Callbacks are called on the same thread, from
/// within the call that causes them; they may read the emulator, and do not feed or destroy it.
class TerminalEmulator {
public:
    enum class ParserState {
        ground,
        escape,
        csi,
        osc,
        oscEscape,
        consumeUntilST,
        consumeUntilSTEscape,
        escapeIntermediate,
    };
    enum class Charset { ascii, decSpecial };

    /// Both are limited to 2 and 65,535.
    TerminalEmulator(int columns, int rows) : screen_(columns, rows) {}
    TerminalEmulator(const TerminalEmulator&) = delete;
    TerminalEmulator& operator=(const TerminalEmulator&) = delete;

    // What is told; each may be absent.

    /// Something may look different: once at the end of `feed` and `feedText`, of a `resize` that
    /// changed something, and of an `applyScrollbackLimit` that removed rows.
    std::function<void()> onUpdate;
    std::function<void()> onBell;
    /// Bytes for the program, while its output is being read.
    std::function<void(std::string_view)> onResponse;

    // The grid.

    int columns() const { return screen_.columns(); }
    int rows() const { return screen_.rows(); }
    int cursorX() const { return screen_.cursor().x; }
    int cursorY() const { return screen_.cursor().y; }
    bool cursorVisible() const { return screen_.modes.cursorVisible; }
    bool usingAlternateScreen() const { return screen_.usingAlternateScreen(); }

    /// A row by its index into the history and the screen behind it: the first `historyLength()`
    /// are the history's, oldest first, the next `rows()` the screen's. Elsewhere it is a row of
    /// default cells. Valid until the emulator changes.
    TerminalRow row(std::int64_t index) const { return screen_.row(index); }
    /// The rows above the screen that can be reached: none on the alternate screen.
    std::int64_t historyLength() const;
    /// `y` lies on the grid.
    TerminalRow screenRow(int y) const { return {columns(), screen_.screen().row(y)}; }
    TerminalRow alternateScreenRow(int y) const
    {
        return {columns(), screen_.alternateScreen().row(y)};
    }
    /// `index` lies below `scrollbackLength()`.
    TerminalRow scrollbackRow(std::size_t index) const
    {
        return {columns(), screen_.scrollback().row(index)};
    }
    /// The rows of the history, reachable or not.
    std::size_t scrollbackLength() const { return screen_.scrollback().rowCount(); }
    /// How many rows the history has lost at its old end since the emulator was made, by its limit
    /// or emptied. It only grows: row `index` keeps the number `droppedRowCount() + index` as long
    /// as it is there, so whoever holds on to a text through the growth of the history keeps that.
    std::uint64_t droppedRowCount() const { return screen_.droppedRowCount(); }
    /// The memory that the history takes.
    std::size_t scrollbackBytes() const { return screen_.scrollback().memoryBytes(); }

    // The modes.

    bool applicationCursorKeys() const { return screen_.modes.applicationCursorKeys; }
    bool bracketedPaste() const { return screen_.modes.bracketedPaste; }
    TerminalColor currentForeground() const { return screen_.pen.foreground(); }
    TerminalColor currentBackground() const { return screen_.pen.background(); }
    TerminalCellFlags currentFlags() const { return screen_.pen.flags(); }
    TerminalPosition savedCursor() const { return screen_.savedCursor(); }
    TerminalPosition savedMainCursor() const { return screen_.savedMainCursor(); }
    bool autowrap() const { return screen_.modes.autowrap; }
    bool originMode() const { return screen_.modes.originMode; }
    bool insertMode() const { return screen_.modes.insertMode; }
    bool pendingWrap() const { return screen_.pendingWrap(); }
    int scrollTop() const { return screen_.scrollTop(); }
    /// Inclusive.
    int scrollBottom() const { return screen_.scrollBottom(); }
    /// Their columns, in order.
    std::vector<int> tabStops() const { return screen_.tabStops().columns(); }
    Charset charsetG0() const { return charsetG0_; }
    Charset charsetG1() const { return charsetG1_; }
    bool activeCharsetIsG1() const { return activeCharsetIsG1_; }
    ParserState parserState() const { return parserState_; }

    // What goes in.

    /// The output of a program. It may be split anywhere between calls.
    void feed(std::string_view bytes);
    /// A message of the application itself; it takes the same way as the code points of a program,
    /// so control characters and sequences work. A lone surrogate counts as U+FFFD.
    void feedText(std::u16string_view text);
    /// Sees to it that a message shows whole, whatever the program before it left unfinished: the
    /// parser goes to ground and both charsets become ASCII. All else stays.
    void prepareForMessage();

    /// Both are limited as at creation. Text is cut or padded and never flows anew; rows move
    /// between history and screen. Costs some nanoseconds a row of the history when the width
    /// shrinks, and nothing in proportion to it otherwise.
    void resize(int columns, int rows);

    /// The most rows in the history; at the start 10,000.
    std::size_t scrollbackLimit() const { return screen_.scrollbackLimit(); }
    /// Takes effect with `applyScrollbackLimit`, or with the next row that scrolls out.
    void setScrollbackLimit(std::size_t limit) { screen_.setScrollbackLimit(limit); }
    void applyScrollbackLimit();

private:
    const std::uint8_t* consume(const std::uint8_t* at, const std::uint8_t* end);
    const std::uint8_t* consumeGround(const std::uint8_t* at, const std::uint8_t* end);
    const std::uint8_t* consumePrintable(const std::uint8_t* at, const std::uint8_t* end);
    const std::uint8_t* consumeDecoded(const std::uint8_t* at, const std::uint8_t* end);
    const std::uint8_t* consumeControlSequence(const std::uint8_t* at, const std::uint8_t* end);
    const std::uint8_t* consumeString(const std::uint8_t* at, const std::uint8_t* end);
    void consumeByte(std::uint8_t byte);

    void step(char32_t character);
    void stepGround(char32_t character);
    void stepEscape(char32_t character);
    void stepEscapeIntermediate(char32_t character);
    void stepControlSequence(char32_t character);
    void beginControlSequence();
    void control(char32_t character);

    void print(std::span<const std::uint8_t> ascii);
    void print(std::span<const char32_t> characters);
    bool printsSpecial() const;

    void dispatch(char32_t final);
    void setModes(bool value);
    void setPrivateMode(int mode, bool value);
    void switchScreen(bool enter, TerminalScreen::Clearing clearing,
                      TerminalScreen::CursorSaving saving);
    void setScrollRegion();
    void reportStatus();
    void respond(std::string_view reply);
    void update();

    TerminalScreen screen_;
    ParserState parserState_ = ParserState::ground;
    char32_t intermediate_ = 0;  // Of the state `escapeIntermediate`.
    ControlSequenceParameters csiParams_;
    char32_t csiPrivateMarker_ = 0;  // 0 where it is absent.
    IncrementalUTF8Decoder utf8Decoder_;
    Charset charsetG0_ = Charset::ascii;
    Charset charsetG1_ = Charset::ascii;
    bool activeCharsetIsG1_ = false;
};

}  // namespace tavrel
