#include "editor/BlockMemory.h"

#include "editor/TextDecoder.h"
#include "editor/TextEncoder.h"
#include "editor/TextStorage.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tavrel {

TEST(BlockSlab, GivesRoomUntilItIsFullAndKnowsWhatLiesInIt)
{
    const SharedRef<BlockSlab> slab = BlockSlab::make();
    ASSERT_TRUE(slab);
    std::size_t total = 0;
    char* last = nullptr;
    while (auto* memory = static_cast<char*>(slab->allocate(5000))) {
        ASSERT_GE(memory, last);
        std::fill_n(memory, 5000, 'x');
        ASSERT_EQ(BlockSlab::holding(memory + 4999), slab.get());
        last = memory + 5000;
        total += 5000;
    }
    EXPECT_GT(total, largePageBytes - 10'000);
    EXPECT_EQ(slab->allocate(static_cast<std::size_t>(-100)), nullptr);
}

TEST(BlockMemory, TakesSlabsForLargeTextsAlone)
{
    BlockMemory memory;
    const BlockMemory::Piece first = memory.allocate(1000);
    EXPECT_EQ(first.slab, nullptr);
    ::operator delete(first.memory);
    const BlockMemory::Piece large = memory.allocate(std::size_t(1) << 20);
    EXPECT_EQ(large.slab, nullptr);
    ::operator delete(large.memory);
    EXPECT_NE(memory.allocate(1000).slab, nullptr);
}

TEST(BlockMemory, BlocksOfALargeTextOutliveTheTextTheyWereReadFor)
{
    std::string bytes;
    while (bytes.size() < 8'000'000)
        bytes += "line " + std::to_string(bytes.size()) + "\n";
    TextSnapshot slice;
    {
        TextStorage storage(decodedText(bytes));
        slice = storage.snapshot().slice({5'000'000, 20'000});
        storage.replace({0, storage.length()}, u"");
    }
    EXPECT_EQ(encodedText(slice), bytes.substr(5'000'000, 20'000));
}

}  // namespace tavrel
