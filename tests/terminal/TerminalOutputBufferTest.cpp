#include "terminal/TerminalOutputBuffer.h"

#include <gtest/gtest.h>
#include <thread>

namespace tavrel {
namespace {

TEST(TerminalOutputBuffer, WhatWaitsTogetherIsTakenTogether)
{
    TerminalOutputBuffer buffer;
    EXPECT_TRUE(buffer.add("one "));
    EXPECT_FALSE(buffer.add("two "));
    EXPECT_FALSE(buffer.add("three"));
    const auto piece = buffer.take();
    EXPECT_EQ(piece.bytes, "one two three");
    EXPECT_FALSE(piece.hasMore);
    EXPECT_EQ(buffer.take().bytes, "");
    EXPECT_TRUE(buffer.add("four"));
}

TEST(TerminalOutputBuffer, NothingIsNoNews)
{
    TerminalOutputBuffer buffer;
    EXPECT_FALSE(buffer.add(""));
}

TEST(TerminalOutputBuffer, APieceHasALimit)
{
    TerminalOutputBuffer buffer;
    constexpr std::size_t limit = TerminalOutputBuffer::pieceBytes;
    buffer.add(std::string(limit - 1, 'a'));
    buffer.add("bc");
    auto first = buffer.take();
    EXPECT_EQ(first.bytes, std::string(limit - 1, 'a') + "b");
    EXPECT_TRUE(first.hasMore);
    buffer.recycle(std::move(first.bytes));
    EXPECT_EQ(buffer.take().bytes, "c");
    buffer.add(std::string(3 * limit, 'x'));
    for (const bool hasMore : {true, true, false}) {
        const auto piece = buffer.take();
        EXPECT_EQ(piece.bytes.size(), limit);
        EXPECT_EQ(piece.hasMore, hasMore);
    }
}

TEST(TerminalOutputBuffer, TwoThreadsLoseNothing)
{
    TerminalOutputBuffer buffer;
    std::string sent;
    for (int number = 0; number < 20'000; ++number)
        sent += std::to_string(number) + ' ';
    std::thread writer([&] {
        for (std::size_t at = 0; at < sent.size(); at += 7)
            buffer.add(std::string_view(sent).substr(at, 7));
    });
    std::string received;
    while (received.size() < sent.size()) {
        auto piece = buffer.take();
        received += piece.bytes;
        buffer.recycle(std::move(piece.bytes));
    }
    writer.join();
    EXPECT_EQ(received, sent);
}

}  // namespace
}  // namespace tavrel
