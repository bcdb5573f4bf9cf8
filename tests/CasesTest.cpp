#include "CaseCheck.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

// One test for every line of every tests/cases/*.jsonl, named by its file, its line and its name.

namespace tavrel {
namespace {

class DataCase : public testing::Test {
public:
    explicit DataCase(std::string line) : line_(std::move(line)) {}
    void TestBody() override
    {
        for (const std::string& problem : problemsOfCase(line_))
            ADD_FAILURE() << problem;
    }

private:
    std::string line_;
};

// Fails where a file is missing that names the cases, so that no test is not taken for success.
class MissingCases : public testing::Test {
public:
    void TestBody() override { FAIL() << "no cases in " TAVREL_CASES_FOLDER; }
};

// The name of the case as far as it can stand in the name of a test.
std::string testName(const std::string& line, std::size_t number)
{
    const auto testCase = probe::readLine(line);
    std::string name = "line" + std::to_string(number) + "_";
    const probe::Json* given = testCase ? probe::member(*testCase, "name") : nullptr;
    if (given && given->is_string()) {
        for (const char byte : given->get_ref<const std::string&>())
            name.push_back(std::isalnum(static_cast<unsigned char>(byte)) ? byte : '_');
    }
    return name;
}

std::vector<std::filesystem::path> caseFiles()
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(TAVREL_CASES_FOLDER)) {
        if (entry.path().extension() == ".jsonl")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::size_t registerCases(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::string line;
    std::size_t registered = 0;
    for (std::size_t number = 1; std::getline(file, line); ++number) {
        if (line.empty())
            continue;
        testing::RegisterTest(path.stem().c_str(), testName(line, number).c_str(), nullptr, nullptr,
                              path.c_str(), static_cast<int>(number),
                              [line]() -> testing::Test* { return new DataCase(line); });
        ++registered;
    }
    return registered;
}

}  // namespace
}  // namespace tavrel

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::size_t registered = 0;
    for (const auto& path : tavrel::caseFiles())
        registered += tavrel::registerCases(path);
    if (registered == 0)
        testing::RegisterTest("Cases", "AreThere", nullptr, nullptr, __FILE__, __LINE__,
                              []() -> testing::Test* { return new tavrel::MissingCases; });
    return RUN_ALL_TESTS();
}
