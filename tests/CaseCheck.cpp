#include "CaseCheck.h"

#include "CaseFolder.h"
#include "probe/Adaptors.h"

#include <optional>

namespace tavrel {
namespace {

using probe::Json;
using probe::RequestError;

bool isEqual(const Json& expected, const Json& actual);

bool isEqualObject(const Json& expected, const Json& actual)
{
    for (const auto& [name, value] : expected.items()) {
        const auto found = actual.find(name);
        if (found == actual.end() ? !value.is_null() : !isEqual(value, *found))
            return false;
    }
    for (const auto& [name, value] : actual.items()) {
        if (!value.is_null() && !expected.contains(name))
            return false;
    }
    return true;
}

bool isEqual(const Json& expected, const Json& actual)
{
    if (expected.is_object() && actual.is_object())
        return isEqualObject(expected, actual);
    if (!expected.is_array() || !actual.is_array())
        return !expected.is_structured() && !actual.is_structured() && expected == actual;
    if (expected.size() != actual.size())
        return false;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (!isEqual(expected[i], actual[i]))
            return false;
    }
    return true;
}

bool isNullAsAWhole(const Json& response)
{
    return response.is_null() || (response.is_object() && isEqualObject(Json::object(), response));
}

Json memberOrNull(const Json& response, const std::string& name)
{
    if (name.starts_with("/")) {
        const Json::json_pointer pointer(name);
        return response.contains(pointer) ? response.at(pointer) : Json();
    }
    const auto found = response.is_object() ? response.find(name) : response.end();
    return found == response.end() ? Json() : *found;
}

void checkFiles(const Json& expected, const CaseFolder& folder, std::vector<std::string>& problems)
{
    for (const auto& [name, text] : expected.items()) {
        const std::optional<std::string> contents = folder.contents(name);
        const std::optional<std::string> wanted =
            text.is_null() ? std::nullopt
                           : std::optional(probe::utf8FromJson(folder.withPath(text)));
        if (contents != wanted)
            problems.push_back("file " + name + ":\n  expected " + wanted.value_or("no file") +
                               "\n  found    " + contents.value_or("no file"));
    }
}

std::vector<std::string> problemsOf(const Json& testCase)
{
    const bool hasExpect = testCase.contains("expect");
    const Json* files = probe::member(testCase, "expectFiles");
    const bool expectsNothing =
        (!hasExpect || (testCase["expect"].is_object() && testCase["expect"].empty())) && !files;
    if (probe::utf8Member(testCase, "name").empty() || expectsNothing)
        throw RequestError("a case needs a name and something to expect");
    std::optional<CaseFolder> folder;
    if (CaseFolder::isWantedBy(testCase))
        folder.emplace(testCase);
    if (files && !folder)
        throw RequestError("a case with 'expectFiles' needs a 'setup', even an empty one");
    const Json resolved = folder ? folder->withPath(testCase) : testCase;
    const Json response = probe::respond(resolved);
    std::vector<std::string> problems;
    if (hasExpect)
        problems = differences(resolved["expect"], response);
    if (files)
        checkFiles(*files, *folder, problems);
    return problems;
}

}  // namespace

std::vector<std::string> differences(const Json& expect, const Json& response)
{
    std::vector<std::string> problems;
    const auto compare = [&](const std::string& name, const Json& wanted, const Json& found) {
        if (!isEqual(wanted, found))
            problems.push_back(name + ":\n  expected " + probe::writeLine(wanted) +
                               "\n  found    " + probe::writeLine(found));
    };
    if (expect.is_object()) {
        for (const auto& [name, wanted] : expect.items())
            compare(name, wanted, memberOrNull(response, name));
    } else if (!(expect.is_null() && isNullAsAWhole(response))) {
        compare("response", expect, response);
    }
    // An engine that answers with an error nobody expects has said why.
    if (!problems.empty())
        problems.push_back("whole response: " + probe::writeLine(response));
    return problems;
}

std::vector<std::string> problemsOfCase(const std::string& line)
try {
    const auto testCase = probe::readLine(line);
    if (!testCase)
        return {testCase.error()};
    return problemsOf(*testCase);
} catch (const std::exception& error) {
    return {error.what()};
}

}  // namespace tavrel
