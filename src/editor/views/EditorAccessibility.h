#pragma once

#include "editor/TextChange.h"
#include "editor/TextSnapshot.h"

#include <QString>

#include <span>
#include <vector>

class QWidget;

namespace tavrel {

/// Gives the widgets of this folder the names and roles by which programs that read the screen know
/// them. May be called any number of times; costs nothing until such a program asks.
void installEditorAccessibility();

/// One change of a text as it is told to such programs.
struct TextAnnouncement {
    int position = 0;  // In UTF-16 units.
    QString removed;
    QString inserted;
    bool operator==(const TextAnnouncement&) const = default;
};

/// What is told of a list of changes, one after another. Texts longer than a person would listen to
/// are told in part, and of many changes the first.
std::vector<TextAnnouncement> textAnnouncements(const TextSnapshot& before,
                                                const TextSnapshot& after,
                                                std::span<const TextChange> changes);

/// Tells such programs what has become of the text of a view.
void announce(QWidget& view, std::span<const TextAnnouncement> announcements);

}  // namespace tavrel
