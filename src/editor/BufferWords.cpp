#include "editor/BufferWords.h"

#include "editor/TextCursor.h"
#include "editor/WordScanner.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace tavrel {

namespace {

bool belongsToWord(char16_t unit)
{
    return completionUnit(unit) != CompletionUnit::other;
}

}  // namespace

void countWords(const TextSnapshot& text, TextRange range, WordCounts& words, std::int64_t count)
{
    WordScanner scanner([&](std::string_view word) { words.add(word, count); });
    text.forEachPiece(range, [&scanner](const TextPiece& piece) {
        if (piece.narrow)
            scanner.scan(piece.narrow, piece.length);
        else
            scanner.scan(piece.wide, piece.length);
        return true;
    });
    scanner.finish();
}

void BufferWords::update(const TextSnapshot& text)
{
    std::vector<Piece> newPieces = piecesOf(text);
    const std::vector<Difference> changed = widened(differences(newPieces));
    std::size_t removed = 0;
    for (const Difference& difference : changed)
        removed += difference.oldRange.length;
    constexpr std::size_t fewWords = 1000;
    const bool isMostlyNew = 2 * removed > text_.length();
    if (isMostlyNew || words_.vanishedCount() > words_.size() + fewWords) {
        countAnew(text);
    } else {
        for (const Difference& difference : changed) {
            countWords(text_, difference.oldRange, words_, -1);
            countWords(text, difference.newRange, words_, 1);
        }
    }
    text_ = text;
    pieces_ = std::move(newPieces);
}

void BufferWords::countAnew(const TextSnapshot& text)
{
    words_.clear();
    countWords(text, {0, text.length()}, words_, 1);
}

std::vector<BufferWords::Piece> BufferWords::piecesOf(const TextSnapshot& text)
{
    std::vector<Piece> pieces;
    text.forEachPiece({0, text.length()}, [&pieces](const TextPiece& piece) {
        const void* units = piece.narrow ? static_cast<const void*>(piece.narrow) : piece.wide;
        pieces.push_back({units, piece.length});
        return true;
    });
    return pieces;
}

std::vector<BufferWords::Difference>
BufferWords::differences(const std::vector<Piece>& newPieces) const
{
    std::unordered_map<const void*, std::size_t> oldPlaces;  // Of those behind the common start.
    std::size_t same = 0;
    std::size_t oldStart = 0;  // Where the stretch at hand begins in the old text, and in the new.
    while (same < pieces_.size() && same < newPieces.size() && pieces_[same] == newPieces[same])
        oldStart += pieces_[same++].length;
    std::vector<std::size_t> oldLocations{oldStart};
    for (std::size_t index = same; index < pieces_.size(); ++index) {
        oldPlaces.emplace(pieces_[index].units, index);
        oldLocations.push_back(oldLocations.back() + pieces_[index].length);
    }

    std::vector<Difference> found;
    std::size_t newStart = oldStart;
    std::size_t newLocation = newStart;
    std::size_t next = same;  // The first old piece that may still be met again.
    const auto close = [&](std::size_t oldEnd, std::size_t newEnd) {
        if (oldEnd > oldStart || newEnd > newStart)
            found.push_back({{oldStart, oldEnd - oldStart}, {newStart, newEnd - newStart}});
    };
    for (std::size_t index = same; index < newPieces.size(); ++index) {
        const Piece& piece = newPieces[index];
        const auto old = oldPlaces.find(piece.units);
        const bool isKept =
            old != oldPlaces.end() && old->second >= next && pieces_[old->second] == piece;
        if (isKept) {
            const std::size_t oldLocation = oldLocations[old->second - same];
            close(oldLocation, newLocation);
            oldStart = oldLocation + piece.length;
            newStart = newLocation + piece.length;
            next = old->second + 1;
        }
        newLocation += piece.length;
    }
    close(text_.length(), newLocation);
    return found;
}

/// Outside the differences both texts are the same, so the old one tells about both.
std::vector<BufferWords::Difference>
BufferWords::widened(const std::vector<Difference>& differences) const
{
    TextCursor cursor(text_);
    std::vector<Difference> wide;
    for (std::size_t index = 0; index < differences.size(); ++index) {
        auto [oldRange, newRange] = differences[index];
        const std::size_t left = wide.empty() ? 0 : wide.back().oldRange.end();
        const std::size_t right = index + 1 < differences.size()
                                      ? differences[index + 1].oldRange.location
                                      : text_.length();
        std::size_t start = oldRange.location;
        while (start > left && belongsToWord(cursor.unitAt(start - 1)))
            --start;
        std::size_t end = oldRange.end();
        while (end < right && belongsToWord(cursor.unitAt(end)))
            ++end;
        const std::size_t before = oldRange.location - start;
        const std::size_t behind = end - oldRange.end();
        oldRange = {start, end - start};
        newRange = {newRange.location - before, before + newRange.length + behind};
        const bool meetsLast = !wide.empty() && start == left;
        if (!meetsLast) {
            wide.push_back({oldRange, newRange});
            continue;
        }
        Difference& last = wide.back();
        last.oldRange.length = end - last.oldRange.location;
        last.newRange.length = newRange.end() - last.newRange.location;
    }
    return wide;
}

}  // namespace tavrel
