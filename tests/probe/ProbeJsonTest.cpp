#include "probe/ProbeJson.h"
#include "probe/Adaptors.h"

#include <gtest/gtest.h>
#include <string>

namespace tavrel::probe {
namespace {

std::u16string textOfLine(std::string_view line)
{
    const auto json = readLine(line);
    return json ? textFromJson(*json) : u"unreadable";
}

std::string lineOfText(std::u16string_view text)
{
    return writeLine(jsonFromText(text));
}

std::string repeated(std::string_view piece, std::size_t count)
{
    std::string out;
    for (std::size_t i = 0; i < count; ++i)
        out.append(piece);
    return out;
}

TEST(ProbeJson, ReadsLoneSurrogates)
{
    EXPECT_EQ(textOfLine(R"("a\uD83Db")"), u"a\xD83D"
                                           u"b");
    EXPECT_EQ(textOfLine(R"("\uDE00")"), u"\xDE00");
    EXPECT_EQ(textOfLine(R"("\uD83D\uD83D\uDE00")"), u"\xD83D\xD83D\xDE00");
    EXPECT_EQ(textOfLine(R"("\uDE00\uD83D")"), u"\xDE00\xD83D");
    EXPECT_EQ(textOfLine(R"("\uD83D\n")"), u"\xD83D\n");
    EXPECT_EQ(textOfLine(R"("\uD83D\\uDE00")"), u"\xD83D\\uDE00");
    EXPECT_EQ(textOfLine(R"("\ud83d")"), u"\xD83D");
}

TEST(ProbeJson, LeavesPairsAndEscapedBackslashesAlone)
{
    EXPECT_EQ(textOfLine(R"("\uD83D\uDE00")"), u"\U0001F600");
    EXPECT_EQ(textOfLine("\"\U0001F600\u00E9\""), u"\U0001F600\u00E9");
    EXPECT_EQ(textOfLine(R"("\\uD83D")"), u"\\uD83D");
    EXPECT_EQ(textOfLine(R"("\\\uD83D")"), u"\\\xD83D");
}

TEST(ProbeJson, KeepsTheNoncharacterThatLeadsItsOwnEscapes)
{
    EXPECT_EQ(textOfLine("\"\uFDD0d83d\""), u"\uFDD0d83d");
    EXPECT_EQ(textOfLine(R"("\uFDD0d83d")"), u"\uFDD0d83d");
    EXPECT_EQ(textOfLine("\"\uFDD0\uFDD0\""), u"\uFDD0\uFDD0");
    EXPECT_EQ(textOfLine(lineOfText(u"\uFDD0"
                                    u"d83d\xD83D")),
              u"\uFDD0"
              u"d83d\xD83D");
    EXPECT_EQ(writeLine(jsonFromUtf8("\uFDD0d83d")), R"("\ufdd0d83d")");
}

TEST(ProbeJson, WritesLoneSurrogatesAsEscapes)
{
    EXPECT_EQ(lineOfText(u"a\xD83D"), R"("a\ud83d")");
    EXPECT_EQ(lineOfText(u"\xDE00\xD83D"), R"("\ude00\ud83d")");
    EXPECT_EQ(lineOfText(u"\U0001F600"), "\"\U0001F600\"");
    EXPECT_EQ(lineOfText(u"\"\\\n\x1b\x7f"), "\"\\\"\\\\\\n\\u001b\x7f\"");
}

TEST(ProbeJson, EveryUnitComesBackThroughALine)
{
    std::u16string all;
    for (int unit = 0; unit < 0x10000; ++unit)
        all.push_back(static_cast<char16_t>(unit));
    EXPECT_EQ(textOfLine(lineOfText(all)), all);
    std::u16string backwards(all.rbegin(), all.rend());
    EXPECT_EQ(textOfLine(lineOfText(backwards)), backwards);
}

TEST(ProbeJson, KeysCarryLoneSurrogatesToo)
{
    const auto json = readLine(R"({"\uD83D":1})");
    ASSERT_TRUE(json);
    EXPECT_EQ(writeLine(*json), R"({"\ud83d":1})");
    EXPECT_EQ(textFromJson(json->begin().key()), u"\xD83D");
}

TEST(ProbeJson, TextAsBytesHasAReplacementForALoneSurrogate)
{
    EXPECT_EQ(utf8FromJson(*readLine(R"("a\uD83Db")")), "a\uFFFDb");
    EXPECT_EQ(utf8FromJson(*readLine(R"("\uD83D\uDE00\uFDD0")")), "\U0001F600\uFDD0");
    EXPECT_EQ(jsonFromUtf8("a\xFF"
                           "b\xC3"),
              Json("a\uFFFDb\uFFFD"));
}

TEST(ProbeJson, RefusesWhatIsNotALineOfJson)
{
    for (const std::string_view line :
         {"", "{", "{} {}", "{'a':1}", "[1,]", "\"\xFF\"", "\"\xED\xA0\xBD\"", "\"\\u12\"", "\"\\",
          "\"\\uD83", "nul", "\"a\nb\""})
        EXPECT_FALSE(readLine(line)) << line;
}

TEST(ProbeJson, RefusesDeepRequestsBeforeTheyAreRead)
{
    const auto nested = [](std::size_t depth) {
        return repeated("[", depth) + repeated("]", depth);
    };
    EXPECT_TRUE(readLine(nested(maximumDepth)));
    EXPECT_FALSE(readLine(nested(maximumDepth + 1)));
    EXPECT_FALSE(readLine(repeated("[", 1'000'000)));
    EXPECT_TRUE(readLine('"' + repeated("[", 5'000) + '"'));
    EXPECT_TRUE(readLine('[' + repeated("[],", 5'000) + "[]]"));
}

TEST(ProbeJson, WritesValuesOfAnyDepth)
{
    Json value;
    for (int depth = 0; depth < 100'000; ++depth) {
        Json outer = Json::array();
        outer.push_back(std::move(value));
        value = std::move(outer);
    }
    EXPECT_EQ(writeLine(value), repeated("[", 100'000) + "null" + repeated("]", 100'000));
}

TEST(ProbeJson, WritesWhatTheLibraryReads)
{
    const Json value = Json::parse(R"({"a":[1,-2,3.5,true,false,null,"x"],"b":{},"c":[],"":""})");
    EXPECT_EQ(Json::parse(writeLine(value)), value);
    EXPECT_EQ(writeLine(value), value.dump());
}

TEST(ProbeJson, HexIsBytesBothWays)
{
    EXPECT_EQ(bytesFromHex("00ff1B"), std::string("\0\xFF\x1B", 3));
    EXPECT_EQ(hexFromBytes(std::string_view("\0\xFF\x1B", 3)), "00ff1b");
    EXPECT_THROW(bytesFromHex("0"), RequestError);
    EXPECT_THROW(bytesFromHex("0g"), RequestError);
    EXPECT_THROW(bytesFromHex("-1"), RequestError);
    EXPECT_THROW(bytesFromHex(1), RequestError);
}

TEST(ProbeJson, RangesAreTwoNumbers)
{
    EXPECT_EQ(rangeFromJson(Json::parse("[3,4]")), (TextRange{3, 4}));
    EXPECT_EQ(jsonFromRange({3, 4}), Json::parse("[3,4]"));
    for (const char* bad : {"[3]", "[3,4,5]", "[-1,0]", "[1.5,0]", "3", "null", "[\"3\",4]"})
        EXPECT_THROW(rangeFromJson(Json::parse(bad)), RequestError) << bad;
}

TEST(Probe, AnswersAnErrorToRequestsThatItCannotRead)
{
    for (const char* line :
         {"", "nonsense", "[]", "1", "{}", R"({"engine":null})", R"({"engine":1})",
          R"({"engine":"none such"})", R"({"engine":"cson"})", R"({"engine":"cson","text":1})",
          R"({"engine":"cson","textHex":"f"})", R"({"engine":"cson","text":"","textHex":""})",
          R"({"engine":"cson","text":"a","value":"yes"})",
          R"({"engine":"cson","text":"a","bench":-1})",
          R"({"engine":"cson","text":"a","bench":"1"})",
          R"({"engine":"cson","text":"a","bench":1e30})"}) {
        const Json answer = Json::parse(respondToLine(line));
        ASSERT_TRUE(answer.is_object()) << line;
        EXPECT_EQ(answer.size(), 1U) << line;
        EXPECT_TRUE(answer["error"].is_string()) << line;
    }
}

TEST(Probe, NamesTheUnknownEngine)
{
    EXPECT_EQ(respondToLine(R"({"engine":"x\uD83Dy"})"),
              "{\"error\":\"unknown engine 'x\uFFFDy'\"}");
}

TEST(Probe, BenchAddsOneTimeForEachRun)
{
    const Json answer = respond(Json::parse(R"({"engine":"cson","text":"{copy}","bench":7})"));
    EXPECT_EQ(answer["json"], R"({"#":"copy"})");
    ASSERT_EQ(answer["nanoseconds"].size(), 7U);
    for (const Json& time : answer["nanoseconds"])
        EXPECT_TRUE(time.is_number_unsigned() || time.get<std::int64_t>() >= 0);
    EXPECT_FALSE(respond(Json::parse(R"({"engine":"cson","text":"a"})")).contains("nanoseconds"));
}

TEST(ProbeRequest, EachRunHasAFreshInput)
{
    const Json body = Json::parse(R"({"bench":5})");
    ProbeRequest request(body);
    const std::string result = request.measured([] { return std::string("a"); },
                                                [](std::string& input) { return input += "b"; });
    EXPECT_EQ(result, "ab");
}

}  // namespace
}  // namespace tavrel::probe
