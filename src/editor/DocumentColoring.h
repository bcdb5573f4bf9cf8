#pragma once

#include "config/LanguageMode.h"
#include "editor/ColoredRanges.h"
#include "editor/ScanPoints.h"
#include "editor/TextStorage.h"
#include "highlight/LexicalHighlighter.h"
#include "platform/MainQueue.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace tavrel {

class WorkQueue;

/// Keeps the tokens of a document right wherever a view looks at it.
///
/// Only what is near a view has tokens in the storage; of the rest scan points are kept, so that a
/// stretch is coloured in its true state as soon as it is shown. A long text is scanned for them on
/// a work queue, over a snapshot. After an edit the text is scanned anew from the last point before
/// it to the first point behind it that still holds. A stretch that no scan has come to yet is
/// coloured by what stands shortly before it, and once more when its true state is known.
///
/// Belongs to a document. Main thread only.
class DocumentColoring final : private TextStorageObserver {
public:
    /// Borrows the storage, and is to be the first that observes it.
    explicit DocumentColoring(TextStorage& storage);
    ~DocumentColoring() override;
    DocumentColoring(const DocumentColoring&) = delete;
    DocumentColoring& operator=(const DocumentColoring&) = delete;

    /// Colours in this language from now on. The queues are borrowed; without a work queue a long
    /// text keeps the colours of its first look.
    void setLanguage(std::shared_ptr<const LanguageMode> language, MainQueue& mainQueue,
                     WorkQueue* workQueue);

    /// `viewer` shows this part of the text now. Costs O(what is new in it).
    void show(const void* viewer, TextRange range);
    /// `viewer` shows nothing of the text any more.
    void hide(const void* viewer);

    /// Whether the state of the scanner is known at every place of the text.
    bool isKnownThroughout() const { return points_.knownEnd() == storage_.length(); }

private:
    struct Viewer {
        const void* viewer;
        TextRange range;
    };

    void storageDidChange(const TextStorage& storage, std::span<const TextChange> changes) override;

    bool hasPoints() const { return highlighter_ && highlighter_->scansByPoints(); }
    void startAnew();
    void rescan(TextRange changed);
    void color(TextRange range);
    void colorKnownSegments(TextRange range);
    void colorFromPoint(TextRange range);
    void colorBySlice(TextRange range);
    void colorShown();
    void setTokens(std::size_t location, const TokenRuns& runs);
    void forgetFarStretches();

    void cancelScan();
    void scanRestLater(double delaySeconds = 0);
    void scanRest();
    void scanPoints();
    void scanWhole();
    void didScan(ScanProgress progress, bool isLast);
    void didScanWhole(const TokenRuns& runs);

    TextStorage& storage_;
    std::shared_ptr<const LanguageMode> language_;
    std::shared_ptr<const LexicalHighlighter> highlighter_;  // Made when something is shown.
    MainQueue* mainQueue_ = nullptr;
    WorkQueue* workQueue_ = nullptr;
    ScanPoints points_;
    ColoredRanges colored_;
    std::vector<Viewer> viewers_;

    ScheduledWork scheduledScan_;
    /// Of the scan under way: set when its findings are no longer wanted. Null without one.
    std::shared_ptr<std::atomic<bool>> scanIsStale_;
    std::shared_ptr<DocumentColoring*> self_;  // What results that come later find this object by.
};

}  // namespace tavrel
