#include "git/GitIgnoreFile.h"
#include "git/StandardPath.h"
#include "probe/Adaptors.h"

namespace tavrel::probe {
namespace {

struct AskedPath {
    std::string path;
    bool isDirectory;
};

struct Question {
    std::vector<std::pair<std::string, std::u16string>> files;
    std::vector<AskedPath> paths;
};

const Json& listMember(const Json& body, const char* name)
{
    const Json& list = requiredMember(body, name);
    if (!list.is_array())
        throw RequestError("'" + std::string(name) + "' must be a list");
    return list;
}

Question questionOf(const Json& body)
{
    Question question;
    for (const Json& file : listMember(body, "files"))
        question.files.emplace_back(standardPath(utf8Member(file, "base")),
                                    textMember(file, "text"));
    if (!member(body, "paths")) {
        question.paths.push_back(
            {utf8Member(body, "path"), booleanMember(body, "isDirectory", false)});
        return question;
    }
    for (const Json& path : listMember(body, "paths")) {
        if (!path.is_array() || path.size() != 2 || !path[1].is_boolean())
            throw RequestError("each of 'paths' must be [path, isDirectory]");
        question.paths.push_back({utf8FromJson(path[0]), path[1].get<bool>()});
    }
    return question;
}

Json jsonFromRule(const std::optional<GitIgnoreRule>& rule)
{
    if (!rule)
        return {{"rule", nullptr}};
    return {{"rule",
             {{"negated", rule->negated()},
              {"directoryOnly", rule->directoryOnly()},
              {"regex", jsonFromText(rule->regex())}}}};
}

}  // namespace

Json ignoreAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    if (member(body, "line")) {
        const std::u16string line = textMember(body, "line");
        return jsonFromRule(
            request.measured([&] { return std::u16string_view(line); }, GitIgnoreRule::make));
    }
    const Question question = questionOf(body);
    const auto parse = [&] {
        GitIgnoreChain chain;
        for (const auto& [base, text] : question.files)
            chain.push_back(std::make_shared<const GitIgnoreFile>(base, text));
        return chain;
    };
    const std::vector<bool> answers = request.measured(parse, [&](const GitIgnoreChain& chain) {
        std::vector<bool> ignored;
        for (const AskedPath& path : question.paths)
            ignored.push_back(isIgnored(path.path, path.isDirectory, chain));
        return ignored;
    });
    if (!member(body, "paths"))
        return {{"ignored", bool{answers.front()}}};
    return {{"ignored", answers}};
}

}  // namespace tavrel::probe
