#include "config/cson/CSONValue.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace tavrel {
namespace {

CSONValue integer(std::int64_t value)
{
    return CSONValue(value);
}

CSONValue text(const char* value)
{
    return CSONValue(std::string(value));
}

CSONValue nestedArrays(std::size_t depth)
{
    CSONValue value;
    for (std::size_t i = 0; i < depth; ++i)
        value = CSONValue::array({value});
    return value;
}

TEST(CSONValue, ReadersAnswerNothingForAnotherShape)
{
    for (const CSONValue& value :
         {CSONValue(), text("1"), CSONValue::array({}), CSONValue::map({})}) {
        EXPECT_EQ(value.boolean(), std::nullopt);
        EXPECT_EQ(value.integer(), std::nullopt);
        EXPECT_EQ(value.unsignedInteger(), std::nullopt);
        EXPECT_EQ(value.number(), std::nullopt);
    }
    EXPECT_EQ(integer(1).string(), std::nullopt);
    EXPECT_TRUE(text("a").elements().empty());
    EXPECT_TRUE(CSONValue::array({integer(1)}).members().empty());
    EXPECT_TRUE(CSONValue::map({{"a", integer(1)}}).elements().empty());
    EXPECT_EQ(CSONValue::array({integer(1)}).find("a"), nullptr);
    EXPECT_EQ(CSONValue().find("a"), nullptr);
}

TEST(CSONValue, NumbersAndBooleansAreOneShape)
{
    EXPECT_EQ(CSONValue(true).integer(), 1);
    EXPECT_EQ(CSONValue(false).number(), 0.0);
    EXPECT_EQ(integer(0).boolean(), false);
    EXPECT_EQ(integer(-3).boolean(), true);
    EXPECT_EQ(CSONValue(0.5).boolean(), true);
    EXPECT_FALSE(CSONValue(true).isNumber());
    EXPECT_FALSE(integer(1).isBoolean());
}

TEST(CSONValue, AnIntegerOfAFloatingNumberIsCutAndClamped)
{
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(CSONValue(2.9).integer(), 2);
    EXPECT_EQ(CSONValue(-2.9).integer(), -2);
    EXPECT_EQ(CSONValue(1e300).integer(), largest);
    EXPECT_EQ(CSONValue(-1e300).integer(), smallest);
    EXPECT_EQ(CSONValue(9223372036854775808.0).integer(), largest);
    EXPECT_EQ(CSONValue(-9223372036854775808.0).integer(), smallest);
    EXPECT_EQ(CSONValue(std::numeric_limits<double>::infinity()).integer(), largest);
    EXPECT_EQ(CSONValue(std::numeric_limits<double>::quiet_NaN()).integer(), 0);
    EXPECT_EQ(CSONValue(std::uint64_t{18446744073709551615U}).integer(), largest);
    EXPECT_EQ(CSONValue(std::uint64_t{7}), integer(7));
    EXPECT_EQ(integer(-1).unsignedInteger(), std::nullopt);
}

TEST(CSONValue, MembersAreSortedAndFoundByName)
{
    const CSONValue map = CSONValue::map(
        {{"b", integer(2)}, {"", integer(0)}, {"a", integer(1)}, {"\xC3\xA9", text("e")}});
    ASSERT_EQ(map.members().size(), 4U);
    EXPECT_EQ(map.members()[0].name, "");
    EXPECT_EQ(map.members()[1].name, "a");
    EXPECT_EQ(map.members()[2].name, "b");
    EXPECT_EQ(*map.find("b"), integer(2));
    EXPECT_EQ(*map.find("\xC3\xA9"), text("e"));
    EXPECT_EQ(map.find("c"), nullptr);
}

TEST(CSONValue, TheLastMemberOfANameCounts)
{
    const CSONValue map = CSONValue::map(
        {{"a", integer(1)}, {"b", integer(2)}, {"a", integer(3)}, {"a", integer(4)}});
    EXPECT_EQ(map, CSONValue::map({{"a", integer(4)}, {"b", integer(2)}}));
    std::vector<CSONMember> many;
    for (int i = 0; i < 1000; ++i)
        many.push_back({"key" + std::to_string(i % 100), integer(i)});
    const CSONValue large = CSONValue::map(many);
    ASSERT_EQ(large.members().size(), 100U);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(*large.find("key" + std::to_string(i)), integer(900 + i));
}

TEST(CSONValue, ComparesByContents)
{
    EXPECT_EQ(integer(1), CSONValue(1.0));
    EXPECT_NE(integer(1), CSONValue(true));
    EXPECT_NE(integer(0), CSONValue());
    EXPECT_NE(text("1"), integer(1));
    EXPECT_NE(CSONValue::array({}), CSONValue::map({}));
    EXPECT_EQ(CSONValue::array({integer(1), text("a")}), CSONValue::array({integer(1), text("a")}));
    EXPECT_NE(CSONValue::array({integer(1)}), CSONValue::array({integer(1), integer(1)}));
    EXPECT_NE(CSONValue::map({{"a", integer(1)}}), CSONValue::map({{"a", integer(2)}}));
    EXPECT_NE(CSONValue::map({{"a", integer(1)}}), CSONValue::map({{"b", integer(1)}}));
    EXPECT_NE(integer(9007199254740993), integer(9007199254740992));
    EXPECT_NE(CSONValue(std::uint64_t{18446744073709551615U}),
              CSONValue(std::uint64_t{18446744073709551614U}));
}

TEST(CSONValue, ACopySharesAndOutlivesTheOriginal)
{
    CSONValue copy;
    {
        const CSONValue original =
            CSONValue::map({{"a", CSONValue::array({text("long enough text")})}});
        copy = original;
        EXPECT_EQ(copy.members().data(), original.members().data());
    }
    EXPECT_EQ(copy.find("a")->elements()[0].string(), "long enough text");
    // A part outlives the whole.
    copy = CSONValue(*copy.find("a"));
    EXPECT_EQ(copy.elements()[0].string(), "long enough text");
    copy = CSONValue(copy.elements()[0]);
    EXPECT_EQ(copy.string(), "long enough text");
}

TEST(CSONValue, MayBeAssignedItsOwnPart)
{
    CSONValue value =
        CSONValue::map({{"a", CSONValue::array({integer(7), text("long enough text")})}});
    value = *value.find("a");
    EXPECT_EQ(value.elements().size(), 2U);
    CSONValue other = value;
    value = value.elements()[0];
    EXPECT_EQ(value, integer(7));
    other = other.elements()[1];
    EXPECT_EQ(other, text("long enough text"));
}

TEST(CSONValue, NeedsNoStackForDepth)
{
    constexpr std::size_t depth = 1'000'000;
    const CSONValue deep = nestedArrays(depth);
    const CSONValue other = nestedArrays(depth);
    EXPECT_TRUE(deep == other);
    EXPECT_FALSE(deep == nestedArrays(depth + 1));
    const CSONValue copy = deep;
    EXPECT_TRUE(copy == deep);
}

TEST(CSONValue, CopiesMayBeDroppedOnSeveralThreads)
{
    std::vector<std::thread> threads;
    {
        const CSONValue shared = CSONValue::map({{"a", nestedArrays(100)}});
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([copy = shared] {
                for (int round = 0; round < 1000; ++round) {
                    const CSONValue part = *copy.find("a");
                    EXPECT_EQ(part.elements().size(), 1U);
                }
            });
    }
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
}  // namespace tavrel
