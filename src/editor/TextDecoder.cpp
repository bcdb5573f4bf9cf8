#include "editor/TextDecoder.h"

#include <algorithm>
#include <cstring>

namespace tavrel {

namespace {

enum class Sequence { complete, invalid, unfinished };

struct SequenceLength {
    Sequence kind;
    std::size_t bytes;  // Of the sequence, of the invalid part, or of what there is so far.
};

// Which second bytes may follow a lead byte: this keeps out overlong forms, surrogates and what
// lies past U+10FFFF.
struct Lead {
    std::size_t length;  // 0 for a byte that begins no sequence.
    std::uint8_t secondFrom;
    std::uint8_t secondTo;
};

constexpr Lead leadOf(std::uint8_t byte)
{
    if (byte < 0x80)
        return {1, 0, 0};
    if (byte < 0xC2)
        return {0, 0, 0};
    if (byte < 0xE0)
        return {2, 0x80, 0xBF};
    if (byte == 0xE0)
        return {3, 0xA0, 0xBF};
    if (byte == 0xED)
        return {3, 0x80, 0x9F};
    if (byte < 0xF0)
        return {3, 0x80, 0xBF};
    if (byte == 0xF0)
        return {4, 0x90, 0xBF};
    if (byte < 0xF4)
        return {4, 0x80, 0xBF};
    if (byte == 0xF4)
        return {4, 0x80, 0x8F};
    return {0, 0, 0};
}

SequenceLength measure(const std::uint8_t* bytes, std::size_t count)
{
    const Lead lead = leadOf(bytes[0]);
    if (lead.length == 0)
        return {Sequence::invalid, 1};
    for (std::size_t i = 1; i < lead.length; ++i) {
        if (i == count)
            return {Sequence::unfinished, count};
        const std::uint8_t from = i == 1 ? lead.secondFrom : 0x80;
        const std::uint8_t to = i == 1 ? lead.secondTo : 0xBF;
        if (bytes[i] < from || bytes[i] > to)
            return {Sequence::invalid, i};
    }
    return {Sequence::complete, lead.length};
}

bool isAscii(const std::uint8_t* bytes, std::size_t count)
{
    std::uint8_t bits = 0;
    for (std::size_t i = 0; i < count; ++i)
        bits = static_cast<std::uint8_t>(bits | bytes[i]);
    return bits < 0x80;
}

// How many of the first bytes are below 0x80.
std::size_t asciiLength(const std::uint8_t* bytes, std::size_t count)
{
    std::size_t length = 0;
    for (; count - length >= 8; length += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, bytes + length, 8);
        if (eight & 0x8080808080808080U)
            break;
    }
    while (length < count && bytes[length] < 0x80)
        ++length;
    return length;
}

}  // namespace

TextDecoder::TextDecoder(std::size_t blockSize)
    : blockSize_(std::clamp<std::size_t>(blockSize, 1, TextBlock::maximumUnits)), units_(blockSize_)
{
}

void TextDecoder::feed(std::string_view bytes)
{
    const auto* next = reinterpret_cast<const std::uint8_t*>(bytes.data());
    std::size_t count = bytes.size();
    while (partialCount_ > 0 && count > 0) {
        partial_[partialCount_++] = *next++;
        --count;
        const SequenceLength sequence = measure(partial_.data(), partialCount_);
        if (sequence.kind == Sequence::complete) {
            appendSequence(partial_.data(), partialCount_);
            partialCount_ = 0;
        } else if (sequence.kind == Sequence::invalid) {
            // Only the byte that came last can break a sequence, and it may begin another one.
            appendInvalid(partial_.data(), sequence.bytes);
            partialCount_ = 0;
            --next;
            ++count;
        }
    }
    decode(next, count);
}

TextSnapshot TextDecoder::finish()
{
    if (partialCount_ > 0)
        appendInvalid(partial_.data(), partialCount_);
    partialCount_ = 0;
    flush();
    std::vector<TextTreeEntry> entries = std::move(entries_);
    entries_.clear();
    memory_ = {};
    return TextSnapshot(rootOver(0, std::move(entries)));
}

void TextDecoder::decode(const std::uint8_t* bytes, std::size_t count)
{
    while (count > 0) {
        std::size_t step = takeAscii(bytes, count);
        bytes += step;
        count -= step;
        while (count > 0 && bytes[0] >= 0x80) {
            const SequenceLength sequence = measure(bytes, count);
            step = sequence.bytes;
            if (sequence.kind == Sequence::complete) {
                appendSequence(bytes, step);
            } else if (sequence.kind == Sequence::invalid) {
                appendInvalid(bytes, step);
            } else {
                std::copy_n(bytes, step, partial_.begin());
                partialCount_ = step;
            }
            bytes += step;
            count -= step;
        }
    }
}

// Takes the ASCII at the front, and says how many bytes that were.
std::size_t TextDecoder::takeAscii(const std::uint8_t* bytes, std::size_t count)
{
    std::size_t taken = 0;
    while (unitCount_ == 0 && count - taken >= blockSize_ && isAscii(bytes + taken, blockSize_)) {
        entries_.push_back(entryOf(TextBlock::makeAscii({bytes + taken, blockSize_}, &memory_)));
        taken += blockSize_;
    }
    while (taken < count) {
        const std::size_t room = std::min(blockSize_ - unitCount_, count - taken);
        const std::size_t length = asciiLength(bytes + taken, room);
        std::copy_n(bytes + taken, length, units_.data() + unitCount_);
        unitCount_ += length;
        taken += length;
        if (unitCount_ == blockSize_)
            flush();
        if (length < room)
            break;
    }
    return taken;
}

void TextDecoder::appendSequence(const std::uint8_t* bytes, std::size_t count)
{
    const auto low = [&](std::size_t i) { return static_cast<char32_t>(bytes[i] & 0x3F); };
    switch (count) {
    case 1:
        appendUnit(bytes[0]);
        break;
    case 2:
        appendUnit(static_cast<char16_t>((bytes[0] & 0x1F) << 6 | low(1)));
        break;
    case 3:
        appendUnit(static_cast<char16_t>((bytes[0] & 0x0F) << 12 | low(1) << 6 | low(2)));
        break;
    default: {
        const char32_t scalar =
            static_cast<char32_t>(bytes[0] & 0x07) << 18 | low(1) << 12 | low(2) << 6 | low(3);
        appendUnit(static_cast<char16_t>(0xD7C0 + (scalar >> 10)));
        appendUnit(static_cast<char16_t>(0xDC00 + (scalar & 0x3FF)));
    }
    }
}

void TextDecoder::appendInvalid(const std::uint8_t* bytes, std::size_t count)
{
    RawByteMark mark;
    mark.offset = static_cast<std::uint16_t>(unitCount_);
    mark.count = static_cast<std::uint8_t>(count);
    std::copy_n(bytes, count, mark.bytes.begin());
    marks_.push_back(mark);
    appendUnit(0xFFFD);
}

void TextDecoder::appendUnit(char16_t unit)
{
    units_[unitCount_++] = unit;
    if (unitCount_ == blockSize_)
        flush();
}

void TextDecoder::flush()
{
    if (unitCount_ == 0)
        return;
    entries_.push_back(entryOf(TextBlock::make({units_.data(), unitCount_}, marks_, &memory_)));
    unitCount_ = 0;
    marks_.clear();
}

TextSnapshot decodedText(std::string_view bytes, std::size_t blockSize)
{
    TextDecoder decoder(blockSize);
    decoder.feed(bytes);
    return decoder.finish();
}

}  // namespace tavrel
