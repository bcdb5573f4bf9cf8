#pragma once

#include "editor/TextChange.h"
#include "editor/TextEdit.h"
#include "editor/TextSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tavrel {

class TextStorage;

/// Who follows a text: views, marks, caches.
class TextStorageObserver {
public:
    virtual ~TextStorageObserver() = default;

    /// The text has changed; `changes` ascend without overlap and lead from the text as it was at
    /// the last call to the text as it is. Sent once for a batch, when its outermost guard closes.
    virtual void storageDidChange(const TextStorage& storage,
                                  std::span<const TextChange> changes) = 0;

    /// Tokens in `range` have been set. Sent once for a batch, behind its changes of the text.
    virtual void storageDidChangeTokens(const TextStorage& /*storage*/, TextRange /*range*/) {}
};

/// The text of a document: the one place that changes it.
///
/// Locations are UTF-16 code units from 0, ranges out of bounds are clamped. Belongs to the main
/// thread; other threads read the snapshots that it gives. Inserted text keeps its raw bytes and
/// takes the foreground token.
class TextStorage {
public:
    explicit TextStorage(TextSnapshot text = {},
                         std::size_t blockSize = TextSnapshot::defaultBlockSize);
    TextStorage(const TextStorage&) = delete;
    TextStorage& operator=(const TextStorage&) = delete;

    /// The text as it is now. O(1), but for the edits of an open batch that wait to be applied.
    const TextSnapshot& snapshot() const
    {
        if (!waiting_.empty())
            applyWaiting();
        return text_;
    }
    std::size_t length() const { return text_.length() + waitingGrowth_; }

    /// Grows with each change of the text, and of the tokens.
    std::uint64_t revision() const { return revision_; }
    std::uint64_t tokenRevision() const { return tokenRevision_; }

    /// Replaces one range. O(log n), the copying of a block and the size of the replacement.
    void replace(TextRange range, const TextSnapshot& replacement);
    void replace(TextRange range, std::u16string_view replacement);

    /// Applies a batch, whose edits lie in order and do not overlap; several may be empty at one
    /// place, and their texts then follow each other. One pass that makes each touched block once.
    void apply(std::span<const TextEdit> edits);

    /// Between these, which nest, observers hear nothing; what happened reaches them at the end, as
    /// one list of changes. Each edit is in the coordinates of the text at its moment. Many single
    /// edits from left to right or from right to left, with no look at the snapshot in between,
    /// cost no more than one batch of them.
    void beginEditing();
    void endEditing();

    /// Replaces the tokens of the stretch that starts at `location` by `runs`. What of them lies
    /// past the end of the text is dropped.
    void setTokens(std::size_t location, const TokenRuns& runs);

    /// The observer is borrowed, and must go or be removed before the other does. Observers may be
    /// added and removed at any time, also while they are told.
    void addObserver(TextStorageObserver* observer);
    void removeObserver(TextStorageObserver* observer);

private:
    void replaceLater(const TextEdit& edit);
    void applyNow(std::span<const TextEdit> edits) const;
    void applyWaiting() const;
    void notify();
    template<class Tell>
    void tellObservers(Tell tell);

    // What single edits of a batch do is put off until somebody looks, which is no change that can
    // be seen.
    mutable TextSnapshot text_;
    mutable TextChangeComposer changes_;     // Those that observers have not heard of.
    mutable std::vector<TextEdit> waiting_;  // In the coordinates of `text_`; no overlaps.
    mutable bool waitLeftwards_ = false;     // Each lies left of the one before it, not right.
    mutable std::size_t waitingGrowth_ = 0;  // What they add to the length, modulo 2^64.

    std::size_t blockSize_;
    std::uint64_t revision_ = 0;
    std::uint64_t tokenRevision_ = 0;
    std::size_t openBatches_ = 0;
    TextRange painted_;  // What they have not heard of either; empty for nothing.
    bool isTelling_ = false;
    std::vector<TextStorageObserver*> observers_;
};

/// Keeps a batch open for as long as it lives.
class TextStorageBatch {
public:
    explicit TextStorageBatch(TextStorage& storage) : storage_(storage) { storage_.beginEditing(); }
    ~TextStorageBatch() { storage_.endEditing(); }
    TextStorageBatch(const TextStorageBatch&) = delete;
    TextStorageBatch& operator=(const TextStorageBatch&) = delete;

private:
    TextStorage& storage_;
};

}  // namespace tavrel
