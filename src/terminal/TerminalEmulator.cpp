#include "terminal/TerminalEmulator.h"

#include "terminal/DrawingCharset.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace tavrel {
namespace {

constexpr std::uint8_t bell = 0x07;
constexpr std::uint8_t escape = 0x1B;
constexpr std::uint8_t firstNonAscii = 0x80;

bool isPrintableAscii(std::uint8_t byte)
{
    return byte >= 0x20 && byte < 0x7F;
}

// The place in memory of the first byte of a word from there that is not 0.
int firstByteOf(std::uint64_t word)
{
    return (std::endian::native == std::endian::little ? std::countr_zero(word)
                                                       : std::countl_zero(word)) /
           8;
}

using Block = std::array<std::uint8_t, 8>;

// How many printable characters of ASCII a block begins with.
int printableCount(const Block& block)
{
    // A byte is no printable one exactly where one of these sets its upper bit.
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t uppers = ones * 0x80;
    const auto word = std::bit_cast<std::uint64_t>(block);
    const std::uint64_t low = word & ~uppers;
    const std::uint64_t isControl = ~(low + ones * (0x80 - 0x20));
    const std::uint64_t isDelete = low + ones;
    const std::uint64_t others = (isControl | isDelete | word) & uppers;
    return others == 0 ? static_cast<int>(block.size()) : firstByteOf(others);
}

Block blockAt(const std::uint8_t* at)
{
    Block block;
    std::memcpy(block.data(), at, block.size());
    return block;
}

const std::uint8_t* endOfPrintableAscii(const std::uint8_t* at, const std::uint8_t* end)
{
    while (end - at >= 8) {
        const int count = printableCount(blockAt(at));
        at += count;
        if (count < 8)
            return at;
    }
    while (at < end && isPrintableAscii(*at))
        ++at;
    return at;
}

}  // namespace

std::int64_t TerminalEmulator::historyLength() const
{
    return usingAlternateScreen() ? 0 : static_cast<std::int64_t>(scrollbackLength());
}

void TerminalEmulator::feed(std::string_view bytes)
{
    const auto* at = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto* const end = at + bytes.size();
    while (at < end)
        at = consume(at, end);
    update();
}

void TerminalEmulator::feedText(std::u16string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        const bool isLead = character >= 0xD800 && character < 0xDC00;
        if (isLead && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000)
            character = 0x10000 + ((character - 0xD800) << 10) + (text[++i] - 0xDC00);
        else if (character >= 0xD800 && character < 0xE000)
            character = IncrementalUTF8Decoder::replacement;
        step(character);
    }
    update();
}

void TerminalEmulator::prepareForMessage()
{
    parserState_ = ParserState::ground;
    charsetG0_ = Charset::ascii;
    charsetG1_ = Charset::ascii;
}

void TerminalEmulator::resize(int columns, int rows)
{
    if (screen_.resize(columns, rows))
        update();
}

void TerminalEmulator::applyScrollbackLimit()
{
    if (screen_.trimScrollback())
        update();
}

void TerminalEmulator::update()
{
    if (onUpdate)
        onUpdate();
}

// Bytes. Whole runs are taken where the state allows it; what is left, and all that is not ASCII
// outside the ground state, goes byte by byte through the decoder. Each gives the place behind what
// it took, and takes something.

const std::uint8_t* TerminalEmulator::consume(const std::uint8_t* at, const std::uint8_t* end)
{
    if (!utf8Decoder_.hasPending()) {
        if (parserState_ == ParserState::ground)
            return consumeGround(at, end);
        if (*at < firstNonAscii) {
            switch (parserState_) {
            case ParserState::csi:
                return consumeControlSequence(at, end);
            case ParserState::osc:
            case ParserState::consumeUntilST:
                return consumeString(at, end);
            default:
                break;
            }
        }
    }
    consumeByte(*at);
    return at + 1;
}

void TerminalEmulator::consumeByte(std::uint8_t byte)
{
    utf8Decoder_.push(byte, [this](char32_t character) { step(character); });
}

