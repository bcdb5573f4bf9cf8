#include "editor/TextStorage.h"

#include "editor/TextTreeEdits.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tavrel {

namespace {

// The edits as they can be applied: inside the text, each starting where the one before has ended
// or later. A batch that its caller made well comes back as it is.
std::span<const TextEdit> wellFormed(std::span<const TextEdit> edits, std::size_t length,
                                     std::vector<TextEdit>& mended)
{
    const auto isWellFormed = [&] {
        std::size_t end = 0;
        for (const TextEdit& edit : edits) {
            if (edit.range.location < end || clampedRange(edit.range, length) != edit.range)
                return false;
            end = edit.range.end();
        }
        return true;
    };
    if (isWellFormed())
        return edits;
    std::size_t end = 0;
    for (TextEdit edit : edits) {
        edit.range = clampedRange(edit.range, length);
        const std::size_t oldEnd = edit.range.end();
        edit.range.location = std::max(edit.range.location, end);
        edit.range.length = std::max(oldEnd, edit.range.location) - edit.range.location;
        end = edit.range.end();
        mended.push_back(std::move(edit));
    }
    return mended;
}

std::vector<TextChange> changesOf(std::span<const TextEdit> edits)
{
    std::vector<TextChange> changes;
    changes.reserve(edits.size());
    for (const TextEdit& edit : edits) {
        if (!edit.range.isEmpty() || !edit.replacement.isEmpty())
            changes.push_back({edit.range, edit.replacement.length()});
    }
    return changes;
}

}  // namespace

TextStorage::TextStorage(TextSnapshot text, std::size_t blockSize)
    : text_(std::move(text)),
      blockSize_(std::clamp<std::size_t>(blockSize, 1, TextBlock::maximumUnits))
{
    if (blockSize_ >= TextSnapshot::defaultBlockSize)
        return;
    const TextEdit all{{0, 0}, text_};
    text_ = TextSnapshot(
        appliedEdits({}, {&all, 1}, BlockSizes::ofMaximum(blockSize_), InsertedTokens::kept));
}

void TextStorage::replace(TextRange range, const TextSnapshot& replacement)
{
    const TextEdit edit{range, replacement};
    apply({&edit, 1});
}

void TextStorage::replace(TextRange range, std::u16string_view replacement)
{
    const TextEdit edit{range, TextSnapshot(replacement, blockSize_)};
    apply({&edit, 1});
}

void TextStorage::apply(std::span<const TextEdit> edits)
{
    std::vector<TextEdit> mended;
    edits = wellFormed(edits, length(), mended);
    const auto isNothing = [](const TextEdit& edit) {
        return edit.range.isEmpty() && edit.replacement.isEmpty();
    };
    if (std::all_of(edits.begin(), edits.end(), isNothing))
        return;
    ++revision_;
    if (openBatches_ > 0 && edits.size() == 1) {
        replaceLater(edits.front());
    } else {
        applyWaiting();
        applyNow(edits);
    }
    if (!painted_.isEmpty())
        painted_ = {0, length()};  // Its coordinates are of a text that is no more.
    if (openBatches_ == 0)
        notify();
}

// `edit` is in the coordinates of the text with all waiting edits applied.
void TextStorage::replaceLater(const TextEdit& edit)
{
    const auto isRightOfAll = [&] {
        return edit.range.location >= waiting_.back().range.end() + waitingGrowth_;
    };
    const auto isLeftOfAll = [&] { return edit.range.end() <= waiting_.back().range.location; };
    if (waiting_.size() == 1)
        waitLeftwards_ = !isRightOfAll();
    if (!waiting_.empty() && !(waitLeftwards_ ? isLeftOfAll() : isRightOfAll()))
        applyWaiting();

    TextRange range = edit.range;
    if (!waiting_.empty() && !waitLeftwards_)
        range.location -= waitingGrowth_;
    waiting_.push_back({range, edit.replacement});
    waitingGrowth_ += edit.replacement.length() - range.length;
}

void TextStorage::applyWaiting() const
{
    if (waiting_.empty())
        return;
    if (waiting_.size() > 1 && waitLeftwards_)
        std::reverse(waiting_.begin(), waiting_.end());
    applyNow(waiting_);
    waiting_.clear();
    waitingGrowth_ = 0;
}

void TextStorage::applyNow(std::span<const TextEdit> edits) const
{
    text_ = TextSnapshot(appliedEdits(text_.root(), edits, BlockSizes::ofMaximum(blockSize_),
                                      InsertedTokens::dropped));
    changes_.add(changesOf(edits));
}

void TextStorage::beginEditing()
{
    ++openBatches_;
}

void TextStorage::endEditing()
{
    assert(openBatches_ > 0);
    if (openBatches_ > 0 && --openBatches_ == 0)
        notify();
}

void TextStorage::setTokens(std::size_t location, const TokenRuns& runs)
{
    const TextRange range = clampedRange({location, runs.length()}, length());
    if (range.isEmpty())
        return;
    applyWaiting();
    text_ = TextSnapshot(paintedTree(*text_.root(), range, runs));
    ++tokenRevision_;
    const std::size_t start = painted_.isEmpty() ? range.location : painted_.location;
    const std::size_t first = std::min(start, range.location);
    painted_ = {first, std::max(painted_.end(), range.end()) - first};
    if (openBatches_ == 0)
        notify();
}

void TextStorage::addObserver(TextStorageObserver* observer)
{
    observers_.push_back(observer);
}

void TextStorage::removeObserver(TextStorageObserver* observer)
{
    std::erase(observers_, observer);
}

// What an observer does to the text while it is told reaches all of them once all have been told of
// what came before.
void TextStorage::notify()
{
    if (isTelling_)
        return;
    isTelling_ = true;
    while (true) {
        applyWaiting();
        const std::vector<TextChange> changes = changes_.take();
        const TextRange painted = clampedRange(std::exchange(painted_, {}), length());
        if (changes.empty() && painted.isEmpty())
            break;
        if (!changes.empty())
            tellObservers([&](TextStorageObserver& to) { to.storageDidChange(*this, changes); });
        if (!painted.isEmpty())
            tellObservers(
                [&](TextStorageObserver& to) { to.storageDidChangeTokens(*this, painted); });
    }
    isTelling_ = false;
}

template<class Tell>
void TextStorage::tellObservers(Tell tell)
{
    const std::vector<TextStorageObserver*> told = observers_;
    for (TextStorageObserver* observer : told) {
        if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end())
            tell(*observer);
    }
}

}  // namespace tavrel
