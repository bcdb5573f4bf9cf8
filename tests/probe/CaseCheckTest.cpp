#include "CaseCheck.h"
#include "CaseFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

using probe::Json;

bool meets(const char* expect, const char* response)
{
    return differences(Json::parse(expect), Json::parse(response)).empty();
}

TEST(CaseCheck, ComparesTheMembersOfExpectAlone)
{
    EXPECT_TRUE(meets(R"({"a":1})", R"({"a":1,"b":2})"));
    EXPECT_FALSE(meets(R"({"a":1})", R"({"a":2})"));
    EXPECT_FALSE(meets(R"({"a":1})", R"({"b":1})"));
    EXPECT_FALSE(meets(R"({"a":[1]})", R"({"a":[1,2]})"));
    EXPECT_FALSE(meets(R"({"a":{"b":1}})", R"({"a":{"b":1,"c":1}})"));
    EXPECT_FALSE(meets(R"({"a":[]})", R"({"a":{}})"));
    EXPECT_FALSE(meets(R"({"a":1})", "null"));
    EXPECT_FALSE(meets(R"({"a":"1"})", R"({"a":1})"));
}

TEST(CaseCheck, MissingAndNullAreEqual)
{
    EXPECT_TRUE(meets(R"({"a":null})", "{}"));
    EXPECT_TRUE(meets(R"({"a":null})", "null"));
    EXPECT_TRUE(meets(R"({"a":{"b":null}})", R"({"a":{}})"));
    EXPECT_TRUE(meets(R"({"a":{}})", R"({"a":{"b":null}})"));
    EXPECT_FALSE(meets(R"({"a":null})", R"({"a":0})"));
    EXPECT_TRUE(meets("null", "null"));
    EXPECT_TRUE(meets("null", R"({"color":null})"));
    EXPECT_FALSE(meets("null", R"({"color":1})"));
    EXPECT_FALSE(meets(R"({"a":[null]})", R"({"a":[]})"));
}

TEST(CaseCheck, NumbersCompareByValue)
{
    EXPECT_TRUE(meets(R"({"a":1})", R"({"a":1.0})"));
    EXPECT_FALSE(meets(R"({"a":1})", R"({"a":1.5})"));
    EXPECT_FALSE(meets(R"({"a":1})", R"({"a":true})"));
}

TEST(CaseCheck, NamesThatBeginWithASlashArePointers)
{
    EXPECT_TRUE(meets(R"({"/a/1/b":2})", R"({"a":[0,{"b":2}]})"));
    EXPECT_FALSE(meets(R"({"/a/1/b":2})", R"({"a":[0,{"b":3}]})"));
    EXPECT_FALSE(meets(R"({"/a/9":2})", R"({"a":[0]})"));
    EXPECT_TRUE(meets(R"({"/a/9":null})", R"({"a":[0]})"));
    EXPECT_TRUE(meets(R"({"/a/b":null})", "null"));
}

TEST(CaseCheck, RunsACaseThroughItsEngine)
{
    EXPECT_TRUE(problemsOfCase(R"({"name":"n","engine":"cson","text":"a",)"
                               R"("expect":{"json":"\"a\""}})")
                    .empty());
    EXPECT_FALSE(problemsOfCase(R"({"name":"n","engine":"cson","text":"a",)"
                                R"("expect":{"json":"\"b\""}})")
                     .empty());
}

TEST(CaseCheck, ACaseThatChecksNothingFails)
{
    for (const char* line : {"", "{", "[]", R"({"name":"n","engine":"cson","text":"a"})",
                             R"({"name":"n","engine":"cson","text":"a","expect":{}})",
                             R"({"engine":"cson","text":"a","expect":{"json":"\"a\""}})",
                             R"({"name":"n","engine":"cson","text":"a","expectFiles":{"a":null}})"})
        EXPECT_FALSE(problemsOfCase(line).empty()) << line;
}

TEST(CaseCheck, ThePathOfTheFolderStandsForItsMark)
{
    const char* line = R"({"name":"n","engine":"cson","text":"[\"{DIR}/a\"]","value":true,)"
                       R"("setup":{},"expect":{"/value/0":"{DIR}/a"}})";
    EXPECT_EQ(problemsOfCase(line), std::vector<std::string>());
}

TEST(CaseCheck, ChecksTheFilesAfterwards)
{
    const auto problems = [](const std::string& files) {
        return problemsOfCase(R"({"name":"n","engine":"cson","text":"a","setup":{"a/b":"x\n"},)"
                              R"("setupHex":{"c":"ff00"},"expectFiles":)" +
                              files + "}");
    };
    EXPECT_TRUE(problems(R"({"a/b":"x\n","none":null})").empty());
    EXPECT_FALSE(problems(R"({"a/b":"x"})").empty());
    EXPECT_FALSE(problems(R"({"c":null})").empty());
    EXPECT_FALSE(problems(R"({"none":""})").empty());
}

TEST(CaseFolder, HoldsTheFilesOfItsCaseAndGoesWithIt)
{
    std::filesystem::path path;
    {
        const CaseFolder folder(Json::parse(
            R"({"setup":{"a.txt":"{DIR}","deep/er/b":"","empty/":""},"setupHex":{"raw":"ff00"}})"));
        path = folder.path();
        EXPECT_EQ(folder.contents("a.txt"), path.string());
        EXPECT_EQ(folder.contents("deep/er/b"), "");
        EXPECT_EQ(folder.contents("raw"), std::string("\xFF\0", 2));
        EXPECT_EQ(folder.contents("none"), std::nullopt);
        EXPECT_TRUE(std::filesystem::is_directory(path / "empty"));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(CaseFolder, StaysInsideItself)
{
    EXPECT_THROW(CaseFolder(Json::parse(R"({"setup":{"../a":""}})")), probe::RequestError);
    EXPECT_THROW(CaseFolder(Json::parse(R"({"setup":{"/etc/a":""}})")), probe::RequestError);
}

TEST(CaseFolder, IsARepositoryWithTheNamedFilesCommitted)
{
    const CaseFolder folder(
        Json::parse(R"({"setup":{"a":"1\n","b":"2\n"},"git":true,"commit":["a"]})"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / ".git/index"));
    EXPECT_TRUE(folder.contents(".git/logs/HEAD").value_or("").find("first") != std::string::npos);
    const std::string index = folder.contents(".git/index").value_or("");
    // The index counts its entries in the four bytes from 8 on.
    ASSERT_GT(index.size(), 12U);
    EXPECT_EQ(index.substr(8, 4), std::string("\0\0\0\1", 4));
}

}  // namespace
}  // namespace tavrel
