#pragma once

#include <QString>

namespace tavrel {

class TerminalGridView;

/// Lets screen readers read `TerminalGridView` as a terminal with the text of the rows in sight.
/// Cheap to call again.
void installGridAccessibility();

/// The one stretch of a text that became another.
struct ReaderUpdate {
    int position = 0;  // In UTF-16 units from the start.
    QString removed;
    QString inserted;

    bool operator==(const ReaderUpdate&) const = default;
};

/// What turns one text into the other, as short as it can be told.
ReaderUpdate readerUpdate(const QString& before, const QString& after);

/// Tells screen readers, where there are any, what of the text has changed since `told`, which
/// becomes the text there is now, and where the cursor is.
void tellScreenReaders(TerminalGridView& view, QString& told);

}  // namespace tavrel
