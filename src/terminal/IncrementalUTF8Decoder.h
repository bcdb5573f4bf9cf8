#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavrel {

/// Turns the bytes of a stream into code points, one byte at a time, so that a character that is
/// split between two reads comes out whole.
///
/// A broken sequence, a surrogate and a value above U+10FFFF each come out as U+FFFD. Overlong
/// forms are taken as they are. A value: two streams fed alike are equal.
class IncrementalUTF8Decoder {
public:
    static constexpr char32_t replacement = 0xFFFD;

    /// Whether a sequence has begun and is not complete.
    bool hasPending() const { return pendingCount_ > 0; }

    /// Takes the next byte and calls `output(char32_t)` for each code point that is complete with
    /// it: none, one or two.
    template<class Output>
    void push(std::uint8_t byte, Output output);

    bool operator==(const IncrementalUTF8Decoder&) const = default;

    /// The bytes of a sequence that starts with `lead`, or 0 where none does.
    static constexpr std::size_t sequenceLength(std::uint8_t lead)
    {
        if (lead < 0x80)
            return 1;
        return lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 0;
    }
    static constexpr bool isContinuation(std::uint8_t byte) { return (byte & 0xC0) == 0x80; }
    /// The code point of a whole sequence of `length` bytes.
    static constexpr char32_t decoded(const std::uint8_t* bytes, std::size_t length)
    {
        constexpr std::array<std::uint8_t, 5> leadMasks{0, 0x7F, 0x1F, 0x0F, 0x07};
        char32_t value = bytes[0] & leadMasks[length];
        for (std::size_t i = 1; i < length; ++i)
            value = value << 6 | (bytes[i] & 0x3F);
        const bool isScalar = value < 0xD800 || (value > 0xDFFF && value <= 0x10FFFF);
        return isScalar ? value : replacement;
    }

private:
    std::array<std::uint8_t, 4> pending_{};
    std::uint8_t pendingCount_ = 0;
};

template<class Output>
void IncrementalUTF8Decoder::push(std::uint8_t byte, Output output)
{
    pending_[pendingCount_++] = byte;
    const std::size_t length = sequenceLength(pending_[0]);
    if (length == 0) {
        // An impossible lead that came in place of a continuation takes the byte behind it along.
        pendingCount_ = 0;
        output(replacement);
    } else if (pendingCount_ > 1 && !isContinuation(byte)) {
        pending_[0] = byte;
        pendingCount_ = byte < 0x80 ? 0 : 1;
        output(replacement);
        if (byte < 0x80)
            output(char32_t{byte});
    } else if (pendingCount_ == length) {
        pendingCount_ = 0;
        output(decoded(pending_.data(), length));
    }
}

}  // namespace tavrel
