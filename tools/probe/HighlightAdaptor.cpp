#include "config/BuiltInResources.h"
#include "config/LanguageMode.h"
#include "config/cson/TavrelCSONBackend.h"
#include "highlight/LexicalHighlighter.h"
#include "highlight/SyntaxTokenName.h"
#include "probe/Adaptors.h"

namespace tavrel::probe {
namespace {

LanguageMode modeFromText(std::string_view modeText)
{
    const auto value = TavrelCSONBackend::parseCSON(modeText);
    const auto mode = value ? LanguageMode::fromValue(*value) : std::nullopt;
    if (!mode)
        throw RequestError("'mode' must be the text of a mode file");
    return *mode;
}

/// The mode that ships with the editor. A language without one has the mode of an empty file.
LanguageMode modeWithId(const std::string& id)
{
    if (id == LanguageMode::plain().id)
        return LanguageMode::plain();
    const BuiltInResources resources;
    const auto modeText = resources.textAt("Languages/" + id + ".cson");
    return modeText ? modeFromText(*modeText) : modeFromText("{id: \"" + id + "\"}");
}

std::optional<TextRange> optionalRange(const Json& body, std::string_view name)
{
    const Json* range = member(body, name);
    return range ? std::optional(rangeFromJson(*range)) : std::nullopt;
}

Json jsonFromStretch(const PaintedStretch& painted)
{
    Json runs = Json::array();
    Json underlines = Json::array();
    std::size_t location = painted.range.location;
    for (const TokenRuns::Run& run : painted.runs.runs()) {
        const TextRange range{location, run.length};
        runs.push_back({range.location, range.length, syntaxTokenName(run.token)});
        if (isUnderlined(run.token))
            underlines.push_back(jsonFromRange(range));
        location = range.end();
    }
    return {{"runs", runs}, {"underlines", underlines}};
}

}  // namespace

Json highlightAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    const LanguageMode mode = member(body, "mode") ? modeFromText(utf8Member(body, "mode"))
                                                   : modeWithId(utf8Member(body, "language"));
    const std::u16string text = textMember(body, "text");
    const auto clampRange = optionalRange(body, "clamp");
    const auto scanRange = optionalRange(body, "scan");
    const LexicalHighlighter highlighter(mode);
    const PaintedStretch painted =
        request.measured([&] { return PlainTextSource(text); },
                         [&](const PlainTextSource& source) {
                             return highlighter.highlight(source, clampRange, scanRange);
                         });
    return jsonFromStretch(painted);
}

}  // namespace tavrel::probe
