#include "editor/views/StandardKeys.h"

#include "editor/VerticalMotion.h"
#include "editor/WordRanges.h"
#include "platform/Graphemes.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <string>

namespace tavrel {

namespace {

// A character is looked for among this many units around the cursor.
constexpr std::size_t characterReach = 64;

enum class Motion {
    nextCharacter,
    previousCharacter,
    nextWord,
    previousWord,
    nextRow,
    previousRow,
    nextPage,
    previousPage,
    rowStart,
    rowEnd,
    textStart,
    textEnd,
};

struct MotionKey {
    QKeySequence::StandardKey key;
    Motion motion;
    bool extends;
};

constexpr std::array motionKeys{
    MotionKey{QKeySequence::MoveToNextChar, Motion::nextCharacter, false},
    MotionKey{QKeySequence::MoveToPreviousChar, Motion::previousCharacter, false},
    MotionKey{QKeySequence::MoveToNextWord, Motion::nextWord, false},
    MotionKey{QKeySequence::MoveToPreviousWord, Motion::previousWord, false},
    MotionKey{QKeySequence::MoveToNextLine, Motion::nextRow, false},
    MotionKey{QKeySequence::MoveToPreviousLine, Motion::previousRow, false},
    MotionKey{QKeySequence::MoveToNextPage, Motion::nextPage, false},
    MotionKey{QKeySequence::MoveToPreviousPage, Motion::previousPage, false},
    MotionKey{QKeySequence::MoveToStartOfLine, Motion::rowStart, false},
    MotionKey{QKeySequence::MoveToEndOfLine, Motion::rowEnd, false},
    MotionKey{QKeySequence::MoveToStartOfDocument, Motion::textStart, false},
    MotionKey{QKeySequence::MoveToEndOfDocument, Motion::textEnd, false},
    MotionKey{QKeySequence::SelectNextChar, Motion::nextCharacter, true},
    MotionKey{QKeySequence::SelectPreviousChar, Motion::previousCharacter, true},
    MotionKey{QKeySequence::SelectNextWord, Motion::nextWord, true},
    MotionKey{QKeySequence::SelectPreviousWord, Motion::previousWord, true},
    MotionKey{QKeySequence::SelectNextLine, Motion::nextRow, true},
    MotionKey{QKeySequence::SelectPreviousLine, Motion::previousRow, true},
    MotionKey{QKeySequence::SelectNextPage, Motion::nextPage, true},
    MotionKey{QKeySequence::SelectPreviousPage, Motion::previousPage, true},
    MotionKey{QKeySequence::SelectStartOfLine, Motion::rowStart, true},
    MotionKey{QKeySequence::SelectEndOfLine, Motion::rowEnd, true},
    MotionKey{QKeySequence::SelectStartOfDocument, Motion::textStart, true},
    MotionKey{QKeySequence::SelectEndOfDocument, Motion::textEnd, true},
};

std::size_t characterAfter(const TextSnapshot& text, std::size_t location)
{
    const std::size_t from = location - std::min(location, characterReach);
    const std::size_t to = std::min(text.length(), location + characterReach);
    const std::u16string around = text.text({from, to - from});
    return from + Graphemes(around).next(location - from);
}

std::size_t characterBefore(const TextSnapshot& text, std::size_t location)
{
    const std::size_t from = location - std::min(location, characterReach);
    const std::size_t to = std::min(text.length(), location + characterReach);
    const std::u16string around = text.text({from, to - from});
    return from + Graphemes(around).previous(location - from);
}

bool goesByRows(Motion motion)
{
    return motion == Motion::nextRow || motion == Motion::previousRow ||
           motion == Motion::nextPage || motion == Motion::previousPage;
}

// `x` is where a motion by rows goes.
std::size_t moved(const ViewRows& rows, std::size_t head, Motion motion, double x)
{
    const TextSnapshot& text = rows.text();
    switch (motion) {
    case Motion::nextCharacter:
        return characterAfter(text, head);
    case Motion::previousCharacter:
        return characterBefore(text, head);
    case Motion::nextWord:
        return wordBoundaryAfter(text, head);
    case Motion::previousWord:
        return wordBoundaryBefore(text, head);
    case Motion::nextRow:
        return verticallyMoved(text, rows, head, VerticalDirection::down, 1, x);
    case Motion::previousRow:
        return verticallyMoved(text, rows, head, VerticalDirection::up, 1, x);
    case Motion::nextPage:
        return verticallyMoved(text, rows, head, VerticalDirection::down, rows.rowsPerPage(), x);
    case Motion::previousPage:
        return verticallyMoved(text, rows, head, VerticalDirection::up, rows.rowsPerPage(), x);
    case Motion::rowStart:
        return rows.row(head).start();
    case Motion::rowEnd:
        return rows.locationAt(rows.row(head).range(), 1e9);
    case Motion::textStart:
        return 0;
    case Motion::textEnd:
        return text.length();
    }
    return head;
}

}  // namespace

std::optional<StandardMotion> standardMotion(const QKeyEvent& event, const ViewRows& rows,
                                             TextRange selection, std::size_t head,
                                             std::optional<double> goalX)
{
    for (const MotionKey& each : motionKeys) {
        if (!event.matches(each.key))
            continue;
        if (!each.extends && !selection.isEmpty()) {
            if (each.motion == Motion::nextCharacter)
                return StandardMotion{.location = selection.end()};
            if (each.motion == Motion::previousCharacter)
                return StandardMotion{.location = selection.location};
        }
        StandardMotion motion;
        motion.extendsSelection = each.extends;
        motion.isVertical = goesByRows(each.motion) || each.motion == Motion::textStart ||
                            each.motion == Motion::textEnd;
        if (goesByRows(each.motion))
            motion.goalX = goalX ? *goalX : rows.xAt(head);
        motion.location = moved(rows, head, each.motion, motion.goalX.value_or(0));
        return motion;
    }
    return std::nullopt;
}

std::optional<TextRange> standardErasure(const QKeyEvent& event, const ViewRows& rows,
                                         TextRange selection)
{
    const std::size_t at = selection.location;
    const TextSnapshot& text = rows.text();
    const auto upTo = [&](std::size_t end) {
        return selection.isEmpty() ? TextRange{at, end - std::min(at, end)} : selection;
    };
    const auto backTo = [&](std::size_t start) {
        return selection.isEmpty() ? TextRange{start, at - std::min(at, start)} : selection;
    };
    if (event.matches(QKeySequence::Delete))
        return upTo(characterAfter(text, at));
    if (event.matches(QKeySequence::DeleteEndOfWord))
        return upTo(wordBoundaryAfter(text, at));
    if (event.matches(QKeySequence::DeleteStartOfWord))
        return backTo(wordBoundaryBefore(text, at));
    return std::nullopt;
}

}  // namespace tavrel
