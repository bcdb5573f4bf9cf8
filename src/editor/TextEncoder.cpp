#include "editor/TextEncoder.h"

#include "editor/TextTree.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace tavrel {

namespace {

constexpr bool isHighSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

class Encoder {
public:
    explicit Encoder(const std::function<bool(std::string_view)>& visit)
        : visit_(visit), buffer_(bufferBytes)
    {
    }

    bool encode(const TextBlock& block)
    {
        if (block.isAscii())
            return endSurrogate() && putBytes(block.narrowUnits(), block.length());
        if (const std::uint8_t* units = block.narrowUnits())
            return encodeUnits(units, 0, block.length());
        std::size_t from = 0;
        for (const RawByteMark& mark : block.marks()) {
            if (!encodeUnits(block.wideUnits(), from, mark.offset) || !endSurrogate() ||
                !putBytes(mark.bytes.data(), mark.count))
                return false;
            from = mark.offset + std::size_t(1);
        }
        return encodeUnits(block.wideUnits(), from, block.length());
    }

    bool finish() { return endSurrogate() && flush(); }

private:
    static constexpr std::size_t bufferBytes = 65536;
    static constexpr std::size_t longestSequence = 4;

    template<class Unit>
    bool encodeUnits(const Unit* units, std::size_t from, std::size_t to)
    {
        for (; from < to; ++from) {
            // A pending surrogate and a unit take six bytes at most.
            if (buffer_.size() - used_ < 2 * longestSequence && !flush())
                return false;
            encodeUnit(units[from]);
        }
        return true;
    }

    void encodeUnit(char16_t unit)
    {
        if (high_ != 0) {
            const char16_t high = high_;
            high_ = 0;
            if (isLowSurrogate(unit)) {
                const char32_t scalar = 0x10000 + ((high - 0xD800U) << 10) + (unit - 0xDC00U);
                put(0xF0 | scalar >> 18);
                put(0x80 | (scalar >> 12 & 0x3F));
                put(0x80 | (scalar >> 6 & 0x3F));
                put(0x80 | (scalar & 0x3F));
                return;
            }
            putThree(0xFFFD);
        }
        if (unit < 0x80) {
            put(unit);
        } else if (unit < 0x800) {
            put(0xC0 | unit >> 6);
            put(0x80 | (unit & 0x3F));
        } else if (isHighSurrogate(unit)) {
            high_ = unit;
        } else {
            putThree(isLowSurrogate(unit) ? u'\uFFFD' : unit);
        }
    }

    // A high surrogate that no low one follows.
    bool endSurrogate()
    {
        if (high_ == 0)
            return true;
        high_ = 0;
        if (buffer_.size() - used_ < longestSequence && !flush())
            return false;
        putThree(0xFFFD);
        return true;
    }

    void put(char32_t byte) { buffer_[used_++] = static_cast<char>(byte); }
    void putThree(char16_t unit)
    {
        put(0xE0 | unit >> 12);
        put(0x80 | (unit >> 6 & 0x3F));
        put(0x80 | (unit & 0x3F));
    }

    bool putBytes(const std::uint8_t* bytes, std::size_t count)
    {
        while (count > 0) {
            if (used_ == buffer_.size() && !flush())
                return false;
            const std::size_t step = std::min(count, buffer_.size() - used_);
            std::memcpy(buffer_.data() + used_, bytes, step);
            used_ += step;
            bytes += step;
            count -= step;
        }
        return true;
    }

    bool flush()
    {
        const std::string_view bytes(buffer_.data(), used_);
        used_ = 0;
        return bytes.empty() || visit_(bytes);
    }

    const std::function<bool(std::string_view)>& visit_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
    char16_t high_ = 0;  // A high surrogate that waits for the next unit, else 0.
};

}  // namespace

bool forEachUtf8Chunk(const TextSnapshot& text, const std::function<bool(std::string_view)>& visit)
{
    if (text.isEmpty())
        return true;
    Encoder encoder(visit);
    return forEachBlock(*text.root(), {0, text.length()},
                        [&](const TextTreeEntry& entry, std::size_t) {
                            return encoder.encode(*entry.block);
                        }) &&
           encoder.finish();
}

std::string encodedText(const TextSnapshot& text)
{
    std::string bytes;
    bytes.reserve(text.length());
    forEachUtf8Chunk(text, [&](std::string_view chunk) {
        bytes.append(chunk);
        return true;
    });
    return bytes;
}

}  // namespace tavrel
