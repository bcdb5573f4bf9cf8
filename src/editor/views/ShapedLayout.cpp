#include "editor/views/ShapedLayout.h"

#include "editor/views/EditorFont.h"
#include "editor/views/ViewTheme.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextBoundaryFinder>
#include <QTextOption>

#include <unicode/ubidi.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace tavrel {

namespace {

bool isBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\t' || unit == u'\u3000';
}

constexpr char16_t hiddenSign = u'\u25C6';

// What stands in the picture for a unit that would not be seen, or would rearrange what is read: a
// control character, a mark without width. Null for any other.
char16_t standIn(std::u16string_view text, std::size_t at)
{
    const char16_t unit = text[at];
    if (unit < 0x20)
        return unit == u'\t' ? u'\0' : static_cast<char16_t>(0x2400 + unit);
    if (unit < 0x7F)
        return u'\0';
    if (unit == 0x7F)
        return u'\u2421';
    if (unit < 0xA0 || unit == 0xAD)
        return hiddenSign;
    if (unit == 0x200C || unit == 0x200D) {
        // Between letters that join, and between the parts of an emoji, these do their work.
        const bool isNeeded =
            (at > 0 && text[at - 1] >= 0x0590) || (at + 1 < text.size() && text[at + 1] >= 0x0590);
        return isNeeded ? u'\0' : hiddenSign;
    }
    const bool isHidden = unit == 0x061C || unit == 0x115F || unit == 0x1160 || unit == 0x180E ||
                          unit == 0x200B || unit == 0x200E || unit == 0x200F ||
                          (unit >= 0x202A && unit <= 0x202E) ||
                          (unit >= 0x2060 && unit <= 0x206F) || unit == 0x3164 || unit == 0xFEFF ||
                          unit == 0xFFA0 || (unit >= 0xFFF9 && unit <= 0xFFFB);
    return isHidden ? hiddenSign : u'\0';
}

// Whether a row may end between two units by the rules of scripts that write without blanks.
// Between two ASCII units only a blank parts rows, as in a text of ASCII alone.
bool isForeign(char16_t before, char16_t after)
{
    return before >= 0x0E00 || after >= 0x0E00;
}

QTextLine onlyLine(const QTextLayout& layout)
{
    return layout.lineAt(0);
}

// The embedding level of each unit, odd where it is written from right to left. Empty where nothing
// is.
std::vector<UBiDiLevel> bidiLevels(const QString& text)
{
    const bool isPlain = std::none_of(text.begin(), text.end(), [](QChar unit) {
        return unit.unicode() >= 0x0590 && (unit.isSurrogate() || unit.direction() != QChar::DirL);
    });
    if (isPlain)
        return {};
    const std::unique_ptr<UBiDi, decltype(&ubidi_close)> bidi(ubidi_open(), ubidi_close);
    UErrorCode error = U_ZERO_ERROR;
    ubidi_setPara(bidi.get(), reinterpret_cast<const UChar*>(text.utf16()),
                  static_cast<std::int32_t>(text.size()), 0, nullptr, &error);
    const UBiDiLevel* levels = ubidi_getLevels(bidi.get(), &error);
    if (U_FAILURE(error) || !levels)
        return {};
    return {levels, levels + text.size()};
}

// Where the character from `start` to `end` begins and where it ends, in the direction it is read
// in.
RowSpan characterEdges(const QTextLine& line, const std::vector<UBiDiLevel>& levels, int start,
                       int end)
{
    const auto level = [&levels](int at) { return levels.empty() ? 0 : levels.at(at) & 0x7F; };
    const bool isReversed = level(start) % 2 == 1;
    const bool startsRun = start > 0 ? level(start - 1) != level(start) : isReversed;
    if (startsRun) {
        // Where the direction changes the toolkit gives the place of the cursor, which is the far
        // edge of the character before; the glyphs know where this one stands.
        double left = 1e9;
        double right = -1e9;
        for (const QGlyphRun& run : line.glyphRuns(start, end - start)) {
            const QList<QPointF> positions = run.positions();
            const QList<QPointF> advances =
                run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
            for (qsizetype i = 0; i < std::min(positions.size(), advances.size()); ++i) {
                left = std::min(left, positions[i].x());
                right = std::max(right, positions[i].x() + advances[i].x());
            }
        }
        if (left <= right)
            return isReversed ? RowSpan{right, left} : RowSpan{left, right};
    }
    if (isReversed)
        return {line.cursorToX(start), line.cursorToX(end - 1, QTextLine::Trailing)};
    return {line.cursorToX(start), line.cursorToX(end)};
}

}  // namespace

