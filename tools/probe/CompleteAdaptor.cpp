#include "editor/BufferWords.h"
#include "editor/Completion.h"
#include "probe/Adaptors.h"
#include "probe/ProbeJson.h"
#include "probe/ProbeLanguage.h"

#include <memory>

namespace tavrel::probe {
namespace {

WordCounts projectWordsMember(const Json& body)
{
    WordCounts words;
    const Json* given = member(body, "projectWords");
    if (!given)
        return words;
    if (!given->is_object())
        throw RequestError("'projectWords' must be a map");
    for (const auto& [word, count] : given->items()) {
        if (!count.is_number_integer())
            throw RequestError("a count must be a whole number");
        const std::string name = utf8FromJson(Json(word));
        if (!name.empty())
            words.add(name, count.get<std::int64_t>());
    }
    return words;
}

/// The counts of one document, as a pane keeps them from one request to the next.
struct CompletionSession {
    TextSnapshot text;
    WordCounts projectWords;
    BufferWords bufferWords;
};

}  // namespace

Json completeAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    const TextSnapshot text(textMember(body, "text"));
    const TextRange selection = rangeFromJson(requiredMember(body, "selection"));
    const bool continuesTyping =
        booleanMember(body, "lastActionWasTyping", true) && selection.isEmpty();
    const std::shared_ptr<const LanguageMode> language = languageMember(body);
    const TextRange partial = partialWordRange(text, selection.location);
    const std::set<std::string> keywords = completionKeywords(*language);
    const std::u16string typed = text.text(partial);

    const auto candidates = request.measured(
        [&] {
            return std::make_unique<CompletionSession>(
                CompletionSession{text, projectWordsMember(body), {}});
        },
        [&](const std::unique_ptr<CompletionSession>& session) {
            if (!continuesTyping || partial.isEmpty())
                return std::vector<std::u16string>();
            session->bufferWords.update(session->text);
            return completionCandidates(typed, {.bufferWords = session->bufferWords.words(),
                                                .projectWords = &session->projectWords,
                                                .keywords = keywords,
                                                .types = language->types});
        });
    Json answer = Json::array();
    for (const std::u16string& candidate : candidates)
        answer.push_back(jsonFromText(candidate));
    return {{"range", jsonFromRange(partial)}, {"candidates", answer}};
}

}  // namespace tavrel::probe
