#include "highlight/LexicalHighlighter.h"

#include "highlight/GenericScan.h"
#include "highlight/Links.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <string>

namespace tavrel {
namespace {

/// Fewer than source code has, so that the room for the runs of a text is found at once. What is
/// not used of it is never touched.
constexpr std::size_t unitsPerRun = 2;

void addWords(WordTable& table, const WordList& list)
{
    for (std::size_t start = 0; start < list.words.size();) {
        const std::size_t end = std::min(list.words.find(' ', start), list.words.size());
        table.add(list.words.substr(start, end - start), list.roles);
        start = end + 1;
    }
}

/// What the scan of `language` looks up: the words of its scanner and those of the mode.
WordTable wordsOf(const LanguageMode& language, const Scanner* scanner)
{
    WordTable table;
    if (!scanner)
        return table;
    for (const WordList& list : scanner->words)
        addWords(table, list);
    for (const std::string& word : language.keywords)
        table.add(word, keywordRole);
    for (const std::string& word : language.types)
        table.add(word, typeRole);
    return table;
}

std::u16string textOf(const TextSource& source, TextRange range)
{
    ScannedText scanned(source, range);
    std::u16string text;
    text.reserve(scanned.length());
    while (text.size() < scanned.length())
        text += scanned.piece(text.size());
    return text;
}

}  // namespace

LexicalHighlighter::LexicalHighlighter(const LanguageMode& language)
    : language_(language), scanner_(scannerFor(language.id)), words_(wordsOf(language, scanner_)),
      punctuation_(utf16FromUtf8(language.punctuation))
{
    if (!scanner_ && !isPlain())
        generic_ = std::make_unique<GenericScan>(language_);
}

LexicalHighlighter::~LexicalHighlighter() = default;
LexicalHighlighter::LexicalHighlighter(LexicalHighlighter&&) noexcept = default;
LexicalHighlighter& LexicalHighlighter::operator=(LexicalHighlighter&&) noexcept = default;

PaintedStretch LexicalHighlighter::highlight(const TextSource& text,
                                             std::optional<TextRange> clampRange,
                                             std::optional<TextRange> scanRange) const
{
    const TextRange whole{0, text.length()};
    const TextRange scanned = scanRange ? clampedRange(*scanRange, whole.length) : whole;
    PaintedStretch painted;
    painted.range = clampRange ? clampedRange(*clampRange, whole.length) : whole;
    if (painted.range.isEmpty()) {
        painted.range = {};
        return painted;
    }

    const std::size_t scanBase = scanned.location;
    if (scanner_) {
        painted.runs.reserve(painted.range.length / unitsPerRun);
        TokenPainter painter(painted.runs, painted.range, scanBase);
        // Nothing behind the stretch changes what is painted in it.
        const std::size_t end = std::min(scanned.end(), painted.range.end());
        const std::size_t until = end > scanBase ? end - scanBase : 0;
        ScannedText scannedText(text, scanned);
        scanner_->scan({scannedText, painter, words_, punctuation_, until}, {});
        painter.finish();
    } else if (generic_) {
        TokenCanvas canvas(painted.range, scanBase);
        generic_->run(textOf(text, scanned), canvas);
        canvas.appendTo(painted.runs);
    } else {
        paintLinks(text, scanned, painted);
    }
    return painted;
}

ScanPoint LexicalHighlighter::scan(const TextSource& text, ScanPoint from, std::size_t until,
                                   TokenRuns& runs) const
{
    until = std::min(until, text.length());
    if (from.location >= until)
        return from;
    // The last token may reach past `until`, so the stretch ends where the text does.
    TokenPainter painter(runs, {from.location, text.length() - from.location}, 0);
    ScannedText scanned(text);
    const ScanPoint to = scanner_->scan({scanned, painter, words_, punctuation_, until}, from);
    painter.finishAt(to.location);
    return to;
}

PaintedStretch LexicalHighlighter::highlightFrom(const TextSource& text, ScanPoint from,
                                                 TextRange stretch) const
{
    PaintedStretch painted;
    painted.range = clampedRange(stretch, text.length());
    TokenPainter painter(painted.runs, painted.range, 0);
    ScannedText scanned(text);
    scanner_->scan({scanned, painter, words_, punctuation_, painted.range.end()}, from);
    painter.finish();
    return painted;
}

std::vector<ColorRun> LexicalHighlighter::colorRuns(std::u16string_view text) const
{
    std::vector<ColorRun> found;
    if (isPlain()) {
        for (const TextRange range : linkRanges(text))
            found.push_back({range, SyntaxToken::link});
        return found;
    }
    std::size_t location = 0;
    const PaintedStretch painted = highlight(PlainTextSource(text));
    for (const TokenRuns::Run& run : painted.runs.runs()) {
        found.push_back({{location, run.length}, run.token});
        location += run.length;
    }
    return found;
}

bool LexicalHighlighter::isPlain() const
{
    return language_.id == LanguageMode::plain().id;
}

void LexicalHighlighter::paintLinks(const TextSource& text, TextRange scanned,
                                    PaintedStretch& painted) const
{
    TokenPainter painter(painted.runs, painted.range, scanned.location);
    for (const TextRange range : linkRanges(textOf(text, scanned)))
        painter.paint(range.location, range.end(), underlined(SyntaxToken::link));
    painter.finish();
}

}  // namespace tavrel
