#include "highlight/GenericPasses.h"

#include "highlight/CharacterClass.h"
#include "highlight/PunctuationSet.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace tavrel {
namespace {

constexpr std::size_t npos = std::u16string_view::npos;

class ExpressionPass final : public GenericPass {
public:
    ExpressionPass(RegularExpression expression, SyntaxToken token)
        : expression_(std::move(expression)), token_(token)
    {
    }

    void run(std::u16string_view text, TokenCanvas& canvas) const override
    {
        RegularExpressionMatcher matcher(expression_);
        matcher.setText(text);
        paintMatches(matcher, canvas);
    }

    /// The matches inside one line. The expression sees what stands around it.
    void runInLine(std::u16string_view text, TextRange line, TokenCanvas& canvas) const
    {
        RegularExpressionMatcher matcher(expression_);
        matcher.setText(text, line, {.anchoring = false, .transparent = true});
        paintMatches(matcher, canvas);
    }

private:
    void paintMatches(RegularExpressionMatcher& matcher, TokenCanvas& canvas) const
    {
        while (matcher.next() == MatchOutcome::match)
            canvas.paint(matcher.range(), token_);
    }

    RegularExpression expression_;
    SyntaxToken token_;
};

std::unique_ptr<const ExpressionPass> compiledPass(std::u16string_view pattern, SyntaxToken token)
{
    auto expression = RegularExpression::compile(pattern);
    return expression ? std::make_unique<const ExpressionPass>(*expression, token) : nullptr;
}

/// A string in one of the three common quotes.
class StringPass final : public GenericPass {
public:
    explicit StringPass(char16_t quote) : quote_(quote), spansLines_(quote == u'`') {}

    void run(std::u16string_view text, TokenCanvas& canvas) const override
    {
        for (std::size_t open = text.find(quote_); open != npos;) {
            const std::size_t end = closingEnd(text, open + 1);
            if (end != npos)
                canvas.paint({open, end - open}, SyntaxToken::string);
            open = text.find(quote_, end == npos ? open + 1 : end);
        }
    }

private:
    /// Behind the quote that closes a string whose text begins at `location`.
    std::size_t closingEnd(std::u16string_view text, std::size_t location) const
    {
        // Where no quote closes the string if every backslash hides a character, the expression
        // lets the last backslash before a quote stand for itself, and that quote closes it.
        std::size_t hiddenEnd = npos;
        for (std::size_t at = location; at < text.size();) {
            if (text[at] == quote_)
                return at + 1;
            if (text[at] == u'\n' && !spansLines_)
                break;
            const bool hides =
                text[at] == u'\\' && at + 1 < text.size() && !isNewline(text[at + 1]);
            if (hides && text[at + 1] == quote_)
                hiddenEnd = at + 2;
            at += hides ? 1 + characterAt(text, at + 1).length : 1;
        }
        return hiddenEnd;
    }

    char16_t quote_;
    bool spansLines_;
};

class LineCommentPass final : public GenericPass {
public:
    explicit LineCommentPass(std::u16string_view marker) : marker_(marker) {}

    void run(std::u16string_view text, TokenCanvas& canvas) const override
    {
        for (std::size_t start = text.find(marker_); start != npos;) {
            std::size_t end = start + marker_.size();
            while (end < text.size() && !isNewline(text[end]))
                ++end;
            canvas.paint({start, end - start}, SyntaxToken::comment);
            start = text.find(marker_, end);
        }
    }

private:
    std::u16string marker_;
};

class BlockCommentPass final : public GenericPass {
public:
    BlockCommentPass(std::u16string_view open, std::u16string_view close)
        : open_(open), close_(close)
    {
    }

    void run(std::u16string_view text, TokenCanvas& canvas) const override
    {
        for (std::size_t start = text.find(open_); start != npos;) {
            const std::size_t close = text.find(close_, start + open_.size());
            if (close == npos)
                return;
            const std::size_t end = close + close_.size();
            canvas.paint({start, end - start}, SyntaxToken::comment);
            start = text.find(open_, end);
        }
    }

private:
    std::u16string open_;
    std::u16string close_;
};

bool isWordUnit(char16_t unit)
{
    return (classesOf(unit) & wordClasses) != 0;
}

/// Whether a word begins or ends at `location` of a text of ASCII.
bool isWordBoundary(std::u16string_view text, std::size_t location)
{
    const bool before = location > 0 && isWordUnit(text[location - 1]);
    return before != (location < text.size() && isWordUnit(text[location]));
}

/// A pass whose matches never reach over a line feed. What is a digit, and where a word begins, is
/// plain in a line of ASCII; the library looks at the other lines.
class LinePass : public GenericPass {
public:
    LinePass(std::unique_ptr<const ExpressionPass> expression, SyntaxToken token)
        : expression_(std::move(expression)), token_(token)
    {
    }

