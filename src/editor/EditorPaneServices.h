#pragma once

namespace tavrel {

class Calendar;
class Clock;
class FileSystem;
class MainQueue;
class Pasteboard;

/// The objects a pane works with. It borrows all of them.
struct EditorPaneServices {
    const Clock& clock;
    MainQueue& mainQueue;
    FileSystem& fileSystem;
    Pasteboard& pasteboard;
    const Calendar& calendar;
};

/// The preferences a pane follows.
struct EditorPaneSettings {
    int tabWidth = 2;
    int columnWidth = 80;
    bool autoSaveOnFocusLoss = true;
};

}  // namespace tavrel
