#pragma once

#include "editor/ScheduledSlot.h"
#include "git/GitLineDiff.h"

#include <memory>
#include <optional>

namespace tavrel {

class EditorDocument;
class EditorPane;

/// Keeps the line marks of the document that a pane shows: asks for them when it is time, and hands
/// the answer to the document.
///
/// One question is under way at a time; what is asked meanwhile follows it with the text as it is
/// then. Between two answers the marks stand where they stood. Main thread only.
class EditorGitMarks {
public:
    static constexpr double delayAfterEdit = 0.7;  // Seconds.

    /// Borrows the pane, to which it belongs.
    explicit EditorGitMarks(EditorPane& pane) : pane_(pane) {}

    /// Asks for the marks anew after the delay; what was to be asked before then is not.
    void schedule(double delaySeconds);

private:
    void refresh();
    void leaveToOtherViews(const std::shared_ptr<EditorDocument>& document);
    void receive(const std::shared_ptr<EditorDocument>& document, std::optional<GitLineDiff> diff);
    static void apply(EditorDocument& document, std::optional<GitLineDiff> diff);

    EditorPane& pane_;
    ScheduledSlot pendingGitDiffRefresh_;
    std::weak_ptr<EditorDocument> pendingDocument_;  // Which was shown when it was scheduled.
    bool isUnderWay_ = false;
    bool wantsAnother_ = false;  // Only while one is under way.
};

}  // namespace tavrel