    void run(std::u16string_view text, TokenCanvas& canvas) const final
    {
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = std::min(text.find(u'\n', start), text.size());
            const std::u16string_view line = text.substr(start, end - start);
            const bool isAscii =
                std::all_of(line.begin(), line.end(), [](char16_t unit) { return unit < 0x80; });
            if (isAscii)
                runInAsciiLine(line, start, canvas);
            else
                expression_->runInLine(text, {start, line.size()}, canvas);
            start = end + 1;
        }
    }

protected:
    /// `line` starts at `start` of the text.
    void paint(TokenCanvas& canvas, std::size_t start, TextRange range) const
    {
        canvas.paint({start + range.location, range.length}, token_);
    }

private:
    virtual void runInAsciiLine(std::u16string_view line, std::size_t start,
                                TokenCanvas& canvas) const = 0;

    std::unique_ptr<const ExpressionPass> expression_;
    SyntaxToken token_;
};

class NumberPass final : public LinePass {
public:
    explicit NumberPass(std::unique_ptr<const ExpressionPass> expression)
        : LinePass(std::move(expression), SyntaxToken::number)
    {
    }

private:
    void runInAsciiLine(std::u16string_view line, std::size_t start,
                        TokenCanvas& canvas) const override
    {
        for (std::size_t at = 0; at < line.size(); ++at) {
            if (!isAsciiDigit(line[at]))
                continue;
            const std::size_t end = isWordBoundary(line, at) ? numberEnd(line, at) : at;
            if (end == at) {
                at = wordEnd(line, at) - 1;
                continue;
            }
            // A minus belongs to the number only where a word ends before it.
            const bool hasMinus = at > 0 && line[at - 1] == u'-' && isWordBoundary(line, at - 1);
            const std::size_t from = at - hasMinus;
            paint(canvas, start, {from, end - from});
            at = end - 1;
        }
    }

    static std::size_t wordEnd(std::u16string_view line, std::size_t at)
    {
        while (at < line.size() && isWordUnit(line[at]))
            ++at;
        return at;
    }

    template<class Test>
    static std::size_t skip(std::u16string_view line, std::size_t at, Test test)
    {
        while (at < line.size() && test(line[at]))
            ++at;
        return at;
    }

    /// Where the number at `at` ends; `at` where the word there is no number.
    static std::size_t numberEnd(std::u16string_view line, std::size_t at)
    {
        const std::size_t word = wordEnd(line, at);
        if (line.substr(at, 2) == u"0x" && word > at + 2 &&
            skip(line, at + 2, isAsciiHexDigit) == word)
            return word;
        if (skip(line, at, isAsciiDigit) != word)
            return at;
        if (word < line.size() && line[word] == u'.') {
            const std::size_t fraction = skip(line, word + 1, isAsciiDigit);
            if (fraction > word + 1 && wordEnd(line, word + 1) == fraction)
                return fraction;
        }
        return word;
    }
};

class KeywordPass final : public LinePass {
public:
    /// `keywords` are in the order in which they are tried.
    KeywordPass(std::unique_ptr<const ExpressionPass> expression,
                const std::vector<std::u16string>& keywords)
        : LinePass(std::move(expression), SyntaxToken::keyword)
    {
        for (const std::u16string& keyword : keywords) {
            if (!keyword.empty() && keyword.front() < byFirst_.size())
                byFirst_[keyword.front()].push_back(keyword);
        }
    }

private:
    void runInAsciiLine(std::u16string_view line, std::size_t start,
                        TokenCanvas& canvas) const override
    {
        for (std::size_t at = 0; at < line.size();) {
            const std::size_t length = isWordBoundary(line, at) ? keywordLength(line, at) : 0;
            if (length > 0)
                paint(canvas, start, {at, length});
            at += std::max<std::size_t>(length, 1);
        }
    }