const std::uint8_t* TerminalEmulator::consumeGround(const std::uint8_t* at, const std::uint8_t* end)
{
    while (at < end) {
        const std::uint8_t byte = *at;
        if (isPrintableAscii(byte)) {
            at = consumePrintable(at, end);
        } else if (byte == escape) {
            if (end - at < 2 || at[1] != '[') {
                parserState_ = ParserState::escape;
                return at + 1;
            }
            beginControlSequence();
            at += 2;
            if (end - at >= 8) {
                if (const auto length = csiParams_.readWhole(at)) {
                    parserState_ = ParserState::ground;
                    dispatch(at[*length]);
                    at += *length + 1;
                    continue;
                }
            }
            beginControlSequence();
            at = consumeControlSequence(at, end);
            if (parserState_ != ParserState::ground)
                return at;
        } else if (byte < firstNonAscii) {
            control(byte);
            ++at;
        } else {
            return consumeDecoded(at, end);
        }
    }
    return at;
}

const std::uint8_t* TerminalEmulator::consumePrintable(const std::uint8_t* at,
                                                       const std::uint8_t* end)
{
    if (end - at >= 8 && !printsSpecial()) {
        const Block block = blockAt(at);
        const int count = printableCount(block);
        if (count < 8) {
            screen_.printShort(block, count);
            return at + count;
        }
    }
    const std::uint8_t* const runEnd = endOfPrintableAscii(at, end);
    print(std::span(at, runEnd));
    return runEnd;
}

const std::uint8_t* TerminalEmulator::consumeDecoded(const std::uint8_t* at,
                                                     const std::uint8_t* end)
{
    std::array<char32_t, 256> run;
    std::size_t count = 0;
    while (at < end && count < run.size()) {
        if (isPrintableAscii(*at)) {
            run[count++] = *at++;
            continue;
        }
        if (*at < firstNonAscii)
            break;
        const std::size_t length = IncrementalUTF8Decoder::sequenceLength(*at);
        if (length == 0) {
            run[count++] = IncrementalUTF8Decoder::replacement;
            ++at;
            continue;
        }
        // One that is broken, or goes on with the next read, is for the decoder, and so is one that
        // spells a control character in too many bytes.
        if (static_cast<std::size_t>(end - at) < length ||
            !std::all_of(at + 1, at + length, IncrementalUTF8Decoder::isContinuation))
            break;
        const char32_t character = IncrementalUTF8Decoder::decoded(at, length);
        if (character < firstNonAscii)
            break;
        run[count++] = character;
        at += length;
    }
    if (count > 0) {
        print(std::span<const char32_t>(run.data(), count));
        return at;
    }
    consumeByte(*at);
    return at + 1;
}

const std::uint8_t* TerminalEmulator::consumeControlSequence(const std::uint8_t* at,
                                                             const std::uint8_t* end)
{
    while (at < end) {
        at = csiParams_.read(at, end);
        if (at == end || *at >= firstNonAscii)
            return at;
        if (*at > '?') {
            parserState_ = ParserState::ground;
            csiParams_.finish();
            dispatch(*at);
            return at + 1;
        }
        stepControlSequence(*at++);
        if (parserState_ != ParserState::csi)
            return at;
    }
    return at;
}

const std::uint8_t* TerminalEmulator::consumeString(const std::uint8_t* at, const std::uint8_t* end)
{
    while (at < end && *at < firstNonAscii && *at != escape && *at != bell)
        ++at;
    if (at < end && *at < firstNonAscii)
        step(*at++);
    return at;
}

// Code points.

void TerminalEmulator::step(char32_t character)
{
    switch (parserState_) {
    case ParserState::ground:
        stepGround(character);
        break;
    case ParserState::escape:
        stepEscape(character);
        break;
    case ParserState::csi:
        stepControlSequence(character);
        break;
    case ParserState::osc:
        if (character == bell)
            parserState_ = ParserState::ground;
        else if (character == escape)
            parserState_ = ParserState::oscEscape;
        break;
    case ParserState::oscEscape:
        parserState_ = character == '\\' ? ParserState::ground : ParserState::osc;
        break;
    case ParserState::consumeUntilST:
        if (character == escape)
            parserState_ = ParserState::consumeUntilSTEscape;
        break;
    case ParserState::consumeUntilSTEscape:
        parserState_ = character == '\\' ? ParserState::ground : ParserState::consumeUntilST;
        break;
    case ParserState::escapeIntermediate:
        stepEscapeIntermediate(character);
        break;
    }
}