ShapedLayout::ShapedLayout(std::u16string text, const EditorFont& font,
                           const WrapSettings& settings)
    : SegmentLayout(std::move(text)), font_(font), settings_(settings)
{
    settings_.tabWidth = std::max<std::size_t>(settings_.tabWidth, 1);
    if (!settings_.wraps) {
        rows_.resize(1);
        return;
    }
    const double columns = std::floor(settings_.width / font_.advance() + 0.001);
    const auto limit = static_cast<std::size_t>(std::clamp(columns, 1.0, 1e6));
    for (std::size_t start = 0;;) {
        MeasuredRow row = rowFrom(start, limit);
        rows_.push_back(std::move(row.layout));
        start += row.length;
        if (start >= text_.size())
            break;
        rowStarts_.push_back(static_cast<std::uint32_t>(start));
    }
}

ShapedLayout::~ShapedLayout() = default;

std::unique_ptr<QTextLayout> ShapedLayout::shape(std::size_t start, std::size_t length) const
{
    const QStringView view =
        QStringView(text_).sliced(static_cast<qsizetype>(start), static_cast<qsizetype>(length));
    QString shown = view.toString();
    for (std::size_t i = 0; i < length; ++i) {
        if (const char16_t sign = standIn(text_, start + i))
            shown[static_cast<qsizetype>(i)] = sign;
    }
    auto layout = std::make_unique<QTextLayout>(shown, font_.font());
    QTextOption option;
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAnywhere);
    option.setTabStopDistance(font_.advance() * static_cast<double>(settings_.tabWidth));
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout->setTextOption(option);
    return layout;
}

ShapedLayout::MeasuredRow ShapedLayout::measure(std::size_t start, std::size_t limit,
                                                std::size_t columns) const
{
    MeasuredRow row{0, shape(start, limit)};
    row.layout->beginLayout();
    QTextLine line = row.layout->createLine();
    if (line.isValid()) {
        line.setLineWidth(font_.advance() * static_cast<double>(columns) + 0.01);
        row.length = static_cast<std::size_t>(std::max(line.textLength(), 0));
    }
    row.layout->endLayout();
    return row;
}

// How many units the row that begins at `start` holds, at least one where text is left. The layout
// is that of the row where it could be kept.
ShapedLayout::MeasuredRow ShapedLayout::rowFrom(std::size_t start, std::size_t columns) const
{
    const std::size_t rest = text_.size() - start;
    std::size_t limit = std::min(rest, columns + 16);
    MeasuredRow row = measure(start, limit, columns);
    if (row.length >= limit && limit < rest) {
        // Marks without width do not fill a row, but no row is longer than this.
        limit = std::min(rest, columns * 4 + 64);
        row = measure(start, limit, columns);
    }
    const std::size_t shaped = row.length;
    std::size_t fits = std::clamp<std::size_t>(shaped, std::min<std::size_t>(1, rest), limit);
    while (start + fits < text_.size() && isBlank(text_[start + fits]))
        ++fits;  // Blanks hang over the edge.
    if (fits < rest && !isBlank(text_[start + fits - 1]))
        fits = breakBefore(start, fits);
    row.length = fits;
    // Blanks at the end of a measured line have no place of their own in it.
    if (fits != shaped || fits == 0 || isBlank(text_[start + fits - 1]))
        row.layout.reset();
    return row;
}

// The last place, at most `fits` units behind `start`, where a row may end; `fits` where there is
// none.
std::size_t ShapedLayout::breakBefore(std::size_t start, std::size_t fits) const
{
    const std::size_t length = std::min(text_.size() - start, fits + 2);
    const QStringView word(text_.data() + start, static_cast<qsizetype>(length));
    std::optional<QTextBoundaryFinder> finder;
    for (std::size_t i = fits; i > 0; --i) {
        const char16_t before = text_[start + i - 1];
        if (isBlank(before))
            return i;
        if (!isForeign(before, text_[start + i]))
            continue;
        if (!finder)
            finder.emplace(QTextBoundaryFinder::Line, word);
        finder->setPosition(static_cast<qsizetype>(i));
        if (finder->isAtBoundary())
            return i;
    }
    return fits;
}

const QTextLayout& ShapedLayout::rowLayout(std::size_t row) const
{
    std::unique_ptr<QTextLayout>& layout = rows_[row];
    if (!layout) {
        layout = shape(rowStart(row), rowEnd(row) - rowStart(row));
        QTextOption option = layout->textOption();
        option.setWrapMode(QTextOption::NoWrap);
        layout->setTextOption(option);
        layout->beginLayout();
        QTextLine line = layout->createLine();
        if (line.isValid())
            line.setLineWidth(1e7);
        layout->endLayout();
    }
    return *layout;
}

double ShapedLayout::xAt(std::size_t row, std::size_t offset) const
{
    const QTextLayout& layout = rowLayout(row);
    if (layout.lineCount() == 0)
        return 0;
    const std::size_t inRow = std::clamp(offset, rowStart(row), rowEnd(row)) - rowStart(row);
    return onlyLine(layout).cursorToX(static_cast<int>(inRow));
}