    std::size_t keywordLength(std::u16string_view line, std::size_t at) const
    {
        for (const std::u16string& keyword : byFirst_[line[at]]) {
            if (line.substr(at, keyword.size()) == keyword &&
                isWordBoundary(line, at + keyword.size()))
                return keyword.size();
        }
        return 0;
    }

    std::array<std::vector<std::u16string>, 128> byFirst_;
};

class PunctuationPass final : public GenericPass {
public:
    explicit PunctuationPass(std::u16string_view characters) : characters_(characters) {}

    void run(std::u16string_view text, TokenCanvas& canvas) const override
    {
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (characters_.contains(text[at]))
                canvas.paint({at, 1}, SyntaxToken::punctuation);
        }
    }

private:
    PunctuationSet characters_;
};

/// Each character is escaped, since "-" and "&" mean something in a class.
std::u16string punctuationPattern(std::u16string_view characters)
{
    std::u16string pattern = u"[";
    for (const char16_t unit : characters) {
        if (unit < 0x80 && !isWordUnit(unit))
            pattern.push_back(u'\\');
        pattern.push_back(unit);
    }
    return pattern + u"]";
}

}  // namespace

GenericPassPtr makeExpressionPass(std::u16string_view pattern, SyntaxToken token)
{
    return compiledPass(pattern, token);
}

GenericPassPtr makeStringPass(std::u16string_view delimiter)
{
    if (delimiter == u"`" || delimiter == u"'" || delimiter == u"\"")
        return std::make_unique<const StringPass>(delimiter.front());
    const std::u16string quote = escapedPattern(delimiter);
    return compiledPass(quote + u"(?:\\\\.|[^" + quote + u"\\n])*" + quote, SyntaxToken::string);
}

GenericPassPtr makeLineCommentPass(std::u16string_view marker)
{
    // With no marker every line is a comment.
    if (marker.empty())
        return compiledPass(u".*", SyntaxToken::comment);
    return std::make_unique<const LineCommentPass>(marker);
}

GenericPassPtr makeBlockCommentPass(std::u16string_view open, std::u16string_view close)
{
    if (open.empty() || close.empty())
        return compiledPass(escapedPattern(open) + u"(?s:.*?)" + escapedPattern(close),
                            SyntaxToken::comment);
    return std::make_unique<const BlockCommentPass>(open, close);
}

GenericPassPtr makeNumberPass()
{
    auto expression =
        compiledPass(u"\\b-?(?:0x[0-9A-Fa-f]+|\\d+(?:\\.\\d+)?)\\b", SyntaxToken::number);
    return expression ? std::make_unique<const NumberPass>(std::move(expression)) : nullptr;
}

GenericPassPtr makeKeywordPass(const std::set<std::string>& keywords)
{
    std::vector<std::pair<std::u16string, std::u16string>> longestFirst;  // With their patterns.
    for (const std::string& keyword : keywords) {
        const std::u16string text = utf16FromUtf8(keyword);
        longestFirst.emplace_back(text, escapedPattern(text));
    }
    std::stable_sort(longestFirst.begin(), longestFirst.end(), [](const auto& a, const auto& b) {
        return a.second.size() > b.second.size();
    });
    std::u16string pattern;
    std::vector<std::u16string> texts;
    bool hasLineFeed = false;
    for (std::size_t i = 0; i < longestFirst.size(); ++i) {
        const auto& [text, escaped] = longestFirst[i];
        pattern += (i == 0 ? u"" : u"|") + escaped;
        texts.push_back(text);
        hasLineFeed = hasLineFeed || text.find(u'\n') != npos;
    }
    auto expression = compiledPass(u"\\b(?:" + pattern + u")\\b", SyntaxToken::keyword);
    if (!expression || hasLineFeed)
        return expression;
    return std::make_unique<const KeywordPass>(std::move(expression), texts);
}

GenericPassPtr makePunctuationPass(std::u16string_view characters)
{
    // Of a character beyond the basic plane the units mean nothing by themselves.
    if (std::any_of(characters.begin(), characters.end(), isSurrogate))
        return compiledPass(punctuationPattern(characters), SyntaxToken::punctuation);
    return std::make_unique<const PunctuationPass>(characters);
}

}  // namespace tavrel