void TerminalEmulator::stepGround(char32_t character)
{
    if (character == escape)
        parserState_ = ParserState::escape;
    else if (character < 0x20 || character == 0x7F)
        control(character);
    else
        print(std::span<const char32_t>(&character, 1));
}

void TerminalEmulator::control(char32_t character)
{
    switch (character) {
    case bell:
        if (onBell)
            onBell();
        break;
    case '\b':
        screen_.backspace();
        break;
    case '\t':
        screen_.tabForward();
        break;
    case '\n':
    case '\v':
    case '\f':
        screen_.lineFeed();
        break;
    case '\r':
        screen_.carriageReturn();
        break;
    case 0x0E:
        activeCharsetIsG1_ = true;
        break;
    case 0x0F:
        activeCharsetIsG1_ = false;
        break;
    default:
        break;
    }
}

void TerminalEmulator::stepEscape(char32_t character)
{
    parserState_ = ParserState::ground;
    switch (character) {
    case '(':
    case ')':
    case '*':
    case '+':
        intermediate_ = character;
        parserState_ = ParserState::escapeIntermediate;
        break;
    case '7':
        screen_.saveCursor();
        break;
    case '8':
        screen_.restoreCursor();
        break;
    case 'D':
        screen_.lineFeed();
        break;
    case 'E':
        screen_.carriageReturn();
        screen_.lineFeed();
        break;
    case 'H':
        screen_.setTabStop();
        break;
    case 'M':
        screen_.reverseIndex();
        break;
    case 'P':
    case 'X':
    case '^':
    case '_':
        parserState_ = ParserState::consumeUntilST;
        break;
    case '[':
        beginControlSequence();
        break;
    case ']':
        parserState_ = ParserState::osc;
        break;
    case 'c':
        screen_.reset();
        charsetG0_ = Charset::ascii;
        charsetG1_ = Charset::ascii;
        activeCharsetIsG1_ = false;
        break;
    default:
        break;
    }
}

void TerminalEmulator::stepEscapeIntermediate(char32_t character)
{
    parserState_ = ParserState::ground;
    const Charset charset = character == '0' ? Charset::decSpecial : Charset::ascii;
    if (intermediate_ == '(')
        charsetG0_ = charset;
    else if (intermediate_ == ')')
        charsetG1_ = charset;
}

void TerminalEmulator::beginControlSequence()
{
    csiParams_.begin(screen_.pen);
    csiPrivateMarker_ = 0;
    parserState_ = ParserState::csi;
}

void TerminalEmulator::stepControlSequence(char32_t character)
{
    const bool isMarker = character >= '<' && character <= '?';
    if (isMarker && csiPrivateMarker_ == 0 && csiParams_.isEmpty()) {
        csiPrivateMarker_ = character;
    } else if (character >= '0' && character <= ';') {
        const auto byte = static_cast<std::uint8_t>(character);
        csiParams_.read(&byte, &byte + 1);
    } else if (character < 0x20 || character > 0x2F) {
        // Intermediates are passed over; anything else ends the sequence, whether known or not.
        parserState_ = ParserState::ground;
        csiParams_.finish();
        dispatch(character);
    }
}

// Printing.

bool TerminalEmulator::printsSpecial() const
{
    return (activeCharsetIsG1_ ? charsetG1_ : charsetG0_) == Charset::decSpecial;
}

void TerminalEmulator::print(std::span<const std::uint8_t> ascii)
{
    if (!printsSpecial())
        return screen_.print(ascii);
    std::array<char32_t, 128> run;
    while (!ascii.empty()) {
        const std::size_t count = std::min(ascii.size(), run.size());
        std::transform(ascii.begin(), ascii.begin() + static_cast<std::ptrdiff_t>(count),
                       run.begin(), drawingCharacter);
        screen_.print(std::span<const char32_t>(run.data(), count));
        ascii = ascii.subspan(count);
    }
}

void TerminalEmulator::print(std::span<const char32_t> characters)
{
    if (!printsSpecial())
        return screen_.print(characters);
    for (const char32_t character : characters) {
        const char32_t drawn = drawingCharacter(character);
        screen_.print(std::span<const char32_t>(&drawn, 1));
    }
}

}  // namespace tavrel