RowHit ShapedLayout::hitAt(std::size_t row, double x) const
{
    const std::size_t start = rowStart(row);
    const QTextLayout& layout = rowLayout(row);
    if (layout.lineCount() == 0 || start == rowEnd(row))
        return {start, start, 0};
    const QTextLine line = onlyLine(layout);
    int cell = line.xToCursor(x, QTextLine::CursorOnCharacter);
    const int length = static_cast<int>(rowEnd(row) - start);
    if (cell >= length)
        cell = layout.previousCursorPosition(length);
    cell = std::clamp(cell, 0, length - 1);
    int next = layout.nextCursorPosition(cell);
    if (next <= cell)
        next = length;
    const RowSpan edges = characterEdges(line, bidiLevels(layout.text()), cell, next);
    const double width = edges.right - edges.left;
    const double fraction = width == 0 ? 0.0 : std::clamp((x - edges.left) / width, 0.0, 1.0);
    return {start + static_cast<std::size_t>(cell), start + static_cast<std::size_t>(next),
            fraction};
}

std::vector<RowSpan> ShapedLayout::spans(std::size_t row, std::size_t start, std::size_t end) const
{
    const std::size_t from = std::clamp(start, rowStart(row), rowEnd(row)) - rowStart(row);
    const std::size_t to = std::clamp(end, rowStart(row), rowEnd(row)) - rowStart(row);
    const QTextLayout& layout = rowLayout(row);
    if (from >= to || layout.lineCount() == 0)
        return {};
    const QTextLine line = onlyLine(layout);
    const std::vector<UBiDiLevel> levels = bidiLevels(layout.text());
    std::vector<RowSpan> parts;
    for (int i = static_cast<int>(from); i < static_cast<int>(to);) {
        int next = layout.nextCursorPosition(i);
        if (next <= i)
            next = static_cast<int>(to);
        const RowSpan edges = characterEdges(line, levels, i, next);
        parts.push_back({std::min(edges.left, edges.right), std::max(edges.left, edges.right)});
        i = next;
    }
    std::sort(parts.begin(), parts.end(),
              [](const RowSpan& a, const RowSpan& b) { return a.left < b.left; });
    std::vector<RowSpan> merged;
    for (const RowSpan& part : parts) {
        if (!merged.empty() && part.left <= merged.back().right + 0.01)
            merged.back().right = std::max(merged.back().right, part.right);
        else
            merged.push_back(part);
    }
    return merged;
}

void ShapedLayout::paint(QPainter& painter, std::size_t row, QPointF topLeft, RowSpan clip,
                         std::span<const TokenRun> runs, const ViewTheme& theme) const
{
    const QTextLayout& layout = rowLayout(row);
    if (layout.lineCount() == 0 || clip.right <= clip.left)
        return;
    const QTextLine line = onlyLine(layout);
    // The tallest font of a row may differ from row to row; the baseline stays where it is.
    const QPointF at(topLeft.x(), topLeft.y() + font_.baseline() - line.ascent());
    QList<QTextLayout::FormatRange> formats;
    for (const TokenRun& run : runs) {
        const std::size_t from = std::max(run.start, rowStart(row));
        const std::size_t to = std::min(run.end, rowEnd(row));
        if (from >= to)
            continue;
        QTextLayout::FormatRange format;
        format.start = static_cast<int>(from - rowStart(row));
        format.length = static_cast<int>(to - from);
        format.format.setForeground(QColor::fromRgba(theme.color(run.token)));
        format.format.setFontUnderline(isUnderlined(run.token));
        formats.append(format);
    }
    const QString shown = layout.text();
    for (qsizetype i = 0; i < shown.size(); ++i) {
        if (shown[i].unicode() == text_[rowStart(row) + static_cast<std::size_t>(i)])
            continue;
        QTextLayout::FormatRange format;
        format.start = static_cast<int>(i);
        format.length = 1;
        format.format.setForeground(QColor::fromRgba(theme.marker));
        formats.append(format);
    }
    // Signs of other fonts may be taller than a row. They are cut off, so that drawing one row
    // never calls for drawing its neighbours.
    painter.save();
    painter.setClipRect(
        QRectF(topLeft.x() + clip.left, topLeft.y(), clip.right - clip.left, font_.rowHeight()),
        Qt::IntersectClip);
    painter.setPen(QColor::fromRgba(theme.foreground));
    layout.draw(&painter, at, formats);
    painter.restore();
}

std::size_t ShapedLayout::memoryBytes() const
{
    constexpr std::size_t bytesPerShapedUnit = 64;  // Glyphs, attributes: rather too many.
    return SegmentLayout::memoryBytes() + text_.size() * bytesPerShapedUnit +
           rows_.size() * sizeof(QTextLayout) * 8;
}

}  // namespace tavrel
