#include "editor/CommentCommands.h"

#include "editor/BlockLines.h"
#include "editor/CursorEdits.h"
#include "editor/TextCursor.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace tavrel {

namespace {

/// The language's marks of a line comment; a language without any takes "//".
std::vector<std::u16string> commentTokens(const LanguageMode& language)
{
    std::vector<std::u16string> tokens;
    for (const std::string& token : language.lineComments) {
        if (!token.empty())
            tokens.push_back(utf16FromUtf8(token));
    }
    if (tokens.empty())
        tokens.emplace_back(u"//");
    return tokens;
}

bool hasContent(TextCursor& cursor, const BlockLine& line)
{
    for (std::size_t place = line.content.location; place < line.content.end(); ++place) {
        if (!isWhitespace(cursor.unitAt(place)))
            return true;
    }
    return false;
}

bool standsAt(TextCursor& cursor, std::size_t place, std::size_t end, std::u16string_view token)
{
    if (token.size() > end - place)
        return false;
    for (const char16_t unit : token) {
        if (cursor.unitAt(place++) != unit)
            return false;
    }
    return true;
}

/// The token that the line's text begins with, and one space behind it.
std::optional<TextRange> commentOf(TextCursor& cursor, const BlockLine& line,
                                   const std::vector<std::u16string>& tokens)
{
    const std::size_t end = line.content.end();
    std::size_t place = line.content.location;
    while (place < end && (cursor.unitAt(place) == u' ' || cursor.unitAt(place) == u'\t'))
        ++place;
    for (const std::u16string& token : tokens) {
        if (!standsAt(cursor, place, end, token))
            continue;
        const std::size_t behind = place + token.size();
        const bool hasSpace = behind < end && cursor.unitAt(behind) == u' ';
        return TextRange{place, token.size() + (hasSpace ? 1U : 0U)};
    }
    return std::nullopt;
}

/// Every line with content is a comment, and there is one.
bool isCommentedOut(TextCursor& cursor, const std::vector<BlockLine>& lines,
                    const std::vector<std::u16string>& tokens)
{
    bool hasComment = false;
    for (const BlockLine& line : lines) {
        if (commentOf(cursor, line, tokens))
            hasComment = true;
        else if (hasContent(cursor, line))
            return false;
    }
    return hasComment;
}

std::vector<TextEdit> commentEdits(const TextSnapshot& text, TextRange block,
                                   const std::vector<std::u16string>& tokens)
{
    TextCursor cursor(text);
    const std::vector<BlockLine> lines = blockLines(text, block);
    const bool uncomments = isCommentedOut(cursor, lines, tokens);
    const TextSnapshot mark(tokens.front() + u" ");
    std::vector<TextEdit> edits;
    for (const BlockLine& line : lines) {
        if (!uncomments)
            edits.push_back({{line.content.location, 0}, mark});
        else if (const std::optional<TextRange> comment = commentOf(cursor, line, tokens))
            edits.push_back({*comment, {}});
    }
    return edits;
}

}  // namespace

void comment(EditorPane& pane, const EditorCommand&)
{
    const TextSnapshot text = pane.text();
    const TextRange block = text.lineRange(pane.selectedRange());
    replaceBlock(pane, block, commentEdits(text, block, commentTokens(*pane.activeTab().language)));
}

}  // namespace tavrel
